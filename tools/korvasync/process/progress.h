// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QString>

#include <functional>
#include <optional>

//! One line on stderr that tells how far a long command is, rewritten in place.
class Progress
{
public:
    //! \param when  auto, always or never; auto = only on a terminal
    explicit Progress(const QString &when);

    //! \param items     done so far
    //! \param partDone  of the whole, 0 to 1, none = not known; asked only when it is shown
    void show(int items, const std::function<std::optional<double>()> &partDone);
    void end(); //!< ends the line

private:
    bool m_isOn;
    bool m_hasShown = false;
    QElapsedTimer m_clock;
};
