// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "linewindow.h"

#include <QtCore/QByteArray>

#include <optional>

//! What belongs to no item, where somebody may want it. In a file of rejects that is a reason
//! without an item behind it, with what stands there instead. In any file it is all in front of
//! the first item, since there may be none.
class Leftovers
{
public:
    explicit Leftovers(const LineWindow &window)
        : m_window(window)
    {
    }

    //! A line with a reason begins here.
    void beginReason();
    //! They end here.
    //! \param beforeItem  which may be the one that the reason is of
    void end(bool beforeItem);
    //! What is there since the reason has become an item.
    void drop();
    bool haveReason() const { return m_hasReason; }

    //! The first byte that is still needed; nothing when none is. They are dropped when they
    //! become longer than an item may be.
    std::optional<quint64> needed();

    QByteArray take();       //!< those of reasons since the last call
    QByteArray open() const; //!< those that have not ended

private:
    const LineWindow &m_window;
    std::optional<quint64> m_begin = 0;
    bool m_hasReason = false;
    QByteArray m_ended;
};
