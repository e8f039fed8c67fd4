// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <korvasync/vmessageencoder.h>

#include "datetimetext_p.h"
#include "logging_p.h"
#include "quotedprintable_p.h"

#include <QtCore/QDebug>

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

QLatin1String folderWord(int parentId)
{
    switch (parentId) {
    case LocInbox:
        return QLatin1String("INBOX");
    case LocOutbox:
        return QLatin1String("OUTBOX");
    case LocDrafts: // plural here, while readers look for the singular at the beginning
        return QLatin1String("DRAFTS");
    case LocSent:
        return QLatin1String("SENT");
    case 0:
        return QLatin1String("");
    default:
        return QLatin1String("MYFOLDERS");
    }
}

void endLine(QString &text)
{
    text += QLatin1String(VMessageEncoder::CR);
    text += QLatin1String(VMessageEncoder::LF);
}

void appendLine(QLatin1String line, QString &text)
{
    text += line;
    endLine(text);
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
        appendLine(QLatin1String("BEGIN:VENV"), text);
        encodeVCardData(message.toNumber, text);
        ++envelopeDepth;
    }
    encodeBody(message, text);
    for (; envelopeDepth > 0; --envelopeDepth)
        appendLine(QLatin1String("END:VENV"), text);
    appendLine(QLatin1String("END:VMSG"), text);
    text.squeeze(); // a folder's worth of messages stays in memory until the caller has them

    SyncSmsInfo result;
    result.id = message.id;
    result.parentId = message.parentId;
    result.time = message.time.toString(Qt::TextDate);
    result.vMessage = text;
    result.messageToken = message.messageToken;
    return result;
}

void VMessageEncoder::encodeHeader(const SmsInfo &message, QString &text)
{
    appendLine(QLatin1String("BEGIN:VMSG"), text);
    appendLine(QLatin1String("VERSION:1.1"), text);
    text += QLatin1String("X-IRMC-STATUS:");
    text += message.readStatus;
    endLine(text);
    text += QLatin1String("X-IRMC-BOX:");
    appendLine(folderWord(message.parentId), text);
    appendLine(QLatin1String("X-IRMC-TYPE:SMS"), text);
    if (message.time.isNull()) {
        // Readers of this form know the blank line in place of a missing time.
        endLine(text);
        return;
    }
    text += QLatin1String("X-MDO-TIMESTAMP:");
    const auto stampStart = text.size();
    appendUtcStamp(message.time, text);
    const QString stamp = text.mid(stampStart);
    endLine(text);
    text += QLatin1String("X-QLT-DT:");
    text += stamp;
    endLine(text);
}

void VMessageEncoder::encodeVCardData(const QString &number, QString &text)
{
    appendLine(QLatin1String("BEGIN:VCARD"), text);
    appendLine(QLatin1String("VERSION:2.1"), text);
    text += QLatin1String("TEL:");
    text += number;
    endLine(text);
    appendLine(QLatin1String("END:VCARD"), text);
}

void VMessageEncoder::encodeBody(const SmsInfo &message, QString &text)
{
    const QLatin1String property("X-SMS;TYPE=TEXT;CHARSET=UTF-8");
    const QLatin1String colon(COLON);
    appendLine(QLatin1String("BEGIN:VENV"), text);
    appendLine(QLatin1String("BEGIN:VBODY"), text);
    text += property;
    text += colon;
    lineLength = int(property.size() + colon.size());
    if (message.body.contains(QLatin1Char('\r'))) {
        QString body = message.body;
        body.remove(QLatin1Char('\r'));
        qCDebug(lcEncoder) << "Removing CR chars from sent txt";
        text += body;
    } else {
        text += message.body;
    }
    endLine(text);
    appendLine(QLatin1String("END:VBODY"), text);
    appendLine(QLatin1String("END:VENV"), text);
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
