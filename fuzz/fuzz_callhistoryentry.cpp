// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// The bytes as a call-history entry that a sync client adds.

#include "fuzzing.h"

#include <callsyncinterface_p.h>
#include <korvasync/pendingmsgs.h>

using namespace KorvaSyncIf;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const bool silent = (silenceTrace(), true);
    require(silent);
    CallSyncInterfacePrivate reader;
    const CallInfo call =
        reader.parseCallSyncMsg(QString::fromUtf8(reinterpret_cast<const char *>(data), int(size)));
    require(reader.lastError == CallNoError || reader.lastError == CallParseError);
    require(call.id == 0);
    const QString &type = call.type;
    require(type.isEmpty() || type == CallSyncInterfacePrivate::incoming
            || type == CallSyncInterfacePrivate::outgoing
            || type == CallSyncInterfacePrivate::missed);
    require(!call.number.contains(QLatin1Char(':')));
    if (reader.lastError == CallParseError || type.isEmpty())
        return 0;
    // What we write of it is read again, but for the time, whose form differs.
    const CallInfo again = reader.parseCallSyncMsg(PendingMsgs(nullptr).encodeCallSyncMsgs(call));
    if (call.number.contains(QLatin1String("\r\n")) || call.number.contains(QLatin1Char('\n')))
        return 0; // of an entry with lone line ends of the other kind
    require(reader.lastError == CallNoError);
    require(again.type == type && again.number == call.number && again.duration == call.duration);
    return 0;
}
