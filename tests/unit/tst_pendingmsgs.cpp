// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "eventloop.h"
#include "messagelog.h"
#include "platformfixture.h"
#include "samplerecords.h"

#include <korvasync/pendingmsgs.h>

#include <QtCore/QPointer>
#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

using namespace KorvaSyncIf;
using CommHistory::Event;

namespace {

//! A read, and what could be seen inside the slot of finished().
struct Read : PlatformFixture
{
    Read()
    {
        QObject::connect(pending, &PendingMsgs::finished, &parent, [this](PendingMsgs *sender) {
            ++finishedCount;
            finishedWith = sender;
            wasAlive = !pending.isNull();
            messages = sender->syncSmsInfo();
            calls = sender->callLogs();
            isError = sender->isError();
        });
    }

    QPointer<PendingMsgs> pending = new PendingMsgs(&parent);
    int finishedCount = 0;
    PendingMsgs *finishedWith = nullptr;
    bool wasAlive = false;
    QList<SyncSmsInfo> messages;
    QStringList calls;
    bool isError = true;
};

void compareTimeLine(const MessageLog &log, const QString &pattern)
{
    const QStringList lines = log.lines(QtCriticalMsg);
    QCOMPARE(int(lines.size()), 1);
    const QRegularExpression expression(QRegularExpression::anchoredPattern(pattern));
    QVERIFY2(expression.match(lines.at(0)).hasMatch(), qPrintable(lines.at(0)));
}

} // namespace

class TestPendingMsgs : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void messagesAreDeliveredInTheOrderOfTheStore();
    void oneEncoderWritesAllMessages();
    void anEmptyReadFinishesWithoutError();
    void callsAreDeliveredAsEntries();
    void anEmptyCallReadFinishesWithoutError();
    void nothingComesInsideTheCall();
    void theObjectLivesInItsSlotAndIsGoneAfter();
    void theFolderAndTheFlagReachTheStore_data();
    void theFolderAndTheFlagReachTheStore();
    void theTypeTextReachesTheStore();
    void aRefusedReadIsAnErrorAtOnceAndStays();
    void aRefusedReadFinishesIfTheStoreAnswersAfterAll();
    void aReadThatIsNeverReadyStays();
    void laterDeliveriesOfTheAdapterDoNotReachIt();
    void readsSideBySideGetTheirOwnRows();
    void theTimeLineCountsAllMessagesButTheCallsOfADelivery();
    void theTraceOfItsLife();
};

void TestPendingMsgs::messagesAreDeliveredInTheOrderOfTheStore()
{
    Read read;
    MessageLog log;
    read.store.messageRows = {messageEvent(13, LocInbox), messageEvent(12, LocSent)};
    read.pending->messages(QDateTime(), LocInbox, false);
    settle();
    QCOMPARE(read.finishedCount, 1);
    QCOMPARE(int(read.messages.size()), 2);
    QCOMPARE(read.messages.at(0).id, 13);
    QCOMPARE(read.messages.at(0).parentId, 4098);
    QVERIFY(read.messages.at(0).vMessage.contains(QStringLiteral("\r\nX-IRMC-BOX:INBOX\r\n")));
    QCOMPARE(read.messages.at(0).time, QStringLiteral("Wed Nov 3 11:00:00 2010 GMT"));
    QCOMPARE(read.messages.at(1).id, 12);
    QVERIFY(read.calls.isEmpty());
    QVERIFY(!read.isError);
    compareTimeLine(log, QStringLiteral("Time taken by Pending Msgs to retrieve  2 msgs \\d+ ms"));
}

void TestPendingMsgs::oneEncoderWritesAllMessages()
{
    Read read;
    read.store.messageRows = {messageEvent(13, LocSent), messageEvent(12, LocInbox),
                              messageEvent(11, LocSent)};
    read.pending->messages(QDateTime(), LocInbox, false);
    settle();
    const auto closings = [&read](int i) {
        return int(read.messages.at(i).vMessage.count(QStringLiteral("END:VENV\r\n")));
    };
    QCOMPARE(closings(0), 2);
    QCOMPARE(closings(1), 1);
    QCOMPARE(closings(2), 2);
}

