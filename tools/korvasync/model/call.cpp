// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "call.h"

using KorvaSyncIf::HistoryItem;

static QString typeOf(const HistoryItem &item)
{
    switch (item.direction) {
    case HistoryItem::Direction::Inbound:
        return item.isMissed ? QStringLiteral("missed") : QStringLiteral("incoming");
    case HistoryItem::Direction::Outbound:
        return QStringLiteral("outgoing");
    case HistoryItem::Direction::Unknown:
        break;
    }
    return QString();
}

Call Call::fromItem(const HistoryItem &item)
{
    Call call;
    call.type = typeOf(item);
    call.number = item.party; // of which the library, unlike those of messages, keeps every letter
    if (item.time.isValid())
        call.start = item.time.addMSecs(-item.time.time().msec());
    call.duration = item.duration;
    return call;
}
