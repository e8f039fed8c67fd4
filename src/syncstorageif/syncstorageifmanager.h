// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QList>

namespace KorvaSyncIf {

class SyncStorageIf;

//! The process's pool of store adapters.
//!
//! An adapter holds the state of the one batch it works on, so a busy one is never handed
//! out: it is set aside, finishes its batch, and is destroyed by deleteAll() only.
class SyncStorageIfManager
{
public:
    //! Never null; lives as long as the process.
    static SyncStorageIfManager *getInstance();

    //! An adapter that is not busy. The pool owns it.
    SyncStorageIf *syncStorageIf();
    //! Destroys every adapter, busy ones included.
    void deleteAll();

private:
    SyncStorageIfManager();
    ~SyncStorageIfManager();

    static SyncStorageIfManager *manager;

    SyncStorageIf *m_current = nullptr;
    QList<SyncStorageIf *> m_retired;
};

} // namespace KorvaSyncIf
