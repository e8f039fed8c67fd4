// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <korvasync/historyitem.h>

#include <QtCore/QDateTime>
#include <QtCore/QString>

//! One call.
struct Call
{
    QString type;     //!< incoming, outgoing or missed; anything else is not known
    QString number;   //!< the other party; empty = hidden
    QDateTime start;  //!< UTC, whole seconds; null = none
    int duration = 0; //!< seconds

    bool isOutgoing() const { return type == QLatin1String("outgoing"); }
    QDateTime end() const { return start.addSecs(duration); }

    static Call fromItem(const KorvaSyncIf::HistoryItem &item);
};
