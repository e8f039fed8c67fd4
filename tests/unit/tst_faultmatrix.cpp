// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// What a sync client sees of each fault that a store can show, for each operation. The result
// is docs/fault-matrix.md; with KORVASYNC_WRITE_FAULT_MATRIX set, the test writes that file.

#include "eventloop.h"
#include "messagelog.h"
#include "samplerecords.h"
#include "scriptedstore.h"
#include "syncstorageif/syncstorageif.h"
#include "syncstorageif/syncstorageifmanager.h"
#include "vmessagetext.h"

#include <korvasync/callsyncinterface.h>
#include <korvasync/historyinterface.h>
#include <korvasync/smssyncinterface.h>

#include <QtCore/QFile>
#include <QtTest/QTest>

#include <functional>
#include <memory>

using namespace KorvaSyncIf;

namespace {

//! A store with a conversation for +15550100 and three messages and calls to be read.
struct Fixture
{
    Fixture()
    {
        store.knowConversation(QStringLiteral("5550100"), 7);
        for (const int id : {11, 12, 13}) {
            store.messageRows += messageEvent(id, LocInbox);
            store.callRows += callEvent(id, CommHistory::Event::Inbound);
            CommHistory::HistoryEntry entry;
            entry.id = id;
            store.historyPortions += QList<CommHistory::HistoryEntry>{entry};
            store.historyTallies += CommHistory::HistoryTally{id, QString(), 1, 0, 0, 0};
        }
    }

    ScriptedStore store;
    SMSSyncInterface messages;
    CallSyncInterface calls;
    HistoryInterface history;
};

//! What a pending object has told.
struct Outcome
{
    bool errorAtOnce = false;
    int finishedCount = 0;
    bool error = false;
    QStringList values;                         // when it last finished
    std::function<QStringList()> presentValues; // as long as it has not

