// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "busyclient.h"

#include <QtCore/QDir>
#include <QtTest/QTest>

#include <functional>

//! The store is moved, removed or replaced while a client adds to it: it stops, says so, and has
//! reported nothing that was not there at that moment.
class TestReplaced : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void anAdderStops_data();
    void anAdderStops();
    void anAdderOfACallStops();
};

namespace {

using Replace = std::function<bool(const QString &store, const QString &aside)>;

QByteArray message(int second)
{
    return vMessage("INBOX", "20101103T1425" + QByteArray::number(second) + "Z", "+15550100",
                    "Hello");
}

QByteArray callElement(int second)
{
    return "<call number=\"+15550100\" duration=\"65\" date=\"12887943" + QByteArray::number(second)
        + "000\" type=\"1\" />\n";
}

bool copy(const QString &from, const QString &to)
{
    return QProcess::execute(text("cp"), {text("-a"), from, to}) == 0;
}

bool moveStore(const QString &store, const QString &aside) { return QDir().rename(store, aside); }

bool removeStore(const QString &store, const QString &) { return QDir(store).removeRecursively(); }

bool restore(const QString &store, const QString &aside)
{
    return moveStore(store, aside) && copy(aside, store);
}

Replace replaceWithin(const QString &name)
{
    return
        [name](const QString &store, const QString &aside) { return restore(store + name, aside); };
}

//! Adds the first message, replaces the store, and adds the second.
ClientProcess::Outcome addAround(const ClientProcess &client, const QByteArray &first,
                                 const QByteArray &second, const Replace &replace)
{
    BusyClient busy(client, first);
    ClientProcess::Outcome outcome;
    if (!busy.isBusy() || !replace(client.store(), client.filePath(text("aside")))
        || !busy.finish(second))
        return outcome;
    outcome.exitCode = busy.process.exitCode();
    outcome.output = busy.output();
    outcome.errors = busy.process.readAllStandardError();
    return outcome;
}

} // namespace

Q_DECLARE_METATYPE(Replace)

void TestReplaced::initTestCase() { qRegisterMetaType<Replace>(); }

void TestReplaced::anAdderStops_data()
{
    QTest::addColumn<Replace>("replace");
    QTest::addColumn<bool>("isPresent");
    const QList<QPair<const char *, Replace>> ways{
        {"moved", moveStore},
        {"removed", removeStore},
        {"restored from a copy", restore},
        {"its database", replaceWithin(text("/db"))},
        {"a file of its database", replaceWithin(text("/db/meta.db"))},
        {"its lock", replaceWithin(text("/lock"))},
    };
    for (const auto &way : ways) {
        QTest::addRow("%s, a new message", way.first) << way.second << false;
        QTest::addRow("%s, a known message", way.first) << way.second << true;
    }
}

void TestReplaced::anAdderStops()
{
    QFETCH(Replace, replace);
    QFETCH(bool, isPresent);
    const ClientProcess client;
    client.fill(message(10));
    const auto outcome = addAround(client, message(11), message(isPresent ? 10 : 12), replace);
    QCOMPARE(outcome.exitCode, 3);
    QVERIFY2(outcome.output.startsWith("added  2  -:1\nfailed  -:16  sms-store: "), outcome.output);
    QCOMPARE(outcome.output.count('\n'), 2);
    QVERIFY2(outcome.errors.contains("was moved or replaced while it was in use"), outcome.errors);
}

void TestReplaced::anAdderOfACallStops()
{
    const ClientProcess client;
    client.fill("<calls>\n" + callElement(10) + "</calls>\n");
    const auto outcome =
        addAround(client, "<calls>\n" + callElement(11), callElement(10) + "</calls>\n", moveStore);
    QCOMPARE(outcome.exitCode, 3);
    QCOMPARE(outcome.output,
             QByteArray("added  -:2\n"
                        "failed  -:3  call-store: not known, as the store cannot be read back\n"));
    QVERIFY2(outcome.errors.contains("was moved or replaced while it was in use"), outcome.errors);
}

QTEST_GUILESS_MAIN(TestReplaced)
#include "tst_replaced.moc"
