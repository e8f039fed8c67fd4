// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "suggestion.h"

#include "shared/text.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <utility>
#include <vector>

namespace Suggestion {

int distance(const QString &typed, const QString &word, int most)
{
    const QString from = typed.toCaseFolded();
    const QString to = word.toCaseFolded();
    const auto size = static_cast<size_t>(to.size());
    if (std::abs(static_cast<int>(from.size()) - static_cast<int>(to.size())) > most)
        return most + 1;
    // Rows of the table of distances between the beginnings of the two.
    std::vector<int> beforeLast(size + 1);
    std::vector<int> last(size + 1);
    std::vector<int> row(size + 1);
    std::iota(row.begin(), row.end(), 0);
    for (int i = 0; i < from.size(); ++i) {
        std::swap(beforeLast, last);
        std::swap(last, row);
        row[0] = i + 1;
        for (int j = 0; j < to.size(); ++j) {
            const auto at = static_cast<size_t>(j);
            row[at + 1] = std::min(
                {last[at + 1] + 1, row[at] + 1, last[at] + (from.at(i) == to.at(j) ? 0 : 1)});
            const bool isSwapped =
                i > 0 && j > 0 && from.at(i) == to.at(j - 1) && from.at(i - 1) == to.at(j);
            if (isSwapped)
                row[at + 1] = std::min(row[at + 1], beforeLast[at - 1] + 1);
        }
    }
    return std::min(row[size], most + 1);
}

QString nearest(const QString &typed, const QStringList &words)
{
    constexpr int lettersAFault = 4; // fewer than these to each fault, and it is another word
    QString found;
    int least = std::max(1, static_cast<int>(typed.size()) / lettersAFault) + 1;
    for (const QString &word : words) {
        const int faults = distance(typed, word, least);
        if (faults < least) {
            least = faults;
            found = word;
        }
    }
    return found;
}

QString added(const QString &sentence, const QString &typed, const QStringList &words)
{
    const QString meant = nearest(typed, words);
    return meant.isEmpty() ? sentence : Text::tr("%1 (did you mean %2?)").arg(sentence, meant);
}

} // namespace Suggestion
