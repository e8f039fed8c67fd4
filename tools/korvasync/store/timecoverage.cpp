// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "timecoverage.h"

#include <algorithm>
#include <iterator>

static QDateTime boundAt(qint64 second, qint64 none)
{
    return second == none ? QDateTime() : QDateTime::fromSecsSinceEpoch(second, Qt::UTC);
}

QDateTime TimeCoverage::Span::from() const { return boundAt(begin, Earliest); }

QDateTime TimeCoverage::Span::to() const { return boundAt(end, Latest); }

std::optional<TimeCoverage::Span> TimeCoverage::grow(qint64 second)
{
    Span gap{Earliest, Latest};
    auto above = m_covered.upperBound(second);
    if (above != m_covered.end())
        gap.end = above.key();
    if (above != m_covered.begin())
        gap.begin = std::prev(above).value();
    if (second < gap.begin)
        return std::nullopt;
    const Span span{std::max(gap.begin, second - m_reach), std::min(gap.end, second + m_reach)};
    m_reach = std::min(2 * m_reach, Latest);
    Span covered = span;
    if (above != m_covered.end() && above.key() == span.end) {
        covered.end = above.value();
        m_covered.remove(span.end);
        above = m_covered.upperBound(second);
    }
    if (above != m_covered.begin() && std::prev(above).value() == span.begin)
        covered.begin = std::prev(above).key();
    m_covered.insert(covered.begin, covered.end);
    return span;
}

QList<TimeCoverage::Span> TimeCoverage::growToAll()
{
    QList<Span> gaps;
    qint64 begin = Earliest;
    for (auto span = m_covered.cbegin(); span != m_covered.cend(); ++span) {
        if (begin < span.key())
            gaps.append({begin, span.key()});
        begin = span.value();
    }
    if (begin < Latest)
        gaps.append({begin, Latest});
    m_covered = {{Earliest, Latest}};
    return gaps;
}
