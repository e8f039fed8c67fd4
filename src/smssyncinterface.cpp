// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <korvasync/smssyncinterface.h>

#include "base/logging.h"
#include "smssyncinterface_p.h"
#include "syncstorageif/syncstorageif.h"
#include "syncstorageif/syncstorageifmanager.h"

#include <korvasync/vmessageencoder.h>

#include <QtCore/QDebug>

namespace KorvaSyncIf {

SMSSyncInterface::SMSSyncInterface(QObject *parent)
    : QObject(parent)
    , d(new SMSSyncInterfacePrivate)
{
    qCDebug(lcFacade) << "KorvaSyncIf::SMSSyncInterface::SMSSyncInterface(QObject*)";
}

SMSSyncInterface::~SMSSyncInterface()
{
    qCDebug(lcFacade) << "virtual KorvaSyncIf::SMSSyncInterface::~SMSSyncInterface()";
    if (d) {
        qCDebug(lcFacade) << "Deleting SMSSyncInterface Private";
        delete d;
        d = nullptr;
    }
}

PendingMsgs *SMSSyncInterface::messages(const QDateTime &since, LocationId location)
{
    const char *const signature = "KorvaSyncIf::PendingMsgs* KorvaSyncIf::SMSSyncInterface::"
                                  "messages(const QDateTime&, KorvaSyncIf::LocationId)";
    qCDebug(lcFacade) << "Enter" << signature << since << int(location);
    PendingMsgs *const pending = new PendingMsgs(this);
    pending->messages(since, location, false);
    qCDebug(lcFacade) << "Exit" << signature;
    return pending;
}

PendingMsgs *SMSSyncInterface::modifiedMessages(const QDateTime &since, LocationId location)
{
    const char *const signature = "KorvaSyncIf::PendingMsgs* KorvaSyncIf::SMSSyncInterface::"
                                  "modifiedMessages(const QDateTime&, KorvaSyncIf::LocationId)";
    qCDebug(lcFacade) << "Enter" << signature << since << int(location);
    PendingMsgs *const pending = new PendingMsgs(this);
    pending->messages(since, location, true);
    qCDebug(lcFacade) << "Exit" << signature;
    return pending;
}

SyncSmsInfo SMSSyncInterface::message(int id)
{
    qCDebug(lcFacade) << "KorvaSyncIf::SyncSmsInfo KorvaSyncIf::SMSSyncInterface::message(int)"
                      << id;
    return d->encodeMsg(SyncStorageIfManager::getInstance()->syncStorageIf()->fetchSms(id));
}

PendingIds *SMSSyncInterface::addNewMessages(QList<SyncSmsInfo> &msgs)
{
    const char *const signature =
        "KorvaSyncIf::PendingIds* "
        "KorvaSyncIf::SMSSyncInterface::addNewMessages(QList<KorvaSyncIf::SyncSmsInfo>&)";
    qCDebug(lcFacade) << "Enter" << signature;
    PendingIds *const pending = new PendingIds(int(msgs.size()), this);
    if (msgs.isEmpty()) {
        pending->setZeroMessagesPassedError();
    } else {
        QMap<int, SMSSyncError> errors;
        const QList<SmsInfo> records = d->parseAllVMessages(msgs, errors, false);
        if (!errors.isEmpty())
            pending->setStatusIds(errors.keys(), errors.values());
        pending->store(records);
    }
    qCDebug(lcFacade) << "Exit" << signature;
    return pending;
}

PendingStatus *SMSSyncInterface::modifyMessages(const QList<SyncSmsInfo> &msgs)
{
    const char *const signature =
        "KorvaSyncIf::PendingStatus* KorvaSyncIf::SMSSyncInterface::modifyMessages(const "
        "QList<KorvaSyncIf::SyncSmsInfo>&)";
    qCDebug(lcFacade) << "Enter" << signature;
    PendingStatus *const pending = new PendingStatus(int(msgs.size()), SmsSync, this);
    if (msgs.isEmpty()) {
        pending->setZeroMessagesPassedError();
    } else {
        QMap<int, SMSSyncError> errors;
        d->checkForValidItemIds(msgs, errors);
        const QList<SmsInfo> records = d->parseAllVMessages(msgs, errors, true);
        if (!errors.isEmpty())
            pending->setStatusIds(errors.keys(), errors.values());
        pending->modify(records);
    }
    qCDebug(lcFacade) << "Exit" << signature;
    return pending;
}

PendingStatus *SMSSyncInterface::deleteMessages(const QList<int> &ids)
{
    const char *const signature =
        "KorvaSyncIf::PendingStatus* "
        "KorvaSyncIf::SMSSyncInterface::deleteMessages(const QList<int>&)";
    qCDebug(lcFacade) << "Enter" << signature << ids;
    PendingStatus *const pending = new PendingStatus(int(ids.size()), SmsSync, this);
    if (ids.isEmpty()) {
        pending->setZeroMessagesPassedError();
    } else {
        QMap<int, SMSSyncError> errors;
        const QList<SmsInfo> records = d->validItemIds(ids, errors);
        if (!errors.isEmpty())
            pending->setStatusIds(errors.keys(), errors.values());
        pending->deleteIds(records);
    }
    qCDebug(lcFacade) << "Exit" << signature;
    return pending;
}

SMSSyncInterfacePrivate::SMSSyncInterfacePrivate()
{
    qCDebug(lcFacade) << "KorvaSyncIf::SMSSyncInterfacePrivate::SMSSyncInterfacePrivate()";
}

// Adapters go with any facade, also those that work for another one: the owner of a phone
// that ends one synchronisation ends them all.
SMSSyncInterfacePrivate::~SMSSyncInterfacePrivate()
{
    qCDebug(lcFacade) << "KorvaSyncIf::SMSSyncInterfacePrivate::~SMSSyncInterfacePrivate()"
                      << "Destroyed";
    SyncStorageIfManager::getInstance()->deleteAll();
}

SyncSmsInfo SMSSyncInterfacePrivate::encodeMsg(const SmsInfo &info)
{
    qCDebug(lcFacade) << "KorvaSyncIf::SyncSmsInfo "
                         "KorvaSyncIf::SMSSyncInterfacePrivate::encodeMsg(const "
                         "KorvaSyncIf::SmsInfo&)";
    VMessageEncoder encoder;
    return encoder.encode(info);
}

QList<SmsInfo> SMSSyncInterfacePrivate::validItemIds(const QList<int> &ids,
                                                     QMap<int, SMSSyncError> &errors)
{
    qCDebug(lcFacade) << "QList<KorvaSyncIf::SmsInfo> "
                         "KorvaSyncIf::SMSSyncInterfacePrivate::validItemIds(const QList<int>&, "
                         "QMap<int, KorvaSyncIf::SMSSyncError>&)";
    QList<SmsInfo> records;
    records.reserve(ids.size());
    for (int i = 0; i < ids.size(); ++i) {
        if (ids.at(i) < 0) {
            qCDebug(lcFacade) << "Found an invalid id" << ids.at(i) << "@ idx" << i;
            errors.insert(i, SmsInvalidId);
            continue;
        }
        SmsInfo info;
        info.id = ids.at(i);
        info.refId = i;
        records.append(info);
    }
    return records;
}

void SMSSyncInterfacePrivate::checkForValidItemIds(const QList<SyncSmsInfo> &msgs,
                                                   QMap<int, SMSSyncError> &errors)
{
    qCDebug(lcFacade) << "void KorvaSyncIf::SMSSyncInterfacePrivate::checkForValidItemIds(const "
                         "QList<KorvaSyncIf::SyncSmsInfo>&, QMap<int, "
                         "KorvaSyncIf::SMSSyncError>&)";
    invalidIndexes.clear();
    for (int i = 0; i < msgs.size(); ++i) {
        if (msgs.at(i).id >= 0)
            continue;
        qCDebug(lcFacade) << "Found an invalid item id" << msgs.at(i).id << "@ idx" << i;
        invalidIndexes.append(i);
        errors.insert(i, SmsInvalidId);
    }
}

} // namespace KorvaSyncIf

#include "korvasync/moc_smssyncinterface.cpp"
