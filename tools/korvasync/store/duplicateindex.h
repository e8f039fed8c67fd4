// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "fingerprint.h"

#include <QtCore/QHash>
#include <QtCore/QList>

//! Tells whether a message of the input is in the store already.
//!
//! The n-th equal message of one file matches the n-th stored one, so that true repeats
//! inside a file survive, while the same message in a second file is a duplicate.
class DuplicateIndex
{
public:
    //! A message of the store, in the order of the store.
    void addStored(const Fingerprint &fingerprint, int id) { stored.insert(fingerprint, id); }
    bool hasStored(const Fingerprint &fingerprint, int id) const
    {
        return stored.contains(fingerprint, id);
    }

    //! From here on equal messages are counted anew.
    void beginFile() { seenInFile.clear(); }

    //! Notes one more message of the file.
    //! \return how many equal ones the file has had, this one included
    int countInFile(const Fingerprint &fingerprint) { return ++seenInFile[fingerprint]; }

    int storedCount(const Fingerprint &fingerprint) const
    {
        return static_cast<int>(stored.count(fingerprint));
    }
    //! The database id of the n-th equal message, n from 1 to storedCount().
    int storedId(const Fingerprint &fingerprint, int n) const;

private:
    QMultiHash<Fingerprint, int> stored; // database ids
    QHash<Fingerprint, int> seenInFile;
};
