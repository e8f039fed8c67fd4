// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "syncstorageifmanager.h"

#include "base/logging.h"
#include "syncstorageif.h"

#include <QtCore/QDebug>

namespace KorvaSyncIf {

SyncStorageIfManager *SyncStorageIfManager::manager = nullptr;

SyncStorageIfManager::SyncStorageIfManager()
{
    qCDebug(lcAdapter) << "KorvaSyncIf::SyncStorageIfManager::SyncStorageIfManager()";
}

SyncStorageIfManager::~SyncStorageIfManager()
{
    qCDebug(lcAdapter) << "KorvaSyncIf::SyncStorageIfManager::~SyncStorageIfManager()";
}

SyncStorageIfManager *SyncStorageIfManager::getInstance()
{
    if (!manager)
        manager = new SyncStorageIfManager;
    return manager;
}

SyncStorageIf *SyncStorageIfManager::syncStorageIf()
{
    qCDebug(lcAdapter)
        << "KorvaSyncIf::SyncStorageIf* KorvaSyncIf::SyncStorageIfManager::syncStorageIf()";
    if (current && !current->inUse()) {
        qCDebug(lcAdapter) << "StorageIf not in use anymore, returning the same storageIf";
        return current;
    }
    if (current) {
        qCDebug(lcAdapter)
            << "StorageIf in use, saving it in for later deletion, creating a new storageIf";
        retired.append(current);
    } else {
        qCDebug(lcAdapter) << "Creating StorageIf";
    }
    current = new SyncStorageIf(nullptr);
    return current;
}

void SyncStorageIfManager::deleteAll()
{
    qCDebug(lcAdapter) << "void KorvaSyncIf::SyncStorageIfManager::deleteAll()";
    delete current;
    current = nullptr;
    qDeleteAll(retired);
    retired.clear();
}

} // namespace KorvaSyncIf
