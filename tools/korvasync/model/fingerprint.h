// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "call.h"
#include "storedmessage.h"

#include <QtCore/QDateTime>
#include <QtCore/QHash>
#include <QtCore/QString>

#include <optional>

//! What makes two messages one and the same: folder, number (see Number::comparable()),
//! second and text, whatever its line ends, its Unicode normal form and byte order marks at its
//! beginning; and two calls: type, number, second of the start and duration. A digest, so that an
//! index of a whole store stays small. The same on every machine.
struct Fingerprint
{
    quint64 high = 0;
    quint64 low = 0;

    static Fingerprint of(int folder, const QString &number, const QDateTime &time,
                          const QString &body);
    static Fingerprint of(const StoredMessage &message);
    //! The same for messages that differ in their times alone. No message has it by of().
    static Fingerprint atAnyTime(int folder, const QString &number, const QString &body);
    static Fingerprint of(const Call &call);

    //! What a message or call has in a backup in Android's form, which holds less than a store:
    //! there the folder of one's own is the inbox, and XML lacks some characters. Equals none of
    //! the above.
    static Fingerprint ofExport(int folder, const QString &number, const QDateTime &time,
                                const QString &body);
    static Fingerprint ofExport(const Call &call);
    //! Likewise; nothing when such a backup holds all that counts.
    static std::optional<Fingerprint> ofLossyExport(int folder, const QString &number,
                                                    const QDateTime &time, const QString &body);
    static std::optional<Fingerprint> ofLossyExport(const Call &call);

    bool operator==(const Fingerprint &other) const
    {
        return high == other.high && low == other.low;
    }
};

inline auto qHash(const Fingerprint &fingerprint, decltype(qHash(0)) seed = 0)
{
    return qHash(fingerprint.low, seed);
}
