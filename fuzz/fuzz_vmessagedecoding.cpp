// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// The bytes as the vMessage of an item that a sync client adds.

#include "fuzzing.h"

#include <smssyncinterface_p.h>

using namespace KorvaSyncIf;

static void check(const QList<SyncSmsInfo> &items)
{
    SMSSyncInterfacePrivate decoder;
    QMap<int, SMSSyncError> errors;
    const QList<SmsInfo> records = decoder.parseAllVMessages(items, errors, false);
    require(records.size() + errors.size() == items.size());
    for (const SmsInfo &record : records) {
        require(!errors.contains(record.refId));
        require(record.id == -1);
        require(record.parentId != 0);
        require(!record.fromNumber.isEmpty() || !record.toNumber.isEmpty());
        require(record.time.isNull() || record.time.isValid());
    }
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const bool silent = (silenceTrace(), true);
    require(silent);
    SyncSmsInfo item;
    item.vMessage = QString::fromUtf8(reinterpret_cast<const char *>(data), int(size));
    SyncSmsInfo inFolder = item;
    inFolder.parentId = LocInbox;
    inFolder.time = QStringLiteral("20101103T142530Z");
    check({item, inFolder});
    return 0;
}
