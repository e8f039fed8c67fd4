// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// Names, order, access and parameters of signals and slots: programs connect to them by their
// spelling.

#include "eventloop.h"
#include "platformfixture.h"
#include "samplerecords.h"

#include <korvasync/smssyncinterface.h>

#include <QtCore/QMetaMethod>
#include <QtTest/QTest>

using namespace KorvaSyncIf;

namespace {

//! The class's own methods, such as "private slot add(QList<int>) ids".
QStringList ownMethods(const QMetaObject &type)
{
    QStringList result;
    for (int i = type.methodOffset(); i < type.methodCount(); ++i) {
        const QMetaMethod method = type.method(i);
        const char *const access = method.access() == QMetaMethod::Private ? "private"
            : method.access() == QMetaMethod::Protected                    ? "protected"
                                                                           : "public";
        const char *const kind = method.methodType() == QMetaMethod::Signal ? "signal"
            : method.methodType() == QMetaMethod::Slot                      ? "slot"
                                                                            : "other";
        result.append(QStringLiteral("%1 %2 %3 %4")
                          .arg(QString::fromLatin1(access), QString::fromLatin1(kind),
                               QString::fromLatin1(method.methodSignature()),
                               QString::fromLatin1(method.parameterNames().join(',')))
                          .trimmed());
    }
    return result;
}

QStringList lines(std::initializer_list<const char *> texts)
{
    QStringList result;
    for (const char *const text : texts)
        result.append(QString::fromLatin1(text));
    return result;
}

} // namespace

//! A client that connects by spelling.
class SpellingClient : public QObject
{
    Q_OBJECT
public:
    int readsFinished = 0;
    int writesFinished = 0;
    QList<SmsInfo> messages;
    QList<CallInfo> calls;
    int cause = -1;
    QList<bool> statuses;

public Q_SLOTS:
    void readFinished(PendingMsgs *) { ++readsFinished; }
    void writeFinished(PendingStatus *) { ++writesFinished; }
    void dataReady(QList<KorvaSyncIf::SmsInfo> list) { messages = list; }
    void callsReady(QList<KorvaSyncIf::CallInfo> list) { calls = list; }
    void failed(QList<int>, KorvaSyncIf::ErrorCause errCause) { cause = int(errCause); }
    void deleted(QList<int>, QList<bool> list) { statuses = list; }
};

class TestMetaObjects : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void smsSyncInterfaceHasNoMethodsOfItsOwn();
    void pendingMsgsHasItsMethodsInOrder();
    void pendingStatusHasItsMethodsInOrder();
    void pendingIdsReportsThroughPendingStatus();
    void syncStorageIfHasItsMethodsInOrder();
    void clientsConnectByTheUnqualifiedSpelling();
    void adapterSignalsPassThroughQueuedConnections();
};

void TestMetaObjects::smsSyncInterfaceHasNoMethodsOfItsOwn()
{
    const QMetaObject &type = SMSSyncInterface::staticMetaObject;
    QCOMPARE(type.className(), "KorvaSyncIf::SMSSyncInterface");
    QCOMPARE(type.superClass(), &QObject::staticMetaObject);
    QCOMPARE(ownMethods(type), QStringList());
    QCOMPARE(type.propertyCount(), type.propertyOffset());
}

void TestMetaObjects::pendingMsgsHasItsMethodsInOrder()
{
    const QMetaObject &type = PendingMsgs::staticMetaObject;
    QCOMPARE(type.className(), "KorvaSyncIf::PendingMsgs");
    QCOMPARE(type.superClass(), &QObject::staticMetaObject);
    QCOMPARE(
        ownMethods(type),
        lines({"public signal finished(PendingMsgs*) pendingMsgs",
               "private slot retrievedMessages(QList<KorvaSyncIf::SmsInfo>) smsInfoList",
               "private slot retrievedCallMessages(QList<KorvaSyncIf::CallInfo>) callInfoList"}));
}

void TestMetaObjects::pendingStatusHasItsMethodsInOrder()
{
    const QMetaObject &type = PendingStatus::staticMetaObject;
    QCOMPARE(type.className(), "KorvaSyncIf::PendingStatus");
    QCOMPARE(type.superClass(), &QObject::staticMetaObject);
    QCOMPARE(
        ownMethods(type),
        lines({"public signal finished(PendingStatus*) pendingStatus",
               "protected slot eventsCommittedSlot(QList<int>,QList<int>) refIds,dbIds",
               "protected slot eventsCommitFailed(QList<int>) refIds",
               "protected slot errorIndexesNotProcessed(QList<int>,KorvaSyncIf::ErrorCause) "
               "idxs,errCause",
               "protected slot deletedIdsStatus(QList<int>,QList<bool>) ids,deletedIdsStatus"}));
}

