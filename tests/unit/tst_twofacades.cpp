// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// Two sync clients in one process: a facade that goes takes the adapters of the whole process
// with it, also the one that works for the other. Whatever that one is doing, its request
// never finishes, its pending object stays, and its next request is served.

#include "eventloop.h"
#include "scriptedstore.h"
#include "vmessagetext.h"

#include <korvasync/callsyncinterface.h>
#include <korvasync/smssyncinterface.h>

#include <QtCore/QPointer>
#include <QtTest/QTest>

#include <functional>
#include <memory>

using namespace KorvaSyncIf;

namespace {

struct Client
{
    std::unique_ptr<QObject> facade;
    QPointer<QObject> pending; // of the latest request
    int finishedCount = 0;
    std::function<void()> receiver = [] {};
};

template <typename Facade>
Facade &facadeOf(Client &client)
{
    if (!client.facade)
        client.facade = std::make_unique<Facade>();
    return static_cast<Facade &>(*client.facade);
}

template <typename Pending>
void watch(Client &client, Pending *pending)
{
    client.pending = pending;
    QObject::connect(pending, &std::remove_pointer_t<decltype(pending)>::finished, pending,
                     [&client] {
                         ++client.finishedCount;
                         client.receiver();
                     });
}

QList<SyncSmsInfo> twoItems(const QString &number)
{
    VMessageText message;
    message.originator = number;
    QList<SyncSmsInfo> items{SyncSmsInfo(), SyncSmsInfo()};
    for (int i = 0; i < items.size(); ++i) {
        items[i].id = 11 + i;
        items[i].vMessage = message.text();
    }
    return items;
}

//! Starts a request of the client's.
using Operation = std::function<void(Client &)>;

void addMessages(Client &client, const QString &number)
{
    QList<SyncSmsInfo> items = twoItems(number);
    watch(client, facadeOf<SMSSyncInterface>(client).addNewMessages(items));
}

const QList<QPair<const char *, Operation>> operations{
    {"read",
     [](Client &client) {
         watch(client, facadeOf<SMSSyncInterface>(client).messages(QDateTime(), LocInbox));
     }},
    {"read-modified",
     [](Client &client) {
         watch(client, facadeOf<SMSSyncInterface>(client).modifiedMessages(QDateTime(), LocInbox));
     }},
    {"add", [](Client &client) { addMessages(client, QStringLiteral("+15550100")); }},
    {"add-from-new-number", [](Client &client) { addMessages(client, QStringLiteral("5550199")); }},
    {"modify",
     [](Client &client) {
         watch(client,
               facadeOf<SMSSyncInterface>(client).modifyMessages(
                   twoItems(QStringLiteral("+15550100"))));
     }},
    {"delete",
     [](Client &client) {
         watch(client, facadeOf<SMSSyncInterface>(client).deleteMessages({11, 12}));
     }},
    {"read-calls",
     [](Client &client) {
         watch(client, facadeOf<CallSyncInterface>(client).calls(MissedCall, QDateTime()));
     }},
    {"add-calls",
     [](Client &client) {
         const QString entry =
             QStringLiteral("BEGIN:VCALLHISTENTRY\r\nTYPE:missed\r\nTEL:+15550100\r\n"
                            "DURATION:0\r\nCALL-DATETIME:20101103T142530\r\n"
                            "END:VCALLHISTENTRY\r\n");
         watch(client, facadeOf<CallSyncInterface>(client).addNewCalls({entry, entry}));
     }},
};

//! Reports the items of a request one by one.
struct Store : ScriptedStore
{
    Store()
    {
        knowConversation(QStringLiteral("5550100"), 7);
        for (const Request request : {Request::AddEvents, Request::ModifyEvents}) {
            for (int i = 0; i < 4; ++i)
                react(request, Reaction::reporting({{{11}, true}, {{12}, true}}));
        }
    }
};

} // namespace

Q_DECLARE_METATYPE(Operation)

class TestTwoFacades : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void oneGoesWhileTheOtherWaits_data() { addPairs(); }
    void oneGoesWhileTheOtherWaits();
    void oneGoesInTheOthersReceiver_data() { addPairs(); }
    void oneGoesInTheOthersReceiver();
    void oneGoesInItsOwnReceiver_data() { addPairs(); }
    void oneGoesInItsOwnReceiver();

private:
    static void addPairs();
    static void expectAbandoned(Client &client, const Operation &operation);
};

void TestTwoFacades::addPairs()
{
    QTest::addColumn<Operation>("staying");
    QTest::addColumn<Operation>("going");
    for (const auto &staying : operations) {
        for (const auto &going : operations)
            QTest::addRow("%s beside %s", staying.first, going.first)
                << staying.second << going.second;
    }
}

//! The client's request never finishes, its next one does, and the facade takes both along.
void TestTwoFacades::expectAbandoned(Client &client, const Operation &operation)
{
    const QPointer<QObject> abandoned = client.pending;
    settle();
    QCOMPARE(client.finishedCount, 0);
    QVERIFY(abandoned);
    operation(client);
    settle();
    QCOMPARE(client.finishedCount, 1);
    QVERIFY(client.pending.isNull());
    QVERIFY(abandoned);
    client.facade.reset();
    QVERIFY(abandoned.isNull());
}

void TestTwoFacades::oneGoesWhileTheOtherWaits()
{
    QFETCH(Operation, staying);
    QFETCH(Operation, going);
    // At each turn of the event loop, until the request has finished before.
    bool hasFinished = false;
    int stages = 0;
    for (; !hasFinished; ++stages) {
        Store store;
        Client one;
        Client other;
        going(other);
        staying(one);
        for (int i = 0; i < stages; ++i)
            turn();
        other.facade.reset();
        QVERIFY(other.pending.isNull());
        hasFinished = one.finishedCount == 1;
        if (hasFinished)
            one.facade.reset();
        else
            expectAbandoned(one, staying);
    }
    QVERIFY(stages > 1);
}

void TestTwoFacades::oneGoesInTheOthersReceiver()
{
    QFETCH(Operation, staying);
    QFETCH(Operation, going);
    Store store;
    Client one;
    Client other;
    staying(one);
    going(other);
    one.receiver = [&] { other.facade.reset(); };
    settle();
    QCOMPARE(one.finishedCount, 1);
    QVERIFY(one.pending.isNull());
    QVERIFY(other.pending.isNull());
    staying(one);
    settle();
    QCOMPARE(one.finishedCount, 2);
}

void TestTwoFacades::oneGoesInItsOwnReceiver()
{
    QFETCH(Operation, staying);
    QFETCH(Operation, going);
    Store store;
    Client one;
    Client other;
    going(other);
    staying(one);
    other.receiver = [&] { other.facade.reset(); };
    settle();
    QCOMPARE(other.finishedCount, 1);
    QVERIFY(other.pending.isNull());
    if (one.finishedCount == 0)
        expectAbandoned(one, staying);
}

QTEST_GUILESS_MAIN(TestTwoFacades)
#include "tst_twofacades.moc"
