// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// Without a session bus a send fails at once, and the store works.

#include "eventloop.h"
#include "messagelog.h"
#include "storetesting.h"
#include "vmessagetext.h"

#include <korvasync/sendsmsinterface.h>

class TestNoBus : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void everySendFails_data();
    void everySendFails();
    void theStoreWorks();
};

void TestNoBus::everySendFails_data()
{
    QTest::addColumn<QString>("text");
    VMessageText message;
    message.recipient = QStringLiteral("+15550100");
    QTest::newRow("message") << message.text();
    QTest::newRow("unreadable") << QStringLiteral("no message");
}

void TestNoBus::everySendFails()
{
    QFETCH(QString, text);
    MessageLog log;
    SendSmsInterface service;
    QVERIFY(
        log.lines(QtDebugMsg).contains(QStringLiteral("SendSMsInterface obj registered false")));
    PendingSmsId *const pending = service.sendSms(text);
    QSignalSpy finished(pending, &PendingSmsId::finished);
    QCOMPARE(pending->errorCause(), 4);
    QCOMPARE(pending->isError(), true);
    QCOMPARE(pending->id(), -1);
    QCOMPARE(pending->parent(), &service);
    const QStringList lines = log.lines(QtDebugMsg);
    const auto connected = lines.indexOf(QStringLiteral("eventsAdded got connected  false"));
    QVERIFY(connected >= 0);
    QCOMPARE(lines.value(connected + 1), QStringLiteral("DBUS Connection Failed"));
    settle();
    QCOMPARE(finished.count(), 0);
    QCOMPARE(service.children().size(), 1);
}

void TestNoBus::theStoreWorks()
{
    const QList<int> ids = StoreTesting::add(StoreTesting::messages(2));
    QCOMPARE(int(ids.size()), 2);
    QVERIFY(ids.at(0) > 0);
    QCOMPARE(int(StoreTesting::read(StoreTesting::Inbox).size()), 2);
}

int main(int argc, char *argv[])
{
    const QTemporaryDir directory;
    qputenv("KORVASYNC_STORE", QFile::encodeName(directory.filePath(QStringLiteral("store"))));
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    QCoreApplication application(argc, argv);
    TestNoBus test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_nobus.moc"