void TestPendingMsgs::anEmptyReadFinishesWithoutError()
{
    Read read;
    MessageLog log;
    read.pending->messages(QDateTime(), LocInbox, false);
    settle();
    QCOMPARE(read.finishedCount, 1);
    QVERIFY(read.messages.isEmpty());
    QVERIFY(!read.isError);
    compareTimeLine(log, QStringLiteral("Time taken by Pending Msgs to retrieve  0 msgs \\d+ ms"));
}

void TestPendingMsgs::callsAreDeliveredAsEntries()
{
    Read read;
    MessageLog log;
    read.store.callRows = {callEvent(21, Event::Inbound), callEvent(20, Event::Inbound, true),
                           callEvent(19, Event::Outbound)};
    read.pending->callMessages(QDateTime(), QString());
    settle();
    QCOMPARE(read.finishedCount, 1);
    QCOMPARE(read.calls,
             (QStringList{QStringLiteral("BEGIN:VCALLHISTENTRY\r\nTYPE:incoming\r\n"
                                         "TEL:+15550100\r\nDURATION:30\r\n"
                                         "CALL-DATETIME:20101103T1200300\r\n"
                                         "END:VCALLHISTENTRY\r\n"),
                          QStringLiteral("BEGIN:VCALLHISTENTRY\r\nTYPE:missed\r\n"
                                         "TEL:+15550100\r\nDURATION:30\r\n"
                                         "CALL-DATETIME:20101103T1200300\r\n"
                                         "END:VCALLHISTENTRY\r\n"),
                          QStringLiteral("BEGIN:VCALLHISTENTRY\r\nTYPE:outgoing\r\n"
                                         "TEL:+15550100\r\nDURATION:30\r\n"
                                         "CALL-DATETIME:20101103T1200000\r\n"
                                         "END:VCALLHISTENTRY\r\n")}));
    QVERIFY(read.messages.isEmpty());
    QVERIFY(!read.isError);
    compareTimeLine(log, QStringLiteral("Time taken by Pending Msgs to retrieve  3 calls \\d+ ms"));
}

void TestPendingMsgs::anEmptyCallReadFinishesWithoutError()
{
    Read read;
    MessageLog log;
    read.pending->callMessages(QDateTime(), QStringLiteral("missed"));
    settle();
    QCOMPARE(read.finishedCount, 1);
    QVERIFY(read.calls.isEmpty());
    QVERIFY(!read.isError);
    compareTimeLine(log, QStringLiteral("Time taken by Pending Msgs to retrieve  0 calls \\d+ ms"));
}

void TestPendingMsgs::nothingComesInsideTheCall()
{
    Read messages;
    messages.store.react(Request::ReadMessages, Reaction::reporting({{}}, Reaction::AtOnce));
    messages.pending->messages(QDateTime(), LocInbox, false);
    QCOMPARE(messages.finishedCount, 0);
    settle();
    QCOMPARE(messages.finishedCount, 1);
}

void TestPendingMsgs::theObjectLivesInItsSlotAndIsGoneAfter()
{
    Read read;
    read.pending->messages(QDateTime(), LocInbox, false);
    PendingMsgs *const address = read.pending;
    settle();
    QVERIFY(read.wasAlive);
    QCOMPARE(read.finishedWith, address);
    QVERIFY(read.pending.isNull());
}

