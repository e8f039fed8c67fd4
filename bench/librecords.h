// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "records.h"

#include <korvasync/syncrecords.h>

namespace Bench {

// The records in the forms that the library takes.

inline KorvaSyncIf::SmsInfo toSmsInfo(const Record &record)
{
    KorvaSyncIf::SmsInfo info;
    info.parentId = record.folder;
    (record.isSent() ? info.toNumber : info.fromNumber) = QString::fromStdString(record.number);
    info.body = QString::fromStdString(record.body);
    info.time = QDateTime::fromSecsSinceEpoch(record.time, Qt::UTC);
    info.readStatus = QStringLiteral("READ");
    return info;
}

inline QList<KorvaSyncIf::SmsInfo> toSmsInfos(const std::vector<Record> &records)
{
    QList<KorvaSyncIf::SmsInfo> infos;
    infos.reserve(int(records.size()));
    for (const Record &record : records)
        infos.append(toSmsInfo(record));
    return infos;
}

inline QList<KorvaSyncIf::SyncSmsInfo> toSyncSmsInfos(const std::vector<Record> &records)
{
    QList<KorvaSyncIf::SyncSmsInfo> infos;
    infos.reserve(int(records.size()));
    for (const Record &record : records) {
        std::string text;
        appendVMessage(record, text);
        KorvaSyncIf::SyncSmsInfo info;
        info.parentId = 0;
        info.vMessage = QString::fromStdString(text);
        infos.append(info);
    }
    return infos;
}

} // namespace Bench
