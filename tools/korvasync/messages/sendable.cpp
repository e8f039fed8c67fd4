// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "sendable.h"

QString sendable(const QString &vMessage)
{
    const auto missing = vMessage.toUtf8().size() - vMessage.size();
    return vMessage + QString(int(missing), QLatin1Char('\n'));
}