void TestMetaObjects::pendingIdsReportsThroughPendingStatus()
{
    const QMetaObject &type = PendingIds::staticMetaObject;
    QCOMPARE(type.className(), "KorvaSyncIf::PendingIds");
    QCOMPARE(type.superClass(), &PendingStatus::staticMetaObject);
    QCOMPARE(ownMethods(type), QStringList());
    QVERIFY(type.indexOfSignal("finished(PendingStatus*)") > 0);
}

void TestMetaObjects::syncStorageIfHasItsMethodsInOrder()
{
    const QMetaObject &type = SyncStorageIf::staticMetaObject;
    QCOMPARE(type.className(), "KorvaSyncIf::SyncStorageIf");
    QCOMPARE(type.superClass(), &QObject::staticMetaObject);
    QStringList methods = ownMethods(type);
    // The parameter of the last slot has no name to keep.
    QVERIFY(methods.last().startsWith(
        QStringLiteral("private slot deletedEventsCommitted(QList<CommHistory::Event>,bool)")));
    methods.removeLast();
    QCOMPARE(
        methods,
        lines({"public signal dataReadyInModel(QList<KorvaSyncIf::SmsInfo>) smsInfoList",
               "public signal callInfoDataReadyInModel(QList<KorvaSyncIf::CallInfo>) callInfoList",
               "public signal error(QList<int>,KorvaSyncIf::ErrorCause) idxs,errCause",
               "public signal eventsCommitted(QList<int>,QList<int>) refIds,dbIds",
               "public signal eventsCommitFailed(QList<int>) refIds",
               "public signal deletedIdsStatus(QList<int>,QList<bool>) refIds,idsStatus",
               "public signal groupIdsCommitted(QList<int>,bool) groupIds,status",
               "private slot startAddingMessages()", "private slot startModifyingMessages()",
               "private slot addGroups(QStringList) contactIds", "private slot addEvents()",
               "private slot modifyEvents()",
               "private slot groupIdsCommittedSlot(QList<int>,bool) groups,status",
               "private slot eventsAvailableInModel()", "private slot callEventsAvailableInModel()",
               "private slot eventsCommitted(QList<CommHistory::Event>,bool) eventList,status"}));
}

void TestMetaObjects::clientsConnectByTheUnqualifiedSpelling()
{
    ScriptedStore store;
    SMSSyncInterface facade;
    SpellingClient client;
    QVERIFY(connect(facade.messages(QDateTime(), LocInbox), SIGNAL(finished(PendingMsgs *)),
                    &client, SLOT(readFinished(PendingMsgs *))));
    QVERIFY(connect(facade.deleteMessages({5}), SIGNAL(finished(PendingStatus *)), &client,
                    SLOT(writeFinished(PendingStatus *))));
    QList<SyncSmsInfo> nothing;
    QVERIFY(connect(facade.addNewMessages(nothing), SIGNAL(finished(PendingStatus *)), &client,
                    SLOT(writeFinished(PendingStatus *))));
    settle();
    QCOMPARE(client.readsFinished, 1);
    QCOMPARE(client.writesFinished, 1);
}

void TestMetaObjects::adapterSignalsPassThroughQueuedConnections()
{
    PlatformFixture f;
    SyncStorageIf *const adapter = f.adapter();
    SpellingClient client;
    QVERIFY(connect(adapter, SIGNAL(dataReadyInModel(QList<KorvaSyncIf::SmsInfo>)), &client,
                    SLOT(dataReady(QList<KorvaSyncIf::SmsInfo>)), Qt::QueuedConnection));
    QVERIFY(connect(adapter, SIGNAL(callInfoDataReadyInModel(QList<KorvaSyncIf::CallInfo>)),
                    &client, SLOT(callsReady(QList<KorvaSyncIf::CallInfo>)), Qt::QueuedConnection));
    QVERIFY(connect(adapter, SIGNAL(error(QList<int>, KorvaSyncIf::ErrorCause)), &client,
                    SLOT(failed(QList<int>, KorvaSyncIf::ErrorCause)), Qt::QueuedConnection));
    QVERIFY(connect(adapter, SIGNAL(deletedIdsStatus(QList<int>, QList<bool>)), &client,
                    SLOT(deleted(QList<int>, QList<bool>)), Qt::QueuedConnection));
    Q_EMIT adapter->dataReadyInModel({receivedFrom(QStringLiteral("+15550100"), 3)});
    Q_EMIT adapter->callInfoDataReadyInModel({call(QStringLiteral("missed"), 4)});
    Q_EMIT adapter->error({1}, GroupIdNotFound);
    Q_EMIT adapter->deletedIdsStatus({0, 1}, {true, false});
    settle();
    QCOMPARE(int(client.messages.size()), 1);
    QCOMPARE(client.messages.at(0).refId, 3);
    QCOMPARE(int(client.calls.size()), 1);
    QCOMPARE(client.calls.at(0).id, 4);
    QCOMPARE(client.cause, 0);
    QCOMPARE(client.statuses, (QList<bool>{true, false}));
}

QTEST_GUILESS_MAIN(TestMetaObjects)
#include "tst_metaobjects.moc"
