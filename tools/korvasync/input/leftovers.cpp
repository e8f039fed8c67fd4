// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "leftovers.h"

#include "inputitem.h"

#include <utility>

void Leftovers::beginReason()
{
    end(false);
    begin = window.offset();
    hasReason = true;
}

void Leftovers::end(bool beforeItem)
{
    if (hasReason && begin) {
        const QByteArray bytes = window.bytes(*begin, window.offset());
        if (!beforeItem || !bytes.mid(bytes.indexOf('\n') + 1).trimmed().isEmpty())
            ended += bytes;
    }
    drop();
}

void Leftovers::drop()
{
    hasReason = false;
    begin.reset();
}

std::optional<quint64> Leftovers::needed()
{
    if (begin && window.offset() - *begin > InputItem::longest)
        begin.reset();
    return begin;
}

QByteArray Leftovers::take() { return std::exchange(ended, QByteArray()); }

QByteArray Leftovers::open() const
{
    return begin ? window.bytes(*begin, window.end()) : QByteArray();
}
