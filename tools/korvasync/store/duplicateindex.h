// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "model/fingerprint.h"

#include <QtCore/QHash>

#include <vector>

//! Tells whether a message or call of the input is in the store already.
//!
//! The n-th equal item of one file matches the n-th stored one, so that true repeats
//! inside a file survive, while the same item in a second file is a duplicate.
//!
//! Costs less than 100 bytes an item, of the store or of the file.
class DuplicateIndex
{
public:
    //! An item of the store, in the order of the store.
    //! \param id  -1 where it has none
    void addStored(const Fingerprint &fingerprint, int id);
    //! \param exported  under which it is found as well
    void addStored(const Fingerprint &fingerprint, const std::optional<Fingerprint> &exported,
                   int id);

    //! From here on equal items are counted anew.
    void beginFile() { ++m_file; }

    //! Notes one more item of the file.
    //! \return how many equal ones the file has had, this one included
    int countInFile(const Fingerprint &fingerprint);

    int storedCount(const Fingerprint &fingerprint) const { return entry(fingerprint).stored; }
    //! The database id of the n-th equal item, n from 1 to storedCount().
    int storedId(const Fingerprint &fingerprint, int n) const;

    //! The database ids of items that the store has more than once: equal ones together,
    //! lowest first.
    std::vector<std::vector<int>> repeatedIds() const;

private:
    //! What is known of equal items. Most have no equal, so the ids of further ones are apart.
    struct Entry
    {
        int stored = 0;
        int firstId = -1;
        int inFile = 0; // as of lastFile
        int lastFile = 0;
    };

    Entry entry(const Fingerprint &fingerprint) const { return m_entries.value(fingerprint); }

    QHash<Fingerprint, Entry> m_entries;
    QHash<Fingerprint, std::vector<int>> m_furtherIds;
    int m_file = 0;
};
