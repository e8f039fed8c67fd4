// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "inputitem.h"

QString InputItem::firstLine() const
{
    constexpr int mostShown = 40;
    return QString::fromUtf8(bytes.left(bytes.indexOf('\n')).trimmed().left(mostShown));
}