void TestPendingMsgs::theFolderAndTheFlagReachTheStore_data()
{
    QTest::addColumn<bool>("modified");
    QTest::addColumn<QString>("call");
    QTest::newRow("all") << false
                         << QStringLiteral("SyncSMSModel::setSyncSmsFilter(4101, "
                                           "2010-11-03T00:00:00Z, false)");
    QTest::newRow("modified") << true
                              << QStringLiteral("SyncSMSModel::setSyncSmsFilter(4101, "
                                                "2010-11-03T00:00:00Z, true)");
}

void TestPendingMsgs::theFolderAndTheFlagReachTheStore()
{
    QFETCH(bool, modified);
    QFETCH(QString, call);
    Read read;
    read.pending->messages(QDateTime(QDate(2010, 11, 3), QTime(0, 0), Qt::UTC), LocSent, modified);
    QVERIFY(read.store.calls.contains(call));
}

void TestPendingMsgs::theTypeTextReachesTheStore()
{
    Read read;
    read.pending->callMessages(QDateTime(), QStringLiteral("missed"));
    QVERIFY(read.store.calls.contains(QStringLiteral("CallModel::setFilter(1, 2, null)")));
}

void TestPendingMsgs::aRefusedReadIsAnErrorAtOnceAndStays()
{
    {
        Read read;
        MessageLog log;
        read.store.react(Request::ReadMessages, Reaction::refused());
        read.pending->messages(QDateTime(), LocInbox, false);
        QVERIFY(read.pending->isError());
        settle();
        QCOMPARE(read.finishedCount, 0);
        QVERIFY(read.pending);
        QVERIFY(log.lines(QtWarningMsg).isEmpty());
        QVERIFY(log.lines(QtCriticalMsg).isEmpty());
    }
    {
        Read calls;
        calls.store.react(Request::ReadCalls, Reaction::refused());
        calls.pending->callMessages(QDateTime(), QString());
        QVERIFY(calls.pending->isError());
        settle();
        QCOMPARE(calls.finishedCount, 0);
        QVERIFY(calls.pending);
    }
}

void TestPendingMsgs::aRefusedReadFinishesIfTheStoreAnswersAfterAll()
{
    Read read;
    Reaction answered = Reaction::reporting({{}});
    answered.taken = false;
    read.store.react(Request::ReadMessages, answered);
    read.pending->messages(QDateTime(), LocInbox, false);
    QVERIFY(read.pending->isError());
    settle();
    QCOMPARE(read.finishedCount, 1);
    QVERIFY(read.isError);
}

void TestPendingMsgs::aReadThatIsNeverReadyStays()
{
    Read read;
    read.store.react(Request::ReadMessages, Reaction::silent());
    read.pending->messages(QDateTime(), LocInbox, false);
    QVERIFY(!read.pending->isError());
    settle();
    QCOMPARE(read.finishedCount, 0);
    QVERIFY(read.pending);
}

void TestPendingMsgs::laterDeliveriesOfTheAdapterDoNotReachIt()
{
    {
        Read read;
        SyncStorageIf *const adapter = read.adapter();
        read.pending->messages(QDateTime(), LocInbox, false);
        Q_EMIT adapter->dataReadyInModel({receivedFrom(QStringLiteral("+15550100"), 0)});
        Q_EMIT adapter->dataReadyInModel({receivedFrom(QStringLiteral("+15550100"), 0)});
        QCOMPARE(read.finishedCount, 1);
        QCOMPARE(int(read.messages.size()), 1);
        QCOMPARE(int(read.pending->syncSmsInfo().size()), 1);
    }
    {
        Read calls;
        SyncStorageIf *const callAdapter = calls.adapter();
        calls.pending->callMessages(QDateTime(), QString());
        Q_EMIT callAdapter->callInfoDataReadyInModel({call(QStringLiteral("missed"), 0)});
        Q_EMIT callAdapter->callInfoDataReadyInModel({call(QStringLiteral("missed"), 0)});
        QCOMPARE(calls.finishedCount, 1);
        QCOMPARE(int(calls.pending->callLogs().size()), 1);
    }
}

