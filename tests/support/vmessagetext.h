// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QString>

//! A vMessage as a sync client sends it. A null part is left out.
struct VMessageText
{
    QString box = QStringLiteral("INBOX");
    QString dateTime = QStringLiteral("20101103T142530Z");
    QString originator = QStringLiteral("+15550100"); //!< number of the vCard outside the envelope
    QString recipient;                                //!< number of the vCard inside the envelope
    QString body = QStringLiteral("Hello");

    QString text() const
    {
        QString result = QStringLiteral("BEGIN:VMSG\r\nVERSION:1.1\r\nX-IRMC-STATUS:READ\r\n");
        if (!box.isNull())
            result += QStringLiteral("X-IRMC-BOX:%1\r\n").arg(box);
        result += QStringLiteral("X-IRMC-TYPE:SMS\r\n");
        if (!dateTime.isNull())
            result += QStringLiteral("X-QLT-DT:%1\r\n").arg(dateTime);
        if (!originator.isNull())
            result += vCard(originator);
        result += QStringLiteral("BEGIN:VENV\r\n");
        if (!recipient.isNull())
            result += vCard(recipient) + QStringLiteral("BEGIN:VENV\r\n");
        result += QStringLiteral("BEGIN:VBODY\r\nX-SMS;TYPE=TEXT;CHARSET=UTF-8:%1\r\n"
                                 "END:VBODY\r\nEND:VENV\r\n")
                      .arg(body);
        if (!recipient.isNull())
            result += QStringLiteral("END:VENV\r\n");
        return result + QStringLiteral("END:VMSG\r\n");
    }

private:
    static QString vCard(const QString &number)
    {
        return QStringLiteral("BEGIN:VCARD\r\nVERSION:2.1\r\nTEL:%1\r\nEND:VCARD\r\n").arg(number);
    }
};
