// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "historykeys_p.h"

#include "folder.h"
#include "phonenumber.h"

namespace CommHistory {

namespace {

//! Below zero, where no number's key is. FNV-1a, cut to what the database holds in six bytes.
qint64 wordKey(const QString &word)
{
    constexpr quint64 start = 0xcbf29ce484222325;
    constexpr quint64 factor = 0x100000001b3;
    constexpr quint64 mask = (quint64(1) << 47) - 1;
    const QByteArray folded = word.normalized(QString::NormalizationForm_D)
                                  .toCaseFolded()
                                  .normalized(QString::NormalizationForm_C)
                                  .toUtf8();
    quint64 hash = start;
    for (const char byte : folded)
        hash = (hash ^ quint8(byte)) * factor;
    return -qint64(hash & mask) - 1;
}

} // namespace

bool goesByEnd(int folder) { return folder == InboxFolder || folder > LastSystemFolder; }

qint64 ownTime(const EventRow &row)
{
    const bool isByEnd = row.type != Event::CallEvent && goesByEnd(row.parentId);
    return isByEnd ? row.endTime : row.startTime;
}

qint64 partyKeyOf(const QString &party)
{
    const QString digits =
        normalizePhoneNumber(party, NormalizeFlagRemovePunctuation).right(phoneNumberMatchLength());
    // The one before them keeps the zeros at their beginning.
    return digits.isEmpty() ? wordKey(party) : (QLatin1Char('1') + digits).toLongLong();
}

} // namespace CommHistory
