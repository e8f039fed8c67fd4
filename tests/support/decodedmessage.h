// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <korvasync/vmessagedecoder.h>

#include <QtCore/QByteArray>
#include <QtCore/QTimeZone>

//! A received message in the form of VMessageEncoder, of 18 lines.
inline const QByteArray ownMessage =
    "BEGIN:VMSG\r\nVERSION:1.1\r\nX-IRMC-STATUS:READ\r\nX-IRMC-BOX:INBOX\r\nX-IRMC-TYPE:SMS\r\n"
    "X-MDO-TIMESTAMP:20240105T081500Z\r\nX-QLT-DT:20240105T081500Z\r\n"
    "BEGIN:VCARD\r\nVERSION:2.1\r\nTEL:+15550100\r\nEND:VCARD\r\n"
    "BEGIN:VENV\r\nBEGIN:VBODY\r\nX-SMS;TYPE=TEXT;CHARSET=UTF-8:Good\nmorning\r\nEND:VBODY\r\n"
    "END:VENV\r\nEND:VMSG\r\n";

//! A decoder and what it makes of some bytes.
struct DecodedMessage
{
    explicit DecodedMessage(const QByteArray &bytes, const QTimeZone &zone = QTimeZone::utc(),
                            int defaultFolder = 0)
    {
        decoder.setLocalZone(zone);
        decoder.setDefaultFolder(defaultFolder);
        isMessage = decoder.decode(bytes, &item);
    }

    KorvaSyncIf::VMessageDecoder decoder;
    KorvaSyncIf::HistoryItem item;
    bool isMessage = false;
};
