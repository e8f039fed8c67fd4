// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <korvasync/smssyncinterface.h>

#include <QtCore/QList>
#include <QtCore/QMap>

class VMessage;
class VMessageParser;

namespace KorvaSyncIf {

//! Checks and conversions of the message facade. Errors are kept by reference index; the
//! last one set for an index counts.
class SMSSyncInterfacePrivate
{
public:
    SMSSyncInterfacePrivate();
    ~SMSSyncInterfacePrivate();

    SyncSmsInfo encodeMsg(const SmsInfo &info);
    //! A record with id and reference index for each id that is not negative.
    QList<SmsInfo> validItemIds(const QList<int> &ids, QMap<int, SMSSyncError> &errors);
    //! Notes the items with a negative id in invalidIndexes.
    void checkForValidItemIds(const QList<SyncSmsInfo> &msgs, QMap<int, SMSSyncError> &errors);

    //! One record per item that can be used, in order.
    QList<SmsInfo> parseAllVMessages(const QList<SyncSmsInfo> &msgs,
                                     QMap<int, SMSSyncError> &errors, bool modify);
    void extractMsgContents(VMessageParser *parser, const VMessage *msg, SmsInfo &info);

    QList<int> invalidIndexes; // of the last checkForValidItemIds(), ascending
};

} // namespace KorvaSyncIf
