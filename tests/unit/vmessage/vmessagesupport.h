// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QRandomGenerator>

namespace VMessageSupport {

//! A received message as VMessageEncoder writes it, without its help.
inline QByteArray ownMessage(const QByteArray &text)
{
    return "BEGIN:VMSG\r\nVERSION:1.1\r\nX-IRMC-STATUS:READ\r\nX-IRMC-BOX:INBOX\r\n"
           "X-IRMC-TYPE:SMS\r\nX-MDO-TIMESTAMP:20101103T142530Z\r\nX-QLT-DT:20101103T142530Z\r\n"
           "BEGIN:VCARD\r\nVERSION:2.1\r\nTEL:+15550100\r\nEND:VCARD\r\n"
           "BEGIN:VENV\r\nBEGIN:VBODY\r\nX-SMS;TYPE=TEXT;CHARSET=UTF-8:"
        + text + "\r\nEND:VBODY\r\nEND:VENV\r\nEND:VMSG\r\n";
}

//! The message as it is in a file saved with other line ends.
inline QByteArray withLfOnly(QByteArray message) { return message.replace('\r', ""); }

//! Random texts put together from what could be taken for structure. Without CR, as the
//! encoder leaves them; the same seed gives the same texts.
class TextSource
{
public:
    explicit TextSource(quint32 seed)
        : m_random(seed)
    {
    }

    QByteArray next()
    {
        static const char *const pieces[] = {
            "\n",
            "\n",
            "\n",
            " ",
            "\t",
            "a",
            "Hello",
            "\xC3\xA9",
            "\xF0\x9F\x98\x80",
            "=",
            "=41",
            "=\n",
            ":",
            ";",
            "/",
            "\\",
            "END:VBODY",
            "END:VENV",
            "END:VMSG",
            "BEGIN:VMSG",
            "BEGIN:VENV",
            "BEGIN:VBODY",
            "BEGIN:VCARD",
            "END:VCARD",
            "\nEND:VBODY\nEND:VENV\n",
            "\nEND:VBODY\nEND:VENV\nEND:VMSG\nBEGIN:VMSG\n",
            "Date: x",
            "TEL:+15550199",
            "X-IRMC-BOX:SENT",
            "X-SMS:",
            "Subject;ENCODING=QUOTED-PRINTABLE:",
            "CHARSET=SHIFT_JIS",
        };
        QByteArray text;
        for (quint32 left = m_random.bounded(20U); left > 0; --left)
            text += pieces[m_random.bounded(quint32(std::size(pieces)))];
        if (m_random.bounded(20) == 0)
            text += '\0';
        return text;
    }

private:
    QRandomGenerator m_random;
};

} // namespace VMessageSupport
