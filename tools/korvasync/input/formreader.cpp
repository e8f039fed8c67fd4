// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "formreader.h"

void FormReader::openHere(Kind kindOfItem)
{
    kind = kindOfItem;
    hasBegun = true;
    begin = window.here();
    window.enterLine();
}

void FormReader::emitItem(quint64 end)
{
    if (kind)
        items += InputItem{*kind, window.bytes(begin.offset, end), begin.line, false};
    close();
}

void FormReader::emitTooLong()
{
    if (kind)
        items += InputItem{*kind, QByteArray(), begin.line, true};
    close();
}
