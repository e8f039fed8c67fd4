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
    if (m_current && !m_current->inUse()) {
        qCDebug(lcAdapter) << "StorageIf not in use anymore, returning the same storageIf";
        return m_current;
    }
    if (m_current) {
        qCDebug(lcAdapter)
            << "StorageIf in use, saving it in for later deletion, creating a new storageIf";
        m_retired.append(m_current);
    } else {
        qCDebug(lcAdapter) << "Creating StorageIf";
    }
    m_current = new SyncStorageIf(nullptr);
    return m_current;
}

void SyncStorageIfManager::deleteAll()
{
    qCDebug(lcAdapter) << "void KorvaSyncIf::SyncStorageIfManager::deleteAll()";
    delete m_current;
    m_current = nullptr;
    qDeleteAll(m_retired);
    m_retired.clear();
}

} // namespace KorvaSyncIf
