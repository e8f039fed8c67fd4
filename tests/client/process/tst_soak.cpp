// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "clientprocess.h"

#include <QtCore/QHash>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QRandomGenerator>
#include <QtCore/QSet>
#include <QtTest/QTest>

#include <array>
#include <csignal>

//! Two clients add, one of which is killed or stopped at some moment, while others list and delete:
//! nothing that was reported is lost, nothing is there twice, and no client ends in a way of its
//! own. Four rounds, and a hundred and fifty with KORVASYNC_TEST_LONG.
class TestSoak : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void killedAndStoppedClientsLoseNothing();

private:
    using Lines = QList<QJsonObject>;

    void round();
    bool list();
    void remove();
    void take(QProcess &adder);
    void note(const Lines &results);
    //! Runs a client that may be refused, as another one may hold the store.
    Lines run(const QStringList &arguments);
    static Lines linesOf(const QByteArray &ndjson);
    int random(int most) { return int(moments.bounded(most)); }

    ClientProcess client;
    std::array<QString, 2> files;
    QSet<int> added;              // what was reported as stored
    QSet<int> doomed;             // what was handed to a deletion
    QString patience = text("2"); // of clients that another one may hold up
    QHash<int, QString> listed;   // what was there when last it was looked at
    QRandomGenerator moments = QRandomGenerator::securelySeeded();
};

namespace {

constexpr int perFile = 300;

int rounds() { return qEnvironmentVariableIsSet("KORVASYNC_TEST_LONG") ? 150 : 4; }

QByteArray messages(const QByteArray &sender)
{
    QByteArray all;
    for (int i = 0; i < perFile; ++i) {
        all += vMessage("INBOX", "20101103T142530Z", sender + QByteArray::number(i % 20),
                        sender + " says " + QByteArray::number(i));
    }
    return all;
}

} // namespace

void TestSoak::initTestCase()
{
    files = {client.write(text("a.vmsg"), messages("+15550100")),
             client.write(text("b.vmsg"), messages("+15550200"))};
}

TestSoak::Lines TestSoak::linesOf(const QByteArray &ndjson)
{
    Lines lines;
    // What a kill has cut off is no line.
    for (const QByteArray &line : ndjson.left(ndjson.lastIndexOf('\n') + 1).split('\n')) {
        if (!line.isEmpty())
            lines += QJsonDocument::fromJson(line).object();
    }
    return lines;
}

TestSoak::Lines TestSoak::run(const QStringList &arguments)
{
    const auto outcome = client.run(
        QStringList{text("--timeout"), patience, text("-o"), text("ndjson")} + arguments);
    // 4: a deletion of what another one deleted.
    if (!QList<int>{0, 3, 4, 5}.contains(outcome.exitCode))
        qFatal("%s: %d: %s", qPrintable(arguments.first()), outcome.exitCode,
               outcome.errors.constData());
    return outcome.exitCode == 0 || outcome.exitCode == 4 ? linesOf(outcome.output) : Lines();
}

//! \return false when it was refused
bool TestSoak::list()
{
    const Lines lines = run({text("list")});
    if (lines.isEmpty())
        return false;
    listed.clear();
    QSet<QString> bodies;
    for (const QJsonObject &message : lines) {
        const QString body = message.value(QLatin1String("body")).toString();
        if (bodies.contains(body))
            qFatal("twice: %s", qPrintable(body));
        bodies.insert(body);
        listed.insert(message.value(QLatin1String("id")).toInt(), body);
    }
    return true;
}

void TestSoak::remove()
{
    QStringList ids;
    const QList<int> known = listed.keys();
    for (int i = 0; i < known.size(); i += 1 + random(100)) {
        ids += QString::number(known.at(i));
        doomed.insert(known.at(i));
    }
    if (!ids.isEmpty())
        run(QStringList{text("delete"), text("--yes")} + ids);
}

void TestSoak::note(const Lines &results)
{
    for (const QJsonObject &result : results) {
        if (result.value(QLatin1String("status")).toString() != QLatin1String("added"))
            continue;
        const int id = result.value(QLatin1String("id")).toInt();
        QVERIFY2(id > 0 && !added.contains(id), qPrintable(QString::number(id)));
        added.insert(id);
    }
}

void TestSoak::take(QProcess &adder)
{
    QVERIFY(adder.state() == QProcess::NotRunning || adder.waitForFinished(120000));
    if (adder.exitStatus() == QProcess::NormalExit) {
        const QByteArray errors = adder.readAllStandardError();
        QVERIFY2((QList<int>{0, 1, 3, 5}.contains(adder.exitCode())), errors);
    }
    note(linesOf(adder.readAllStandardOutput()));
}

void TestSoak::round()
{
    std::array<QProcess, 2> adders;
    for (size_t i = 0; i < adders.size(); ++i) {
        client.start(adders[i],
                     {text("add"), text("-o"), text("ndjson"), text("--chunk"), text("5"),
                      text("--on-duplicate"), text(i == 0 ? "skip" : "fail"), files[i]});
        QVERIFY(adders[i].waitForStarted());
    }
    QProcess &victim = adders[size_t(random(2))];
    const auto process = static_cast<pid_t>(victim.processId());
    const bool isStopped = random(2) == 0;
    if (!victim.waitForFinished(1 + random(700)))
        QCOMPARE(kill(process, isStopped ? SIGSTOP : SIGKILL), 0);
    list();
    remove();
    if (isStopped && victim.state() == QProcess::Running)
        QCOMPARE(kill(process, SIGCONT), 0);
    for (QProcess &adder : adders)
        take(adder);
}

void TestSoak::killedAndStoppedClientsLoseNothing()
{
    for (int i = 0; i < rounds() && !QTest::currentTestFailed(); ++i)
        round();
    patience = text("60");
    QVERIFY(list());
    for (const int id : added - doomed)
        QVERIFY2(listed.contains(id), qPrintable(QString::number(id)));
    for (const QString &file : files)
        QCOMPARE(client.run({text("add"), text("-q"), file}).exitCode, 0);
    QVERIFY(list());
    QCOMPARE(int(listed.size()), 2 * perFile);
}

QTEST_GUILESS_MAIN(TestSoak)
#include "tst_soak.moc"
