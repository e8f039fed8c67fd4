// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "numberfindings.h"

#include "shared/number.h"

#include <algorithm>

namespace {

bool isDigits(const QString &tail)
{
    return std::all_of(tail.cbegin(), tail.cend(), [](QChar c) { return c.isDigit(); });
}

// The international form ends with the national one, but for zeros that are dialled first.
bool canBeOneNumber(const QList<NumberFinding::Member> &members)
{
    QStringList numbers;
    for (const NumberFinding::Member &member : members)
        numbers += Number::significantDigits(member.number);
    const QString longest =
        *std::max_element(numbers.cbegin(), numbers.cend(),
                          [](const QString &a, const QString &b) { return a.size() < b.size(); });
    return std::all_of(numbers.cbegin(), numbers.cend(),
                       [&](const QString &number) { return longest.endsWith(number); });
}

QString reversed(QString text)
{
    std::reverse(text.begin(), text.end());
    return text;
}

} // namespace

void NumberFindings::add(const QString &number)
{
    if (!number.isEmpty())
        ++m_byTail[Number::comparable(number)][number];
}

int NumberFindings::numberCount() const
{
    int count = 0;
    for (const Spellings &spellings : m_byTail)
        count += static_cast<int>(spellings.size());
    return count;
}

QList<NumberFinding::Member> NumberFindings::membersOf(const Spellings &spellings)
{
    QList<NumberFinding::Member> members;
    for (auto it = spellings.cbegin(); it != spellings.cend(); ++it)
        members += {it.key(), it.value()};
    return members;
}

void NumberFindings::forEach(const std::function<void(const NumberFinding &)> &take) const
{
    findShared(NumberFinding::DifferentNumbers, take);
    findEnds(take);
    findPatterns(take);
    findShared(NumberFinding::Spellings, take);
}

void NumberFindings::findShared(NumberFinding::Kind kind,
                                const std::function<void(const NumberFinding &)> &take) const
{
    for (auto it = m_byTail.cbegin(); it != m_byTail.cend(); ++it) {
        if (it->size() < 2 || !isDigits(it.key()))
            continue;
        const QList<NumberFinding::Member> members = membersOf(*it);
        if (canBeOneNumber(members) == (kind == NumberFinding::Spellings))
            take({kind, it.key(), members});
    }
}

// Read from behind, those that end with a tail stand right after it.
void NumberFindings::findEnds(const std::function<void(const NumberFinding &)> &take) const
{
    QStringList fromBehind;
    for (auto it = m_byTail.cbegin(); it != m_byTail.cend(); ++it)
        fromBehind += reversed(it.key());
    fromBehind.sort();
    for (auto tail = fromBehind.cbegin(); tail != fromBehind.cend(); ++tail) {
        NumberFinding finding{NumberFinding::EndOfOthers, reversed(*tail), {}};
        if (!Number::isSoughtByEnd(finding.tail))
            continue;
        for (auto other = tail + 1; other != fromBehind.cend() && other->startsWith(*tail); ++other)
            finding.members += membersOf(m_byTail.value(reversed(*other)));
        if (finding.members.isEmpty())
            continue;
        finding.members = membersOf(m_byTail.value(finding.tail)) + finding.members;
        take(finding);
    }
}

void NumberFindings::findPatterns(const std::function<void(const NumberFinding &)> &take) const
{
    // A word with any other sign is looked for as it stands.
    const QLatin1String signs(".^$");
    for (auto it = m_byTail.cbegin(); it != m_byTail.cend(); ++it) {
        const QString &tail = it.key();
        if (Number::isSoughtByEnd(tail)
            && std::any_of(tail.cbegin(), tail.cend(), [&](QChar c) { return signs.contains(c); }))
            take({NumberFinding::Pattern, tail, membersOf(*it)});
    }
}
