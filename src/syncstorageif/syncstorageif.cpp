// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "syncstorageif.h"

#include "base/logging.h"
#include "syncstorageif_p.h"

#include <QtCore/QDebug>
#include <QtCore/QMetaType>

namespace KorvaSyncIf {

namespace {

// Lets the adapter's signals travel through queued connections.
void registerSignalTypes()
{
    static const int smsListType = qRegisterMetaType<QList<SmsInfo>>("QList<KorvaSyncIf::SmsInfo>");
    static const int causeType = qRegisterMetaType<ErrorCause>("KorvaSyncIf::ErrorCause");
    static const int callListType =
        qRegisterMetaType<QList<CallInfo>>("QList<KorvaSyncIf::CallInfo>");
    static const int boolListType = qRegisterMetaType<QList<bool>>("QList<bool>");
    static const int intListType = qRegisterMetaType<QList<int>>("QList<int>");
    Q_UNUSED(intListType) // in most signals, but not among the four of the trace
    qCDebug(lcAdapter) << "regId2>" << smsListType << "regId3" << causeType << "regId4"
                       << callListType << "regId5" << boolListType;
}

} // namespace

SyncStorageIfPrivate::SyncStorageIfPrivate()
{
    qCDebug(lcAdapter) << "KorvaSyncIf::SyncStorageIfPrivate::SyncStorageIfPrivate()";
}

SyncStorageIfPrivate::~SyncStorageIfPrivate()
{
    qCDebug(lcAdapter) << "Destroying SyncStorageIfPrivate";
    smsModel.reset();
    groupModel.reset();
    callModel.reset();
    eventModel.reset();
}

CommHistory::CallModel *SyncStorageIfPrivate::ensureCallModel()
{
    if (!callModel)
        callModel = std::make_unique<CommHistory::CallModel>(nullptr);
    return callModel.get();
}

CommHistory::EventModel *SyncStorageIfPrivate::ensureEventModel()
{
    if (!eventModel)
        eventModel = std::make_unique<CommHistory::EventModel>(nullptr);
    return eventModel.get();
}

SyncStorageIf::SyncStorageIf(QObject *parent)
    : QObject(parent)
    , d(new SyncStorageIfPrivate)
{
    qCDebug(lcAdapter) << "KorvaSyncIf::SyncStorageIf::SyncStorageIf(QObject*)";
    registerSignalTypes();
    Q_ASSERT_X(d, "SyncStorageIf", "d != NULL");
    d->smsModel =
        std::make_unique<CommHistory::SyncSMSModel>(LocInbox, QDateTime(), false, nullptr);
    d->groupModel = std::make_unique<CommHistory::GroupModel>(nullptr);
    d->groupModel->enableContactChanges(false);
}

SyncStorageIf::~SyncStorageIf()
{
    qCDebug(lcAdapter) << "virtual KorvaSyncIf::SyncStorageIf::~SyncStorageIf()"
                       << "SyncStorageIf Destroyed";
}

bool SyncStorageIf::inUse()
{
    qCDebug(lcAdapter) << "bool KorvaSyncIf::SyncStorageIf::inUse()"
                       << "Returning in Use Value";
    return d->inUse;
}

} // namespace KorvaSyncIf

#include "moc_syncstorageif.cpp"
