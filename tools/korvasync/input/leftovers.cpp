// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "leftovers.h"

#include "inputitem.h"

#include <utility>

void Leftovers::beginReason()
{
    end(false);
    m_begin = m_window.offset();
    m_hasReason = true;
}

void Leftovers::end(bool beforeItem)
{
    if (m_hasReason && m_begin) {
        const QByteArray bytes = m_window.bytes(*m_begin, m_window.offset());
        if (!beforeItem || !bytes.mid(bytes.indexOf('\n') + 1).trimmed().isEmpty())
            m_ended += bytes;
    }
    drop();
}

void Leftovers::drop()
{
    m_hasReason = false;
    m_begin.reset();
}

std::optional<quint64> Leftovers::needed()
{
    if (m_begin && m_window.offset() - *m_begin > InputItem::Longest)
        m_begin.reset();
    return m_begin;
}

QByteArray Leftovers::take() { return std::exchange(m_ended, QByteArray()); }

QByteArray Leftovers::open() const
{
    return m_begin ? m_window.bytes(*m_begin, m_window.end()) : QByteArray();
}
