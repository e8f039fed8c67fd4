// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "fingerprint.h"

#include "shared/number.h"
#include "shared/parsedmessage.h"
#include "xmltext.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QtEndian>

#include <initializer_list>

static Fingerprint digestOf(std::initializer_list<QByteArray> parts)
{
    constexpr int mostlyEnough = 512;
    QByteArray bytes;
    bytes.reserve(mostlyEnough);
    for (const QByteArray &part : parts)
        bytes.append(part).append('\0');
    bytes.chop(1);
    const QByteArray digest = QCryptographicHash::hash(bytes, QCryptographicHash::Sha1);
    return {qFromBigEndian<quint64>(digest.constData()),
            qFromBigEndian<quint64>(digest.constData() + sizeof(quint64))};
}

static QByteArray secondOf(const QDateTime &time)
{
    return QByteArray::number(time.isValid() ? time.toSecsSinceEpoch() : -1);
}

// Programs differ in how they spell line ends and letters with accents.
static QByteArray plainForm(const QString &body)
{
    const QStringView compared = ParsedMessage::comparable(body);
    QString text = compared.size() == body.size() ? body : compared.toString();
    if (text.contains(QLatin1Char('\r'))) {
        text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
        text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    }
    return text.normalized(QString::NormalizationForm_C).toUtf8();
}

Fingerprint Fingerprint::of(int folder, const QString &number, const QDateTime &time,
                            const QString &body)
{
    return digestOf({QByteArray::number(folder), secondOf(time),
                     Number::comparable(number).toUtf8(), plainForm(body)});
}

Fingerprint Fingerprint::atAnyTime(int folder, const QString &number, const QString &body)
{
    return digestOf({QByteArray::number(folder), QByteArray(), Number::comparable(number).toUtf8(),
                     plainForm(body)});
}

Fingerprint Fingerprint::of(const StoredMessage &message)
{
    return of(message.folder, message.number, message.time, message.body);
}

Fingerprint Fingerprint::of(const Call &call)
{
    return digestOf({call.type.toUtf8(), secondOf(call.start),
                     Number::comparable(call.number).toUtf8(), QByteArray::number(call.duration)});
}

static constexpr char ExportMark[] = "android";

Fingerprint Fingerprint::ofExport(int folder, const QString &number, const QDateTime &time,
                                  const QString &body)
{
    const int exported = folder == KorvaSyncIf::LocMyFolder ? KorvaSyncIf::LocInbox : folder;
    return digestOf({ExportMark, QByteArray::number(exported), secondOf(time),
                     Number::comparable(XmlText::held(number)).toUtf8(),
                     plainForm(XmlText::held(body))});
}

Fingerprint Fingerprint::ofExport(const Call &call)
{
    return digestOf({ExportMark, call.type.toUtf8(), secondOf(call.start),
                     Number::comparable(XmlText::held(call.number)).toUtf8(),
                     QByteArray::number(call.duration)});
}

std::optional<Fingerprint> Fingerprint::ofLossyExport(int folder, const QString &number,
                                                      const QDateTime &time, const QString &body)
{
    const bool isWhole =
        folder != KorvaSyncIf::LocMyFolder && XmlText::canHold(number) && XmlText::canHold(body);
    return isWhole ? std::nullopt : std::optional(ofExport(folder, number, time, body));
}

std::optional<Fingerprint> Fingerprint::ofLossyExport(const Call &call)
{
    return XmlText::canHold(call.number) ? std::nullopt : std::optional(ofExport(call));
}
