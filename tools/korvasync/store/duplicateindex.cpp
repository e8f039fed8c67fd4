// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "duplicateindex.h"

int DuplicateIndex::storedId(const Fingerprint &fingerprint, int n) const
{
    const QList<int> newestFirst = stored.values(fingerprint);
    return newestFirst.at(newestFirst.size() - n);
}
