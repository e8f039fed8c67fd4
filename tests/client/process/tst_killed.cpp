// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "clientprocess.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QHash>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QRandomGenerator>
#include <QtTest/QTest>

//! The client killed at any moment of a verb: the store opens, what was reported holds, every
//! item is whole, and the same command again completes the work. Five moments a verb, and forty
//! with KORVASYNC_TEST_LONG.
class TestKilled : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void adding();
    void modifying();
    void deleting();
    void addingCalls();
};

namespace {

using Objects = QList<QJsonObject>;

int kills() { return qEnvironmentVariableIsSet("KORVASYNC_TEST_LONG") ? 40 : 5; }

//! The whole lines of ndjson; what a kill has cut off is none.
Objects objectsOf(const QByteArray &ndjson)
{
    Objects objects;
    const QByteArray whole = ndjson.left(ndjson.lastIndexOf('\n') + 1);
    for (const QByteArray &line : whole.split('\n')) {
        if (!line.isEmpty())
            objects += QJsonDocument::fromJson(line).object();
    }
    return objects;
}

QString valueOf(const QJsonObject &object, const char *key)
{
    return object.value(QLatin1String(key)).toVariant().toString();
}

//! Ids of the items that the client has reported so.
QStringList idsReported(const QByteArray &results, const char *status)
{
    QStringList ids;
    for (const QJsonObject &result : objectsOf(results)) {
        if (valueOf(result, "status") == QLatin1String(status))
            ids += valueOf(result, "id");
    }
    return ids;
}

//! The n-th known message: what distinguishes it stands in each of its parts.
QJsonObject knownMessage(int n, const QString &word)
{
    const QDateTime time = QDateTime(QDate(2024, 5, 1), QTime(10, 0), Qt::UTC).addSecs(n * 60);
    return {
        {QStringLiteral("folder"), QStringLiteral("inbox")},
        {QStringLiteral("number"), QStringLiteral("+1555%1").arg(1000 + n % 200)},
        {QStringLiteral("time"), time.toString(Qt::ISODate)},
        {QStringLiteral("read"), n % 2 == 0},
        {QStringLiteral("body"),
         QStringLiteral("%1 %2 \u00e9\u0436\u4e16 \U0001F600").arg(word).arg(n)},
    };
}

QByteArray vMessageOf(const QJsonObject &message)
{
    QByteArray stamp = valueOf(message, "time").toLatin1();
    stamp.replace("-", "").replace(":", "");
    return vMessage("INBOX", stamp, valueOf(message, "number").toLatin1(),
                    valueOf(message, "body").toUtf8(),
                    message.value(QLatin1String("read")).toBool() ? "READ" : "UNREAD");
}

QByteArray knownMessages(int count)
{
    QByteArray file;
    for (int n = 0; n < count; ++n)
        file += vMessageOf(knownMessage(n, text("old")));
    return file;
}

//! What the list command prints, which must go well once there is a store.
QByteArray listed(const ClientProcess &client, const QStringList &command)
{
    const bool isMade = QFile::exists(client.store() + text("/korvasync-store"));
    const ClientProcess::Outcome list = client.run(command);
    if (list.exitCode != (isMade ? 0 : 3))
        qFatal("%d: %s", list.exitCode, list.errors.constData());
    return list.output;
}

//! The messages of the store without ids and tokens, by id. Every one is known, and there
//! once.
QHash<QString, QJsonObject> wholeMessages(const ClientProcess &client,
                                          const QStringList &words = {text("old")})
{
    QHash<QString, QJsonObject> messages;
    QSet<QString> bodies;
    for (QJsonObject message :
         objectsOf(listed(client, {text("list"), text("-o"), text("ndjson")}))) {
        const QString id = valueOf(message, "id");
        message.remove(QLatin1String("id"));
        message.remove(QLatin1String("token"));
        const QStringList parts = valueOf(message, "body").split(QLatin1Char(' '));
        const bool isWhole = words.contains(parts.value(0))
            && message == knownMessage(parts.value(1).toInt(), parts.at(0));
        if (!isWhole || messages.contains(id) || bodies.contains(parts.at(1)))
            qFatal("not whole, or twice: %s", qPrintable(valueOf(message, "body")));
        messages.insert(id, message);
        bodies.insert(parts.at(1));
    }
    return messages;
}

//! Runs the command and kills it somewhere between its start and a little beyond the time that
//! it takes undisturbed.
QByteArray outputUntilKilled(const ClientProcess &client, const QStringList &arguments,
                             qint64 undisturbed)
{
    QProcess process;
    client.start(process, arguments);
    const int moment = int(QRandomGenerator::global()->bounded(double(undisturbed) * 1.1));
    if (!process.waitForFinished(moment)) {
        process.kill();
        process.waitForFinished();
    }
    return process.readAllStandardOutput();
}

//! Milliseconds that the command takes.
qint64 timeOf(const ClientProcess &client, const QStringList &arguments)
{
    QElapsedTimer timer;
    timer.start();
    const ClientProcess::Outcome outcome = client.run(arguments);
    if (outcome.exitCode != 0)
        qWarning("%s", outcome.errors.constData());
    return timer.elapsed();
}

} // namespace

