// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "fingerprint.h"

#include <QtCore/QHash>
#include <QtCore/QList>

//! Tells whether a message or call of the input is in the store already.
//!
//! The n-th equal item of one file matches the n-th stored one, so that true repeats
//! inside a file survive, while the same item in a second file is a duplicate.
class DuplicateIndex
{
public:
    //! An item of the store, in the order of the store.
    //! \param id  -1 where it has none
    void addStored(const Fingerprint &fingerprint, int id) { stored.insert(fingerprint, id); }
    bool hasStored(const Fingerprint &fingerprint, int id) const
    {
        return stored.contains(fingerprint, id);
    }

    //! From here on equal items are counted anew.
    void beginFile() { seenInFile.clear(); }

    //! Notes one more item of the file.
    //! \return how many equal ones the file has had, this one included
    int countInFile(const Fingerprint &fingerprint) { return ++seenInFile[fingerprint]; }

    int storedCount(const Fingerprint &fingerprint) const
    {
        return static_cast<int>(stored.count(fingerprint));
    }
    //! The database id of the n-th equal item, n from 1 to storedCount().
    int storedId(const Fingerprint &fingerprint, int n) const;

private:
    QMultiHash<Fingerprint, int> stored; // database ids
    QHash<Fingerprint, int> seenInFile;
};
