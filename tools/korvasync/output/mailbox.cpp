// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "mailbox.h"

#include "mailtext.h"
#include "messages/folder.h"
#include "messages/number.h"
#include "store/fingerprint.h"

#include <QtCore/QHash>
#include <QtCore/QLocale>
#include <QtCore/QUrl>

#include <utility>

namespace Mailbox {

namespace {

const char *const ownAddress = "me@phone.invalid";

// One for all spellings of a number, so that a mail program takes them for one sender. Spaces,
// letters of other scripts and the like are no part of an address.
QByteArray addressOf(const QString &number)
{
    constexpr int longest = 32; // the name beside the address has all of it
    const QByteArray local =
        QUrl::toPercentEncoding(Number::comparable(number).left(longest), QByteArray(), ".");
    return (local.isEmpty() ? QByteArray("unknown") : local) + "@number.invalid";
}

QByteArray ownMailbox() { return QByteArray("me <") + ownAddress + '>'; }

QByteArray mailboxOf(const QString &number)
{
    return number.isEmpty() ? addressOf(number)
                            : MailText::phrase(number) + " <" + addressOf(number) + '>';
}

// A mail must have a time, and files of messages have this one where there is none.
QDateTime timeOf(const StoredMessage &message)
{
    return message.time.isValid() ? message.time : QDateTime::fromMSecsSinceEpoch(0, Qt::UTC);
}

// As ctime() spells it: Wed Nov  3 14:25:30 2010
QByteArray separatorTime(const QDateTime &time)
{
    const QLocale locale = QLocale::c();
    return (locale.toString(time, QStringLiteral("ddd MMM "))
            + QString::number(time.date().day()).rightJustified(2)
            + locale.toString(time, QStringLiteral(" HH:mm:ss yyyy")))
        .toLatin1();
}

QByteArray headerTime(const QDateTime &time)
{
    return QLocale::c().toString(time, QStringLiteral("ddd, dd MMM yyyy HH:mm:ss")).toLatin1()
        + " +0000";
}

QByteArray hex(quint64 number) { return QByteArray::number(number, 16).rightJustified(16, '0'); }

//! Gives the mails their ids, and knows to which one each of them is the answer.
class Threads
{
public:
    //! The same for the same messages in every mailbox. Of equal ones the second and all
    //! further have their count in it.
    QByteArray newId(const StoredMessage &message)
    {
        const Fingerprint fingerprint = Fingerprint::of(message);
        const int count = ++counts[fingerprint];
        return '<' + hex(fingerprint.high) + hex(fingerprint.low)
            + (count > 1 ? '.' + QByteArray::number(count) : QByteArray()) + "@korvasync.invalid>";
    }

    //! Makes \a id the last one of the conversation.
    //! \return the one before it; empty = none
    QByteArray continueWith(const QString &number, const QByteArray &id)
    {
        return std::exchange(lastIds[Number::comparable(number)], id);
    }

private:
    QHash<Fingerprint, int> counts;
    QHash<QString, QByteArray> lastIds; // by comparable number
};

QByteArray mail(const StoredMessage &message, Threads &threads)
{
    const bool outbound = Folder::isOutbound(message.folder);
    const QDateTime time = timeOf(message);
    const QByteArray id = threads.newId(message);
    const QByteArray previous = threads.continueWith(message.number, id);
    const QByteArray party = mailboxOf(message.number);
    QByteArray text = "From " + (outbound ? QByteArray(ownAddress) : addressOf(message.number))
        + ' ' + separatorTime(time) + '\n';
    text += "From: " + (outbound ? ownMailbox() : party) + '\n';
    text += "To: " + (outbound ? party : ownMailbox()) + '\n';
    text += "Date: " + headerTime(time) + '\n';
    text += "Message-ID: " + id + '\n';
    if (!previous.isEmpty())
        text += "In-Reply-To: " + previous + '\n';
    const QByteArray folder = Folder::name(message.folder).toLatin1();
    if (!folder.isEmpty())
        text += "Keywords: " + folder + '\n';
    text += message.isRead ? "Status: RO\n" : "Status: O\n"; // as mail programs write it
    text += "MIME-Version: 1.0\n"
            "Content-Type: text/plain; charset=utf-8\n"
            "Content-Transfer-Encoding: quoted-printable\n\n";
    return text + MailText::quotedPrintable(message.body) + "\n\n";
}

} // namespace

void print(const QList<StoredMessage> &messages, StandardOutput &output)
{
    Threads threads;
    for (const StoredMessage &message : messages)
        output.write(mail(message, threads));
}

} // namespace Mailbox
