// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "clientprocess.h"

#include <QtCore/QHash>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QSet>
#include <QtTest/QTest>

#include <functional>
#include <future>

//! Four clients at once on one store, each with its own command over and over: one adds, one
//! modifies, one adds and deletes, one lists. They go by rounds and not by a clock, so that a
//! slow machine proves as much as a quick one: half a minute on two cores that other work keeps
//! busy, and eight times as much with KORVASYNC_TEST_LONG.
class TestSeveral : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void addModifyDeleteAndList();
};

namespace {

int rounds() { return qEnvironmentVariableIsSet("KORVASYNC_TEST_LONG") ? 240 : 30; }

QByteArray message(const char *sender, int n, const QByteArray &body)
{
    const QDateTime time = QDateTime(QDate(2024, 5, 1), QTime(10, 0), Qt::UTC).addSecs(n);
    return vMessage("INBOX", time.toString(QStringLiteral("yyyyMMddThhmmssZ")).toLatin1(), sender,
                    body);
}

//! The n-th to the (n + count - 1)-th message of a sender.
QByteArray messages(const char *sender, int n, int count)
{
    QByteArray file;
    for (int i = n; i < n + count; ++i)
        file += message(sender, i, "text " + QByteArray::number(i));
    return file;
}

//! Ids by body of the messages listed.
using Ids = QHash<QString, QString>;

Ids idsByBody(const QByteArray &ndjson)
{
    Ids ids;
    for (const QByteArray &line : ndjson.trimmed().split('\n')) {
        const QJsonObject object = QJsonDocument::fromJson(line).object();
        ids.insert(object.value(QLatin1String("body")).toString(),
                   object.value(QLatin1String("id")).toVariant().toString());
    }
    return ids;
}

//! Runs the client; what it says when it fails goes into \a troubles.
QByteArray run(const ClientProcess &client, const QStringList &arguments, QStringList &troubles,
               const QByteArray &input = QByteArray())
{
    const ClientProcess::Outcome outcome = client.run(arguments, input);
    if (outcome.exitCode != 0) {
        troubles += QStringLiteral("%1: exit %2: %3")
                        .arg(arguments.value(0))
                        .arg(outcome.exitCode)
                        .arg(QString::fromUtf8(outcome.errors));
    }
    return outcome.output;
}

QByteArray listed(const ClientProcess &client, const char *sender, QStringList &troubles)
{
    return run(client, {text("list"), text("-o"), text("ndjson"), text("--number"), text(sender)},
               troubles);
}

constexpr char adder[] = "+15550001";
constexpr char modifier[] = "+15550002";
constexpr char deleter[] = "+15550003";
constexpr int addedARound = 25;
constexpr int modifiedMessages = 10;
constexpr int deletedARound = 10;

QStringList add(const ClientProcess &client)
{
    QStringList troubles;
    for (int round = 0; round < rounds(); ++round) {
        run(client, {text("add"), text("-")}, troubles,
            messages(adder, round * addedARound, addedARound));
    }
    return troubles;
}

QStringList modify(const ClientProcess &client)
{
    QStringList troubles;
    run(client, {text("add"), text("-")}, troubles, messages(modifier, 0, modifiedMessages));
    const Ids ids = idsByBody(listed(client, modifier, troubles));
    for (int round = 0; round < rounds(); ++round) {
        const int n = round % modifiedMessages;
        const QString id = ids.value(QStringLiteral("text %1").arg(n));
        run(client, {text("modify"), id, text("-")}, troubles,
            message(modifier, n, "round " + QByteArray::number(round)));
    }
    return troubles;
}

QStringList addAndDelete(const ClientProcess &client)
{
    QStringList troubles;
    QSet<QString> all; // also of what is gone: no id is given twice
    for (int round = 0; round < rounds(); ++round) {
        const int first = round * (deletedARound + 1);
        run(client, {text("add"), text("-")}, troubles,
            messages(deleter, first, deletedARound + 1));
        const Ids ids = idsByBody(listed(client, deleter, troubles));
        QStringList arguments{text("delete"), text("--yes")};
        for (int i = 0; i < deletedARound; ++i)
            arguments += ids.value(QStringLiteral("text %1").arg(first + i));
        for (int i = 0; i <= deletedARound; ++i) {
            const QString id = ids.value(QStringLiteral("text %1").arg(first + i));
            if (id.isEmpty() || all.contains(id))
                troubles += QStringLiteral("\"%1\" given for message %2").arg(id).arg(first + i);
            all += id;
        }
        run(client, arguments, troubles);
    }
    return troubles;
}

//! What was there once stays: only the adder's messages are looked at.
QStringList list(const ClientProcess &client)
{
    QStringList troubles;
    int before = 0;
    for (int round = 0; round < rounds(); ++round) {
        const int now = int(listed(client, adder, troubles).count('\n'));
        if (now < before)
            troubles += QStringLiteral("%1 messages after %2").arg(now).arg(before);
        before = now;
    }
    return troubles;
}

} // namespace

void TestSeveral::addModifyDeleteAndList()
{
    const ClientProcess client;
    client.fill(message("+15550009", 0, "the store is made"));
    std::vector<std::future<QStringList>> workers;
    for (const auto work : {add, modify, addAndDelete, list})
        workers.push_back(std::async(std::launch::async, work, std::cref(client)));
    for (auto &worker : workers)
        QCOMPARE(worker.get(), QStringList());

    QStringList troubles;
    QSet<QString> ids;
    const auto count = [&](const char *sender) {
        Ids found = idsByBody(listed(client, sender, troubles));
        for (const QString &id : qAsConst(found))
            ids += id;
        return found;
    };
    const Ids added = count(adder);
    for (int i = 0; i < rounds() * addedARound; ++i)
        QVERIFY2(added.contains(QStringLiteral("text %1").arg(i)), qPrintable(QString::number(i)));
    const Ids modified = count(modifier);
    QCOMPARE(modified.size(), modifiedMessages);
    for (int round = rounds() - modifiedMessages; round < rounds(); ++round)
        QVERIFY(modified.contains(QStringLiteral("round %1").arg(round)));
    const Ids kept = count(deleter);
    QCOMPARE(kept.size(), rounds());
    for (int round = 0; round < rounds(); ++round)
        QVERIFY(kept.contains(
            QStringLiteral("text %1").arg(round * (deletedARound + 1) + deletedARound)));
    QCOMPARE(ids.size(), added.size() + modified.size() + kept.size());
    QCOMPARE(client.listed().count('\n'), ids.size() + 1);
    QCOMPARE(troubles, QStringList());
}

QTEST_GUILESS_MAIN(TestSeveral)
#include "tst_several.moc"
