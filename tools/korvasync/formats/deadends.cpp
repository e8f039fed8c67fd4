// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "deadends.h"

#include "elementscanner.h"

constexpr int ShelterBits = 16;
static_assert(ElementScanner::ShelterCount <= ShelterBits);

static quint64 offsetOf(quint64 entry) { return entry >> ShelterBits; }

void DeadEnds::begin(quint64 offset)
{
    while (!m_passed.empty() && offsetOf(m_passed.front()) <= offset)
        m_passed.pop_front();
    m_next = 0;
}

bool DeadEnds::pass(quint64 offset, int shelter)
{
    while (m_next < m_passed.size() && offsetOf(m_passed[m_next]) < offset)
        ++m_next;
    if (m_next == m_passed.size())
        m_passed.push_back(offset << ShelterBits);
    const quint64 bit = quint64(1) << shelter;
    const bool isNew = (m_passed[m_next] & bit) == 0;
    m_passed[m_next] |= bit;
    return isNew;
}
