// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "fingerprint.h"

#include "messages/number.h"

#include <QtCore/QCryptographicHash>

#include <cstring>

Fingerprint Fingerprint::of(int folder, const QString &number, const QDateTime &time,
                            const QString &body)
{
    QCryptographicHash hash(QCryptographicHash::Sha1);
    const qint64 second = time.isValid() ? time.toSecsSinceEpoch() : -1;
    hash.addData(QByteArray::number(folder) + '\0' + QByteArray::number(second) + '\0'
                 + Number::comparable(number).toUtf8() + '\0' + body.toUtf8());
    const QByteArray digest = hash.result();
    Fingerprint fingerprint;
    std::memcpy(&fingerprint.high, digest.constData(), sizeof fingerprint.high);
    std::memcpy(&fingerprint.low, digest.constData() + sizeof fingerprint.high,
                sizeof fingerprint.low);
    return fingerprint;
}

Fingerprint Fingerprint::of(const StoredMessage &message)
{
    return of(message.folder, message.number, message.time, message.body);
}
