// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "listing.h"

#include "options/arguments.h"
#include "process/diagnostics.h"
#include "shared/number.h"
#include "shared/text.h"
#include "store/historyrequest.h"

#include <algorithm>
#include <limits>

using namespace KorvaSyncIf;

bool Listing::takeParty(const Invocation &invocation)
{
    const bool isTail = invocation.isSet("number-tail");
    if (isTail && invocation.isSet("number")) {
        Diagnostics::error(Text::tr("--number and --number-tail exclude each other"));
        return false;
    }
    const QString party = invocation.value(isTail ? "number-tail" : "number");
    // Numbers of calls stand in the store as they are meant.
    filter.party = filter.kind == HistoryItem::Kind::Message ? Number::asStored(party) : party;
    filter.partyMatch =
        isTail ? HistoryFilter::PartyMatch::SameEnding : HistoryFilter::PartyMatch::SameNumber;
    if (party.isEmpty() && (isTail || invocation.isSet("number"))) {
        Diagnostics::error(Text::tr("--%1 needs a number or a name")
                               .arg(QLatin1String(isTail ? "number-tail" : "number")));
        return false;
    }
    return true;
}

bool Listing::takeFilter(const Invocation &invocation)
{
    zone = invocation.global.localZone;
    return Arguments::takeZone(invocation.options, zone)
        && Arguments::takeTime(invocation.options, "since", zone, filter.from)
        && Arguments::takeTime(invocation.options, "until", zone, filter.to)
        && takeParty(invocation);
}

bool Listing::takeOptions(const Invocation &invocation)
{
    return takeFilter(invocation)
        && Arguments::takeNumber(invocation.options, "limit", 0, std::numeric_limits<int>::max(),
                                 m_limit);
}

bool Listing::isWanted(const HistoryItem &item) const { return !condition || condition(item); }

HistoryFilter Listing::newestFirst() const
{
    HistoryFilter newest = filter;
    newest.order = HistoryFilter::Order::NewestFirst;
    if (!condition)
        newest.limit = m_limit;
    return newest;
}

Answer Listing::readAll(const Invocation &invocation, const Take &take) const
{
    return HistoryRequest::forEach(invocation.global.timeout, filter, [&](const HistoryItem &item) {
        if (isWanted(item))
            take(item);
        return invocation.output.error().isEmpty();
    });
}

Answer Listing::readNewest(const Invocation &invocation, const Take &take) const
{
    QList<HistoryItem> newest;
    const Answer answer = HistoryRequest::forEach(invocation.global.timeout, newestFirst(),
                                                  [&](const HistoryItem &item) {
                                                      if (newest.size() < m_limit && isWanted(item))
                                                          newest += item;
                                                      return newest.size() < m_limit;
                                                  });
    std::for_each(newest.crbegin(), newest.crend(), take);
    return answer;
}

Answer Listing::read(const Invocation &invocation, const Take &take) const
{
    return m_limit == HistoryFilter::NoLimit ? readAll(invocation, take)
                                             : readNewest(invocation, take);
}

Answer Listing::count(const Invocation &invocation, qint64 *count) const
{
    if (condition) {
        return HistoryRequest::forEach(invocation.global.timeout, newestFirst(),
                                       [&](const HistoryItem &item) {
                                           if (*count != m_limit && isWanted(item))
                                               ++*count;
                                           return *count != m_limit;
                                       });
    }
    QList<HistoryCount> counts;
    const Answer answer = HistoryRequest::counts(invocation.global.timeout, filter,
                                                 HistoryCount::By::Folder, &counts);
    for (const HistoryCount &one : counts)
        *count += one.count;
    if (m_limit != HistoryFilter::NoLimit)
        *count = qMin<qint64>(*count, m_limit);
    return answer;
}

Answer Listing::printCount(const Invocation &invocation) const
{
    qint64 items = 0;
    const Answer answer = count(invocation, &items);
    if (answer == Answer::Finished)
        invocation.output.write(QByteArray::number(items) + '\n');
    return answer;
}
