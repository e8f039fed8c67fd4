// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "deadends.h"

#include "elementscanner.h"

constexpr int shelterBits = 16;
static_assert(ElementScanner::shelterCount <= shelterBits);

static quint64 offsetOf(quint64 entry) { return entry >> shelterBits; }

void DeadEnds::begin(quint64 offset)
{
    while (!passed.empty() && offsetOf(passed.front()) <= offset)
        passed.pop_front();
    next = 0;
}

bool DeadEnds::pass(quint64 offset, int shelter)
{
    while (next < passed.size() && offsetOf(passed[next]) < offset)
        ++next;
    if (next == passed.size())
        passed.push_back(offset << shelterBits);
    const quint64 bit = quint64(1) << shelter;
    const bool isNew = (passed[next] & bit) == 0;
    passed[next] |= bit;
    return isNew;
}
