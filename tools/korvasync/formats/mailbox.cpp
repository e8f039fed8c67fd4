// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "mailbox.h"

#include "mailtext.h"
#include "model/fingerprint.h"
#include "model/folder.h"
#include "shared/number.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QHash>
#include <QtCore/QLocale>
#include <QtCore/QSet>
#include <QtCore/QUrl>

#include <algorithm>

namespace Mailbox {

namespace {

const char *const OwnAddress = "me@phone.invalid";

//! The party of a number, whichever way it is spelled. A national number is that of the only
//! international one among the messages that ends with it.
class Parties
{
public:
    explicit Parties(const QList<StoredMessage> &messages);

    QString of(const QString &number) const;

private:
    // Longer ones are none, and would fill the table.
    static constexpr int MostDigits = 17;
    static constexpr int FewestDigits = 7; // without the country, and maybe the region

    QHash<QString, QString> m_internationals; // by their ends; empty = several
};

// What stands between the digits is for people.
QString compact(const QString &number)
{
    QString found;
    for (const QChar c : number) {
        if (c.isLetter() || c.isSurrogate())
            return number.normalized(QString::NormalizationForm_C);
        if (c.isDigit())
            found += QChar('0' + c.digitValue());
        else if (!QStringLiteral(" ()-./").contains(c))
            found += c;
    }
    return found.isEmpty() ? number : found;
}

bool isNumber(const QString &party)
{
    const auto first = party.startsWith(QLatin1Char('+')) ? party.cbegin() + 1 : party.cbegin();
    return first != party.cend()
        && std::all_of(first, party.cend(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

bool isInternational(const QString &party)
{
    return party.startsWith(QLatin1Char('+')) && isNumber(party);
}

Parties::Parties(const QList<StoredMessage> &messages)
{
    QSet<QString> known;
    for (const StoredMessage &message : messages) {
        if (known.contains(message.number))
            continue;
        known += message.number;
        const QString party = compact(message.number);
        const QString digits = Number::significantDigits(party);
        if (!isInternational(party) || digits.size() > MostDigits)
            continue;
        for (int length = FewestDigits; length <= digits.size(); ++length) {
            const QString end = digits.right(length);
            const bool isOthers = m_internationals.value(end, party) != party;
            m_internationals.insert(end, isOthers ? QString() : party);
        }
    }
}

QString Parties::of(const QString &number) const
{
    QString party = compact(number);
    if (isInternational(party) || !isNumber(party))
        return party;
    const QString international = m_internationals.value(Number::significantDigits(party));
    return international.isEmpty() ? party : international;
}

// A name in a domain that cannot exist, of what an address may hold.
QByteArray addressOf(const QString &party)
{
    constexpr int longest = 64;
    constexpr int digits = 16; // that tell apart what begins alike
    QByteArray local = QUrl::toPercentEncoding(party, "+", ".");
    if (local.isEmpty())
        local = "unknown";
    if (local.size() > longest) {
        const QByteArray hash = QCryptographicHash::hash(local, QCryptographicHash::Sha256).toHex();
        local = local.left(longest - digits - 1) + '.' + hash.left(digits);
    }
    return local + "@number.invalid";
}

QByteArray ownMailbox() { return QByteArray("me <") + OwnAddress + '>'; }

//! \param number  as the message spells it
QByteArray mailboxOf(const QString &number, const QByteArray &address)
{
    return number.isEmpty() ? address : MailText::phrase(number) + " <" + address + '>';
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

//! Gives the mails their ids, and knows with which one each conversation began.
class Threads
{
public:
    //! The same for the same messages in every mailbox. Of equal ones the second and all
    //! further have their count in it.
    QByteArray newId(const StoredMessage &message)
    {
        const Fingerprint fingerprint = Fingerprint::of(message);
        const int count = ++m_counts[fingerprint];
        return '<' + hex(fingerprint.high) + hex(fingerprint.low)
            + (count > 1 ? '.' + QByteArray::number(count) : QByteArray()) + "@korvasync.invalid>";
    }

    //! \return the id of the first mail with this address; empty when \a id is that one's
    QByteArray beginning(const QByteArray &address, const QByteArray &id)
    {
        const auto found = m_firstIds.constFind(address);
        if (found != m_firstIds.constEnd())
            return *found;
        m_firstIds.insert(address, id);
        return QByteArray();
    }

private:
    QHash<Fingerprint, int> m_counts;
    QHash<QByteArray, QByteArray> m_firstIds; // by address
};

QByteArray mail(const StoredMessage &message, const QString &party, Threads &threads)
{
    const bool outbound = Folder::isOutbound(message.folder);
    const QDateTime time = timeOf(message);
    const QByteArray id = threads.newId(message);
    const QByteArray address = addressOf(party);
    const QByteArray first = threads.beginning(address, id);
    const QByteArray other = mailboxOf(message.number, address);
    QByteArray text =
        "From " + (outbound ? QByteArray(OwnAddress) : address) + ' ' + separatorTime(time) + '\n';
    text += "From: " + (outbound ? ownMailbox() : other) + '\n';
    text += "To: " + (outbound ? other : ownMailbox()) + '\n';
    text += "Subject: SMS with "
        + (party.isEmpty() ? QByteArray("unknown") : MailText::headerText(party)) + '\n';
    text += "Date: " + headerTime(time) + '\n';
    text += "Message-ID: " + id + '\n';
    if (!first.isEmpty())
        text += "In-Reply-To: " + first + "\nReferences: " + first + '\n';
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
    const Parties parties(messages);
    Threads threads;
    for (const StoredMessage &message : messages)
        output.write(mail(message, parties.of(message.number), threads));
}

} // namespace Mailbox
