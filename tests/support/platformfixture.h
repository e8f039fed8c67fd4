// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "scriptedstore.h"
#include "syncstorageif/syncstorageif.h"
#include "syncstorageif/syncstorageifmanager.h"

#include <QtCore/QObject>

//! A scripted store and a parent for pending objects. The pool of adapters is empty before and
//! after; everything that a test makes below it is gone before the store.
struct PlatformFixture
{
    PlatformFixture() = default;
    ~PlatformFixture() { SyncStorageIfManager::getInstance()->deleteAll(); }

    //! The adapter that the next pending object takes.
    KorvaSyncIf::SyncStorageIf *adapter() const
    {
        return SyncStorageIfManager::getInstance()->syncStorageIf();
    }

    ScriptedStore store;
    QObject parent;

private:
    Q_DISABLE_COPY(PlatformFixture)
    using SyncStorageIfManager = KorvaSyncIf::SyncStorageIfManager;
};
