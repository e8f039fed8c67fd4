// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QString>

#include <optional>

//! One line on stderr that tells how far a long command is, rewritten in place.
class Progress
{
public:
    //! \param when  auto, always or never; auto = only on a terminal
    explicit Progress(const QString &when);

    //! \param items  done so far
    //! \param part   of the whole, 0 to 1; none = not known
    void show(int items, std::optional<double> part);
    void end(); //!< ends the line

private:
    bool isOn;
    bool hasShown = false;
    QElapsedTimer clock;
};