void TestKilled::adding()
{
    constexpr int count = 5000;
    const ClientProcess first;
    const QString file = first.write(text("messages.vmsg"), knownMessages(count));
    const QStringList command{text("-o"), text("ndjson"), text("add"), file};
    const qint64 undisturbed = timeOf(first, command);
    QCOMPARE(wholeMessages(first).size(), count);
    for (int i = 0; i < kills(); ++i) {
        const ClientProcess client;
        const QByteArray results = outputUntilKilled(client, command, undisturbed);
        const auto stored = wholeMessages(client);
        for (const QString &id : idsReported(results, "added"))
            QVERIFY2(stored.contains(id), qPrintable(id));
        const ClientProcess::Outcome again = client.run(command);
        QCOMPARE(again.exitCode, 0);
        QCOMPARE(idsReported(again.output, "present").size(), stored.size());
        QCOMPARE(wholeMessages(client).size(), count);
    }
}

void TestKilled::modifying()
{
    constexpr int count = 50;
    const ClientProcess client;
    client.fill(knownMessages(count));
    const QStringList words{text("old"), text("new")};
    auto before = wholeMessages(client, words);
    QCOMPARE(before.size(), count);
    qint64 undisturbed = 0;
    QStringList ids = before.keys();
    for (int i = 0; i <= kills(); ++i) {
        const QString id = ids.at(i);
        const int n = valueOf(before.value(id), "body").split(QLatin1Char(' ')).at(1).toInt();
        const QJsonObject changed = knownMessage(n, text("new"));
        const QStringList command{text("-o"), text("ndjson"), text("modify"), id,
                                  client.write(text("changed.vmsg"), vMessageOf(changed))};
        if (i == 0) {
            undisturbed = timeOf(client, command);
            before.insert(id, changed);
            continue;
        }
        const QByteArray results = outputUntilKilled(client, command, undisturbed);
        const auto after = wholeMessages(client, words);
        if (idsReported(results, "changed").contains(id) || after.value(id) == changed)
            before.insert(id, changed);
        QCOMPARE(after, before);
        QCOMPARE(client.run(command).exitCode, 0);
        before.insert(id, changed);
        QCOMPARE(wholeMessages(client, words), before);
    }
}

void TestKilled::deleting()
{
    constexpr int count = 3000;
    constexpr int remaining = 1000;
    const QByteArray messages = knownMessages(count);
    qint64 undisturbed = 0;
    for (int i = 0; i <= kills(); ++i) {
        const ClientProcess client;
        client.fill(messages);
        QStringList ids = wholeMessages(client).keys();
        QCOMPARE(ids.size(), count);
        ids = ids.mid(remaining);
        const QStringList command =
            QStringList{text("-o"), text("ndjson"), text("delete"), text("--yes")} + ids;
        if (i == 0) {
            undisturbed = timeOf(client, command);
            QCOMPARE(wholeMessages(client).size(), remaining);
            continue;
        }
        const QByteArray results = outputUntilKilled(client, command, undisturbed);
        const auto stored = wholeMessages(client);
        QVERIFY(stored.size() >= remaining);
        for (const QString &id : idsReported(results, "deleted"))
            QVERIFY2(!stored.contains(id), qPrintable(id));
        // Those that are gone are not found, which is said.
        QCOMPARE(client.run(command).exitCode, stored.size() == count ? 0 : 4);
        QCOMPARE(wholeMessages(client).size(), remaining);
    }
}

void TestKilled::addingCalls()
{
    constexpr int count = 2000;
    QByteArray entries;
    for (int n = 0; n < count; ++n) {
        const QDateTime time = QDateTime(QDate(2024, 5, 1), QTime(10, 0), Qt::UTC).addSecs(n * 60);
        entries += callEntry("incoming", "+1555" + QByteArray::number(1000 + n % 200), n,
                             time.toString(QStringLiteral("yyyyMMddThhmmssZ")).toLatin1());
    }
    const ClientProcess first;
    const QString file = first.write(text("calls.txt"), entries);
    const QStringList command{text("-o"), text("ndjson"), text("calls"), text("add"), file};
    const QStringList list{text("-o"), text("entries"), text("calls"), text("list")};
    const qint64 undisturbed = timeOf(first, command);
    const QByteArray all = first.run(list).output;
    QCOMPARE(all.count("BEGIN:VCALLHISTENTRY"), count);
    for (int i = 0; i < kills(); ++i) {
        const ClientProcess client;
        const QByteArray results = outputUntilKilled(client, command, undisturbed);
        const QByteArray stored = listed(client, list);
        QVERIFY(all.startsWith(stored)); // oldest first, each as it was given
        QVERIFY(stored.count("BEGIN:VCALLHISTENTRY") >= idsReported(results, "added").size());
        QCOMPARE(client.run(command).exitCode, 0);
        QCOMPARE(client.run(list).output, all);
    }
}

QTEST_GUILESS_MAIN(TestKilled)
#include "tst_killed.moc"
