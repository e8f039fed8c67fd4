// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "syncstorageif/syncstorageif.h"

#include <QtCore/QStringList>

//! Writes down what an adapter emits, in order, such as "eventsCommitted(0 1; 101 102)".
class AdapterSignals : public QObject
{
public:
    explicit AdapterSignals(KorvaSyncIf::SyncStorageIf *adapter)
    {
        using namespace KorvaSyncIf;
        connect(adapter, &SyncStorageIf::dataReadyInModel, this, [this](QList<SmsInfo> list) {
            messages = list;
            note("dataReadyInModel", {QString::number(list.size())});
        });
        connect(adapter, &SyncStorageIf::callInfoDataReadyInModel, this,
                [this](QList<CallInfo> list) {
                    calls = list;
                    note("callInfoDataReadyInModel", {QString::number(list.size())});
                });
        connect(adapter, &SyncStorageIf::error, this, [this](QList<int> ids, ErrorCause cause) {
            note("error", {joined(ids), QString::number(int(cause))});
        });
        connect(adapter, qOverload<QList<int>, QList<int>>(&SyncStorageIf::eventsCommitted), this,
                [this](QList<int> refIds, QList<int> dbIds) {
                    note("eventsCommitted", {joined(refIds), joined(dbIds)});
                });
        connect(adapter, &SyncStorageIf::eventsCommitFailed, this,
                [this](QList<int> refIds) { note("eventsCommitFailed", {joined(refIds)}); });
        connect(adapter, &SyncStorageIf::deletedIdsStatus, this,
                [this](QList<int> refIds, QList<bool> status) {
                    note("deletedIdsStatus", {joined(refIds), joined(status)});
                });
        connect(adapter, &SyncStorageIf::groupIdsCommitted, this,
                [this](QList<int> ids, bool) { note("groupIdsCommitted", {joined(ids)}); });
    }

    QStringList heard;
    QList<KorvaSyncIf::SmsInfo> messages; //!< of the latest dataReadyInModel
    QList<KorvaSyncIf::CallInfo> calls;   //!< of the latest callInfoDataReadyInModel

private:
    void note(const char *name, const QStringList &arguments)
    {
        heard.append(QStringLiteral("%1(%2)").arg(QString::fromLatin1(name),
                                                  arguments.join(QStringLiteral("; "))));
    }
    template <typename T>
    static QString joined(const QList<T> &values)
    {
        QStringList texts;
        for (const T value : values)
            texts.append(QString::number(int(value)));
        return texts.join(QLatin1Char(' '));
    }
};