void TestPendingMsgs::readsSideBySideGetTheirOwnRows()
{
    Read read;
    read.store.messageRows = {messageEvent(13, LocInbox)};
    read.pending->messages(QDateTime(), LocInbox, false);
    read.store.messageRows = {messageEvent(14, LocSent), messageEvent(15, LocSent)};
    auto *const second = new PendingMsgs(&read.parent);
    QList<SyncSmsInfo> secondMessages;
    connect(second, &PendingMsgs::finished, &read.parent,
            [&secondMessages](PendingMsgs *pending) { secondMessages = pending->syncSmsInfo(); });
    second->messages(QDateTime(), LocSent, false);
    settle();
    QCOMPARE(int(read.messages.size()), 1);
    QCOMPARE(read.messages.at(0).id, 13);
    QCOMPARE(int(secondMessages.size()), 2);
    QCOMPARE(secondMessages.at(0).id, 14);
}

// The object lives on until the event loop runs; its timer never ran.
void TestPendingMsgs::theTimeLineCountsAllMessagesButTheCallsOfADelivery()
{
    const auto number = QStringLiteral("+15550100");
    Read read;
    MessageLog log;
    const auto deliver = [&read](const QList<SmsInfo> &messages) {
        QMetaObject::invokeMethod(read.pending, "retrievedMessages", Qt::DirectConnection,
                                  Q_ARG(QList<KorvaSyncIf::SmsInfo>, messages));
    };
    const auto deliverCalls = [&read](const QList<CallInfo> &calls) {
        QMetaObject::invokeMethod(read.pending, "retrievedCallMessages", Qt::DirectConnection,
                                  Q_ARG(QList<KorvaSyncIf::CallInfo>, calls));
    };
    deliver({receivedFrom(number, 0), receivedFrom(number, 1)});
    deliver({receivedFrom(number, 2)});
    deliverCalls({call(QStringLiteral("missed"), 0), call(QStringLiteral("missed"), 1)});
    deliverCalls({call(QStringLiteral("missed"), 2)});
    QCOMPARE(log.lines(QtCriticalMsg),
             (QStringList{QStringLiteral("Time taken by Pending Msgs to retrieve  2 msgs 0 ms"),
                          QStringLiteral("Time taken by Pending Msgs to retrieve  3 msgs 0 ms"),
                          QStringLiteral("Time taken by Pending Msgs to retrieve  2 calls 0 ms"),
                          QStringLiteral("Time taken by Pending Msgs to retrieve  1 calls 0 ms")}));
}

void TestPendingMsgs::theTraceOfItsLife()
{
    MessageLog log;
    Read read;
    read.pending->messages(QDateTime(), LocInbox, false);
    settle();
    const QStringList lines = log.linesFrom(QtDebugMsg, QString());
    for (const char *const line :
         {"KorvaSyncIf::PendingMsgs::PendingMsgs(QObject*)",
          "void KorvaSyncIf::PendingMsgs::messages(const QDateTime&, KorvaSyncIf::LocationId, "
          "bool)",
          "void KorvaSyncIf::PendingMsgs::retrievedMessages(QList<KorvaSyncIf::SmsInfo>)",
          "virtual KorvaSyncIf::PendingMsgs::~PendingMsgs() Destroyed"})
        QCOMPARE(int(lines.count(QString::fromLatin1(line))), 1);

    log.clear();
    PendingMsgs(&read.parent).callMessages(QDateTime(), QStringLiteral("missed"));
    QCOMPARE(int(log.linesFrom(QtDebugMsg,
                               QStringLiteral("void KorvaSyncIf::PendingMsgs::callMessages(const "
                                              "QDateTime&, const QString&) QDateTime("))
                     .filter(QRegularExpression(QStringLiteral(" \"missed\"$")))
                     .size()),
             1);
}

QTEST_GUILESS_MAIN(TestPendingMsgs)
#include "tst_pendingmsgs.moc"
