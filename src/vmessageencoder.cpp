// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <korvasync/vmessageencoder.h>

#include "base/datetimetext.h"
#include "base/logging.h"
#include "quotedprintable_p.h"

#include <QtCore/QDebug>
#include <QtCore/QStringBuilder>

namespace KorvaSyncIf {

const char *const VMessageEncoder::CR = "\r";
const char *const VMessageEncoder::LF = "\n";
const char *const VMessageEncoder::SEMICOLON = ";";
const char *const VMessageEncoder::COLON = ":";
const char *const VMessageEncoder::EQUAL = "=";
const char *const VMessageEncoder::LWSP = " ";
const char VMessageEncoder::hexTab[16] = {'0', '1', '2', '3', '4', '5', '6', '7',
                                          '8', '9', 'A', 'B', 'C', 'D', 'E', 'F'};

namespace {

// The pieces of a message are literals of Qt's own characters, which need no conversion, and go
// into the text several at a time: the encoder writes a folder's worth of messages in one go.

QStringView folderWord(int parentId)
{
    switch (parentId) {
    case LocInbox:
        return u"INBOX";
    case LocOutbox:
        return u"OUTBOX";
    case LocDrafts: // plural here, while readers look for the singular at the beginning
        return u"DRAFTS";
    case LocSent:
        return u"SENT";
    case 0:
        return {};
    default:
        return u"MYFOLDERS";
    }
}

//! Appends what operator%() joined. QStringBuilder's own += moves a text that has the room: it
//! looks for the whole length behind the end.
template <typename Pieces>
void append(QString &text, const Pieces &pieces)
{
    const auto end = text.size();
    text.resize(end + QConcatenable<Pieces>::size(pieces));
    QChar *out = text.data() + end;
    QConcatenable<Pieces>::appendTo(pieces, out);
}

} // namespace

SyncSmsInfo VMessageEncoder::encode(const SmsInfo &message)
{
    qCDebug(lcEncoder) << "KorvaSyncIf::SyncSmsInfo "
                          "KorvaSyncIf::VMessageEncoder::encode(const KorvaSyncIf::SmsInfo&)";
    QString text;
    text.reserve(1024);
    encodeHeader(message, text);
    if (!message.fromNumber.isEmpty()) {
        qCDebug(lcEncoder) << "fromVCard : " << message.fromNumber;
        encodeVCardData(message.fromNumber, text);
    }
    if (!message.toNumber.isEmpty()) {
        qCDebug(lcEncoder) << "toVCard :" << message.toNumber;
        text += QStringView(u"BEGIN:VENV\r\n");
        encodeVCardData(message.toNumber, text);
        ++envelopeDepth;
    }
    encodeBody(message, text);
    for (; envelopeDepth > 0; --envelopeDepth)
        text += QStringView(u"END:VENV\r\n");
    text += QStringView(u"END:VMSG\r\n");
    text.squeeze(); // a folder's worth of messages stays in memory until the caller has them

    SyncSmsInfo result;
    result.id = message.id;
    result.parentId = message.parentId;
    result.time = textDate(message.time);
    result.vMessage = std::move(text);
    result.messageToken = message.messageToken;
    return result;
}

void VMessageEncoder::encodeHeader(const SmsInfo &message, QString &text)
{
    append(text,
           u"BEGIN:VMSG\r\nVERSION:1.1\r\nX-IRMC-STATUS:" % message.readStatus % u"\r\nX-IRMC-BOX:"
               % folderWord(message.parentId) % u"\r\nX-IRMC-TYPE:SMS\r\n");
    if (message.time.isNull()) {
        // Readers of this form know the blank line in place of a missing time.
        text += QStringView(u"\r\n");
        return;
    }
    const QString stamp = utcStamp(message.time);
    append(text, u"X-MDO-TIMESTAMP:" % stamp % u"\r\nX-QLT-DT:" % stamp % u"\r\n");
}

void VMessageEncoder::encodeVCardData(const QString &number, QString &text)
{
    append(text, u"BEGIN:VCARD\r\nVERSION:2.1\r\nTEL:" % number % u"\r\nEND:VCARD\r\n");
}

void VMessageEncoder::encodeBody(const SmsInfo &message, QString &text)
{
    constexpr QStringView property = u"X-SMS;TYPE=TEXT;CHARSET=UTF-8:";
    lineLength = int(property.size());
    QString body = message.body;
    if (body.contains(QLatin1Char('\r'))) {
        body.remove(QLatin1Char('\r'));
        qCDebug(lcEncoder) << "Removing CR chars from sent txt";
    }
    append(text,
           u"BEGIN:VENV\r\nBEGIN:VBODY\r\n" % property % body % u"\r\nEND:VBODY\r\nEND:VENV\r\n");
}

QString VMessageEncoder::encodeQP(const QString &text)
{
    return quotedPrintable(text.toUtf8(), lineLength);
}

void VMessageEncoder::appendChar(unsigned char character, QString &text)
{
    appendQuotedPrintable(character, text, lineLength);
}

} // namespace KorvaSyncIf