    QString text() const
    {
        QString seen = errorAtOnce ? QStringLiteral("`isError()` at once, ") : QString();
        switch (finishedCount) {
        case 0:
            seen += QStringLiteral("no `finished`");
            break;
        case 1:
            seen += QStringLiteral("`finished`");
            break;
        default:
            seen += QStringLiteral("`finished` %1 times").arg(finishedCount);
        }
        if (finishedCount > 0 && error)
            seen += QStringLiteral(" with `isError()`");
        const QStringList told = finishedCount > 0 ? values : presentValues();
        return seen + QLatin1String("; ") + told.join(QLatin1String(", "));
    }
};

template <typename T>
QString joined(const char *name, const QList<T> &values)
{
    QString text = QString::fromLatin1(name);
    for (const T &value : values)
        text += QLatin1Char(' ') + QString::number(int(value));
    return text;
}

QStringList valuesOf(PendingMsgs *pending)
{
    return {QStringLiteral("records %1")
                .arg(pending->syncSmsInfo().size() + pending->callLogs().size())};
}

QStringList valuesOf(PendingStatus *pending)
{
    QStringList values;
    if (!pending->status().isEmpty())
        values += joined("status", pending->status());
    if (!pending->statusCallMsgs().isEmpty())
        values += joined("call status", pending->statusCallMsgs());
    if (auto *const withIds = qobject_cast<PendingIds *>(pending))
        values += joined("ids", withIds->ids());
    return values;
}

QStringList valuesOf(PendingCounts *pending)
{
    return {QStringLiteral("counts %1").arg(pending->counts().size())};
}

using Watched = std::shared_ptr<Outcome>;

template <typename Pending>
Watched watch(Pending *pending)
{
    const auto outcome = std::make_shared<Outcome>();
    outcome->errorAtOnce = pending->isError();
    outcome->presentValues = [pending] { return valuesOf(pending); };
    QObject::connect(pending, &Pending::finished, [outcome](Pending *sender) {
        ++outcome->finishedCount;
        outcome->error = sender->isError();
        outcome->values = valuesOf(sender);
    });
    return outcome;
}

//! What HistoryInterface hands out in portions.
template <typename Pending, typename Item>
Watched watchPortions(Pending *pending, void (Pending::*portion)(const QList<Item> &))
{
    const auto outcome = std::make_shared<Outcome>();
    const auto count = std::make_shared<int>(0);
    outcome->errorAtOnce = pending->isError();
    outcome->presentValues = [count] {
        return QStringList(QStringLiteral("items %1").arg(*count));
    };
    QObject::connect(pending, portion,
                     [count](const QList<Item> &items) { *count += int(items.size()); });
    QObject::connect(pending, &Pending::finished, [outcome](Pending *sender) {
        ++outcome->finishedCount;
        outcome->error = sender->isError();
        outcome->values = outcome->presentValues();
    });
    return outcome;
}

QList<SyncSmsInfo> threeItems(const QString &number, const QString &otherNumber)
{
    QList<SyncSmsInfo> items;
    for (const int id : {11, 12, 13}) {
        VMessageText message;
        message.originator = id == 13 ? otherNumber : number;
        SyncSmsInfo item;
        item.id = id;
        item.vMessage = message.text();
        items += item;
    }
    return items;
}

struct Operation
{
    const char *name;
    Request request;
    QList<int> whole; //!< ids that a faultless store reports; empty = it reports none
    Watched (*start)(Fixture &);
};

QList<Operation> operations()
{
    static const auto known = QStringLiteral("+15550100");
    return {
        {"messages(), modifiedMessages()",
         Request::ReadMessages,
         {},
         [](Fixture &f) { return watch(f.messages.messages(QDateTime(), LocInbox)); }},
        {"calls()",
         Request::ReadCalls,
         {},
         [](Fixture &f) { return watch(f.calls.calls(IncomingCall, QDateTime())); }},
        {"addNewMessages() to known conversations",
         Request::AddEvents,
         {101, 102, 103},
         [](Fixture &f) {
             QList<SyncSmsInfo> items = threeItems(known, known);
             return watch<PendingStatus>(f.messages.addNewMessages(items));
         }},
        {"addNewMessages() from two new numbers: making the conversations",
         Request::AddGroups,
         {201, 202},
         [](Fixture &f) {
             QList<SyncSmsInfo> items =
                 threeItems(QStringLiteral("+15550111"), QStringLiteral("+15550122"));
             return watch<PendingStatus>(f.messages.addNewMessages(items));
         }},
        {"modifyMessages()",
         Request::ModifyEvents,
         {11, 12, 13},
         [](Fixture &f) { return watch(f.messages.modifyMessages(threeItems(known, known))); }},
        {"deleteMessages()",
         Request::DeleteEvents,
         {11, 12, 13},
         [](Fixture &f) {
             return watch(f.messages.deleteMessages({11, 12, 13}));
         }},
        {"addNewCalls()",
         Request::AddEvents,
         {101, 102, 103},
         [](Fixture &f) {
             const auto entry = QStringLiteral("BEGIN:VCALLHISTENTRY\r\nTYPE:missed\r\n"
                                               "TEL:+15550100\r\nDURATION:0\r\n"
                                               "CALL-DATETIME:20101103T142530Z\r\n"
                                               "END:VCALLHISTENTRY\r\n");
             return watch(f.calls.addNewCalls({entry, entry, entry}));
         }},
        {"HistoryInterface::query()",
         Request::ReadHistory,
         {},
         [](Fixture &f) {
             return watchPortions(f.history.query(HistoryFilter()), &PendingHistory::portion);
         }},
        {"HistoryInterface::changes()",
         Request::ReadHistory,
         {},
         [](Fixture &f) {
             return watchPortions(f.history.changes(QString()), &PendingChanges::portion);
         }},
        {"HistoryInterface::counts()",
         Request::ReadHistory,
         {},
         [](Fixture &f) {
             return watch(f.history.counts(HistoryFilter(), HistoryCount::By::Folder));
         }},
    };
}

struct Fault
{
    const char *name;
    bool namesIds; //!< makes no sense for a read
    Reaction (*reaction)(const QList<int> &whole);
};

QList<Fault> faults()
{
    return {
        {"none", false, [](const QList<int> &ids) { return Reaction::reporting({{ids}}); }},
        {"refuses the call", false, [](const QList<int> &) { return Reaction::refused(); }},
        {"reports failure", false, [](const QList<int> &) { return Reaction::failed(); }},
        {"answers in parts", true,
         [](const QList<int> &ids) {
             return Reaction::reporting({{ids.mid(0, 1)}, {ids.mid(1)}});
         }},
        {"fails after a part", true,
         [](const QList<int> &ids) {
             return Reaction::reporting({{ids.mid(0, 1)}, {{}, false}});
         }},
        {"answers late", false,
         [](const QList<int> &ids) {
             return Reaction::reporting({{ids}}, Reaction::WhenReleased);
         }},
        {"answers inside the call", false,
         [](const QList<int> &ids) { return Reaction::reporting({{ids}}, Reaction::AtOnce); }},
        {"answers twice", false,
         [](const QList<int> &ids) {
             return Reaction::reporting({{ids}, {ids}});
         }},
        {"succeeds, then fails", false,
         [](const QList<int> &ids) {
             return Reaction::reporting({{ids}, {{}, false}});
         }},
        {"answers never", false, [](const QList<int> &) { return Reaction::silent(); }},
        {"names no ids", true, [](const QList<int> &) { return Reaction::reporting({{{}}}); }},
        {"names too few ids", true,
         [](const QList<int> &ids) { return Reaction::reporting({{ids.mid(1)}}); }},
        {"names too many ids", true,
         [](const QList<int> &ids) { return Reaction::reporting({{ids + QList<int>{999}}}); }},
    };
}

//! The row of one fault; the next request must be served whatever has become of this one.
QString rowOf(const Operation &operation, const Fault &fault)
{
    Fixture f;
    SyncStorageIf *const adapter = SyncStorageIfManager::getInstance()->syncStorageIf();
    const Reaction reaction = fault.reaction(operation.whole);
    f.store.react(operation.request, reaction);
    const Watched outcome = operation.start(f);
    settle();
    if (reaction.timing == Reaction::WhenReleased) {
        if (outcome->finishedCount != 0)
            return QStringLiteral("finished before the store had answered");
        f.store.release();
        settle();
    }
    const bool isBusy = adapter->inUse();
    QString seen = outcome->text();

    const Watched next = operation.start(f);
    settle();
    if (next->finishedCount != 1 || next->error)
        return QStringLiteral("the next request failed");
    if (outcome->text() != seen)
        seen += QStringLiteral(". Hears the next request: %1").arg(outcome->text());
    return QStringLiteral("| %1 | %2 | %3 |\n")
        .arg(QLatin1String(fault.name), seen, QLatin1String(isBusy ? "stays busy" : "free"));
}

QString matrix()
{
    QString text = QStringLiteral(
        "<!-- Made by tests/unit/tst_faultmatrix.cpp; KORVASYNC_WRITE_FAULT_MATRIX=1 rewrites it. "
        "-->\n\n"
        "# What a sync client sees of a store's faults\n\n"
        "Each request is for three items, and meets a store that does what the first column says. "
        "The pool sets an adapter aside that stays busy, and it goes with the facades. The next "
        "request gets a fresh adapter and is served; the test checks this for every line. A "
        "request without `finished` never gets it: callers that must know set a time limit of "
        "their own. A request that still listens to a free adapter hears the next request's "
        "result, so destroy it first. A read ignores the status: it delivers the rows that the "
        "model holds. Status 0 is no error, 6 `SmsDatabaseError`, 7 `SmsDeleteFailed`; id -1 is "
        "none.\n");
    const QList<Operation> all = operations();
    for (const Operation &operation : all) {
        text += QStringLiteral("\n## %1\n\n| the store | the caller sees | the adapter |\n"
                               "|---|---|---|\n")
                    .arg(QLatin1String(operation.name));
        for (const Fault &fault : faults()) {
            const bool isRead = operation.whole.isEmpty();
            if (!isRead || !fault.namesIds)
                text += rowOf(operation, fault);
        }
    }
    return text;
}

} // namespace

class TestFaultMatrix : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void isAsDocumented();
    void callsThatCannotBeWiped();
    void aMessageThatCannotBeRead();
};

void TestFaultMatrix::isAsDocumented()
{
    MessageLog quiet;
    const QString seen = matrix();
    QFile file(QStringLiteral(FAULT_MATRIX));
    if (qEnvironmentVariableIsSet("KORVASYNC_WRITE_FAULT_MATRIX")) {
        QVERIFY(file.open(QIODevice::WriteOnly));
        QVERIFY(file.write(seen.toUtf8()) > 0);
        return;
    }
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(seen, QString::fromUtf8(file.readAll()));
}

// Answered inside the call, so that there is but one way to fail.
void TestFaultMatrix::callsThatCannotBeWiped()
{
    Fixture f;
    f.store.callsCanBeDeleted = false;
    QVERIFY(!f.calls.deleteAllCalls());
}

void TestFaultMatrix::aMessageThatCannotBeRead()
{
    Fixture f;
    const SyncSmsInfo message = f.messages.message(11);
    QCOMPARE(message.id, -1);
    QCOMPARE(message.parentId, 0);
}

QTEST_GUILESS_MAIN(TestFaultMatrix)
#include "tst_faultmatrix.moc"
