// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QDateTime>
#include <QtCore/QList>
#include <QtCore/QMap>

#include <optional>

//! Which part of the store was read, by time. The first part is small, and each further one is
//! twice as wide, so that reading costs what the input covers, and few queries even when that is
//! everything.
class TimeCoverage
{
public:
    //! In seconds since 1970.
    struct Span
    {
        qint64 begin;
        qint64 end; //!< excluded

        QDateTime from() const; //!< null = no bound
        QDateTime to() const;   //!< null = no bound
    };

    //! The part to be read so that a second is covered, none when it is already. It counts as read
    //! from now on.
    std::optional<Span> grow(qint64 second);

    //! The parts that are left; everything counts as read from now on.
    QList<Span> growToAll();

private:
    static constexpr qint64 FirstReach = qint64(24) * 60 * 60;
    static constexpr qint64 Earliest = -(qint64(1) << 40); // beyond all that a time can be
    static constexpr qint64 Latest = qint64(1) << 40;

    QMap<qint64, qint64> m_covered; // ends by beginnings; they do not touch each other
    qint64 m_reach = FirstReach;
};
