// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "duplicateindex.h"

#include <algorithm>

void DuplicateIndex::addStored(const Fingerprint &fingerprint, int id)
{
    Entry &entry = m_entries[fingerprint];
    if (entry.stored++ == 0)
        entry.firstId = id;
    else
        m_furtherIds[fingerprint].push_back(id);
}

void DuplicateIndex::addStored(const Fingerprint &fingerprint,
                               const std::optional<Fingerprint> &exported, int id)
{
    addStored(fingerprint, id);
    if (exported)
        addStored(*exported, id);
}

int DuplicateIndex::countInFile(const Fingerprint &fingerprint)
{
    Entry &entry = m_entries[fingerprint];
    if (entry.lastFile != m_file)
        entry.inFile = 0;
    entry.lastFile = m_file;
    return ++entry.inFile;
}

int DuplicateIndex::storedId(const Fingerprint &fingerprint, int n) const
{
    if (n == 1)
        return entry(fingerprint).firstId;
    return m_furtherIds.constFind(fingerprint)->at(static_cast<size_t>(n) - 2);
}

std::vector<std::vector<int>> DuplicateIndex::repeatedIds() const
{
    std::vector<std::vector<int>> groups;
    for (auto further = m_furtherIds.cbegin(); further != m_furtherIds.cend(); ++further) {
        groups.push_back(*further);
        groups.back().push_back(entry(further.key()).firstId);
        std::sort(groups.back().begin(), groups.back().end());
    }
    std::sort(groups.begin(), groups.end());
    return groups;
}
