// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "formreader.h"

void FormReader::openHere(Kind kindOfItem)
{
    m_kind = kindOfItem;
    m_hasBegun = true;
    m_begin = m_window.here();
    m_window.enterLine();
}

void FormReader::emitItem(quint64 end)
{
    if (m_kind)
        m_items += InputItem{*m_kind, m_window.bytes(m_begin.offset, end), m_begin.line, false};
    close();
}

void FormReader::emitTooLong()
{
    if (m_kind)
        m_items += InputItem{*m_kind, QByteArray(), m_begin.line, true};
    close();
}
