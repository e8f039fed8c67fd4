// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "fingerprint.h"

#include "messages/number.h"

#include <QtCore/QCryptographicHash>

#include <cstring>

static Fingerprint digestOf(const QByteArrayList &parts)
{
    const QByteArray digest = QCryptographicHash::hash(parts.join('\0'), QCryptographicHash::Sha1);
    Fingerprint fingerprint;
    std::memcpy(&fingerprint.high, digest.constData(), sizeof fingerprint.high);
    std::memcpy(&fingerprint.low, digest.constData() + sizeof fingerprint.high,
                sizeof fingerprint.low);
    return fingerprint;
}

static QByteArray secondOf(const QDateTime &time)
{
    return QByteArray::number(time.isValid() ? time.toSecsSinceEpoch() : -1);
}

Fingerprint Fingerprint::of(int folder, const QString &number, const QDateTime &time,
                            const QString &body)
{
    return digestOf({QByteArray::number(folder), secondOf(time),
                     Number::comparable(number).toUtf8(), body.toUtf8()});
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
