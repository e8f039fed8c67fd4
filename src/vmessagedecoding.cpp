// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "smssyncinterface_p.h"

#include "base/datetimetext.h"
#include "base/logging.h"

#include <vmessage/vmessageparser.h>

#include <QtCore/QByteArray>
#include <QtCore/QDebug>
#include <QtCore/QElapsedTimer>

#include <algorithm>

namespace KorvaSyncIf {

namespace {

//! The folder that a box text names by its beginning, or \a unknown.
int folderOfBox(const QString &box, int unknown)
{
    // By the beginning, so that the plural words of the encoder are known too.
    static const struct
    {
        QLatin1String keyword;
        LocationId folder = LocInbox;
    } folders[] = {
        {QLatin1String("INBOX"), LocInbox},       {QLatin1String("DRAFT"), LocDrafts},
        {QLatin1String("OUTBOX"), LocOutbox},     {QLatin1String("SENT"), LocSent},
        {QLatin1String("MYFOLDER"), LocMyFolder},
    };
    for (const auto &entry : folders) {
        if (box.startsWith(entry.keyword))
            return entry.folder;
    }
    return unknown;
}

void extractHeader(const VMessageHeader *header, SmsInfo &info)
{
    if (header->box) {
        const QString box = QString::fromLatin1(header->box);
        info.parentId = folderOfBox(box, info.parentId);
        info.folderName = box;
    }
    info.readStatus = QString::fromLatin1(header->status);
    if (header->dateTime) {
        info.time = readUtcStamp(QLatin1String(header->dateTime));
        qCDebug(lcDecoder) << "Time in vmessage" << info.time;
    } else {
        qCDebug(lcDecoder) << "No time present in vmessage";
    }
}

// Phones write the only party of a message in either place; the folder tells which it is.
void repairDirection(SmsInfo &info)
{
    const bool received = info.parentId == LocInbox || info.parentId > 4103;
    const bool sent = info.parentId == LocSent || info.parentId == LocOutbox;
    if (received && info.fromNumber.isEmpty() && !info.toNumber.isEmpty())
        info.fromNumber.swap(info.toNumber);
    else if (sent && info.toNumber.isEmpty() && !info.fromNumber.isEmpty())
        info.toNumber.swap(info.fromNumber);
    else
        return;
    qCDebug(lcDecoder) << "Set fromVard value from tovcard value, "; // for either direction
}

void extractBody(const VMessageBody *body, const VMessageHeader *header, SmsInfo &info)
{
    if (body->date && info.time.isNull() && header && header->dateTime)
        info.time = readLocalDate(QString::fromLatin1(header->dateTime));
    if (body->charset)
        info.charset = QString::fromLatin1(body->charset);
    if (body->encoding)
        info.encoding = QString::fromLatin1(body->encoding);
    if (body->language)
        info.language = QString::fromLatin1(body->language);
    // Qt drops a byte order mark at the beginning; the messaging application does the same.
    if (body->text)
        info.body = QString::fromUtf8(body->text, body->length);
}

//! The time for a record whose vMessage gave none.
QDateTime fallbackTime(const SyncSmsInfo &item)
{
    QDateTime time;
    if (item.time.isEmpty()) {
        qCDebug(lcDecoder) << "No time supplied, setting current Time : ";
        // The clock's reading is labelled UTC, not converted: sync clients rely on seeing
        // the phone's own time of day.
        time = relabelledAsUtc(QDateTime::currentDateTime());
    } else {
        qCDebug(lcDecoder) << "Setting time from syncedMsg : ";
        time = readUtcStamp(item.time);
    }
    qCDebug(lcDecoder) << time;
    return time;
}

//! Settles one parsed record by what came with it; the first fault that applies, if any.
SMSSyncError settleRecord(const SyncSmsInfo &item, SmsInfo &info)
{
    if (info.parentId == LocDrafts) {
        qCDebug(lcDecoder) << "Error - Addition of Drafts messages not allowed";
        return SmsDraftNotAllowed;
    }
    if (info.parentId == 0) {
        if (item.parentId == 0) {
            qCDebug(lcDecoder)
                << "Error parentId not present in vmessage nor in supplied syncInfo struct";
            return SmsNoParentId;
        }
        // Taken as it is, drafts and -1 included: sync clients restore drafts this way.
        info.parentId = item.parentId;
    }
    if (info.fromNumber.isEmpty() && info.toNumber.isEmpty()) {
        qCDebug(lcDecoder) << "No vcard present in vmessage";
        return SmsNoVCard;
    }
    if (info.time.isNull())
        info.time = fallbackTime(item);
    return SmsNoError;
}

} // namespace

QList<SmsInfo> SMSSyncInterfacePrivate::parseAllVMessages(const QList<SyncSmsInfo> &msgs,
                                                          QMap<int, SMSSyncError> &errors,
                                                          bool modify)
{
    qCDebug(lcDecoder) << "QList<KorvaSyncIf::SmsInfo> "
                          "KorvaSyncIf::SMSSyncInterfacePrivate::parseAllVMessages(const "
                          "QList<KorvaSyncIf::SyncSmsInfo>&, QMap<int, "
                          "KorvaSyncIf::SMSSyncError>&, bool)"
                       << msgs.size() << "modify Use Case" << boolText(modify);
    QElapsedTimer timer;
    timer.start();
    QList<SmsInfo> records;
    records.reserve(msgs.size());
    for (int i = 0; i < msgs.size(); ++i) {
        if (modify && std::binary_search(invalidIndexes.cbegin(), invalidIndexes.cend(), i)) {
            qCDebug(lcDecoder) << "idx" << i << "already in invalid indexes list, not parsing";
            continue;
        }
        const SyncSmsInfo &item = msgs.at(i);
        VMessageParser parser;
        const QByteArray utf8 = item.vMessage.toUtf8();
        // The terminating zero counts.
        const VMessage *const message =
            parser.parseVMessage(utf8.constData(), uint(utf8.size()) + 1);
        if (!message) {
            qCDebug(lcDecoder) << "Message parsing failed for idx" << i;
            errors.insert(i, SmsParseError);
            continue;
        }
        SmsInfo info;
        extractMsgContents(&parser, message, info);
        const SMSSyncError fault = settleRecord(item, info);
        if (fault != SmsNoError) {
            errors.insert(i, fault);
            continue;
        }
        info.messageToken = item.messageToken;
        info.refId = i;
        if (modify) {
            info.id = item.id;
            qCDebug(lcDecoder) << "Received item id to be modified" << info.id;
        }
        records.append(info);
    }
    qCDebug(lcDecoder) << "Time to parse" << msgs.size() << timer.elapsed() << "ms";
    return records;
}

void SMSSyncInterfacePrivate::extractMsgContents(VMessageParser *parser, const VMessage *msg,
                                                 SmsInfo &info)
{
    if (!msg)
        return;
    info.id = -1;
    const VMessageHeader *const header = parser->header(msg);
    if (header)
        extractHeader(header, info);
    const VMessageOriginator *const originator = parser->originator(msg);
    if (originator && originator->telephone) {
        info.fromNumber = QString::fromLatin1(originator->telephone);
        qCDebug(lcDecoder) << "from vcard" << info.fromNumber;
    }
    const VMessageRecipient *const recipient = parser->recipients(msg);
    if (recipient && recipient->telephone) {
        info.toNumber = QString::fromLatin1(recipient->telephone);
        qCDebug(lcDecoder) << "to vcard" << info.toNumber;
    }
    repairDirection(info);
    const VMessageBody *const body = parser->body(msg);
    if (body)
        extractBody(body, header, info);
}

} // namespace KorvaSyncIf
