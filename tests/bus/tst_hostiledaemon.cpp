// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// Whatever a modem daemon answers, a message has one outcome, and it is true.

#include "modemtest.h"

#include <messaging/messagingif.h>

#include <QtDBus/QDBusObjectPath>

#include <memory>

using StoreTesting::Patience;

namespace {

using Interfaces = QMap<QString, QVariantMap>;
using Objects = QMap<QDBusObjectPath, Interfaces>;

const QString ModemInterface = QStringLiteral("org.freedesktop.ModemManager1.Modem");
const QString Messaging = ModemInterface + QStringLiteral(".Messaging");

QVariantList modem(const Interfaces &interfaces)
{
    return {QVariant::fromValue(Objects{
        {QDBusObjectPath(QStringLiteral("/org/freedesktop/ModemManager1/Modem/0")), interfaces}})};
}

Interfaces withState(const QVariant &state)
{
    return {{ModemInterface, {{QStringLiteral("State"), state}}}, {Messaging, {}}};
}

} // namespace

Q_DECLARE_METATYPE(Interfaces)
Q_DECLARE_METATYPE(Objects)

class TestHostileDaemon : public ModemTest
{
    Q_OBJECT
public:
    using ModemTest::ModemTest;

private Q_SLOTS:
    void initTestCase() { QVERIFY(StoreTesting::makeStore()); }
    void isNotHandedAMessage_data();
    void isNotHandedAMessage();
    void isBelievedWhenItTakesTheMessage();
};

void TestHostileDaemon::isNotHandedAMessage_data()
{
    QTest::addColumn<QString>("method");
    QTest::addColumn<QVariantList>("arguments");
    QTest::addColumn<QString>("told");
    const QString objects = QStringLiteral("GetManagedObjects");
    const QString create = QStringLiteral("Create");
    const QString noModem = QStringLiteral("There is no modem.");
    const QString noMessaging = QStringLiteral("The modem cannot send messages.");
    // The bus library's words go on.
    const QString otherTypes =
        QStringLiteral("The modem daemon reports: Unexpected reply signature: got ");
    QTest::newRow("objects-nothing") << objects << QVariantList() << otherTypes;
    QTest::newRow("objects-text") << objects << QVariantList{QStringLiteral("modem")} << otherTypes;
    QTest::newRow("objects-none") << objects << QVariantList{QVariant::fromValue(Objects())}
                                  << noModem;
    QTest::newRow("modem-without-interfaces") << objects << modem({}) << noModem;
    QTest::newRow("modem-without-properties")
        << objects << modem({{ModemInterface, {}}}) << noMessaging;
    QTest::newRow("state-text") << objects << modem(withState(QStringLiteral("registered")))
                                << noMessaging;
    QTest::newRow("state-list") << objects << modem(withState(QStringList(QStringLiteral("8"))))
                                << noMessaging;
    QTest::newRow("message-nothing") << create << QVariantList() << otherTypes;
    QTest::newRow("message-text") << create << QVariantList{QStringLiteral("/message")}
                                  << otherTypes;
    QTest::newRow("message-elsewhere")
        << create << QVariantList{QVariant::fromValue(QDBusObjectPath("/a"))}
        << QStringLiteral("The modem daemon reports: No such object path");
}

void TestHostileDaemon::isNotHandedAMessage()
{
    QFETCH(QString, method);
    QFETCH(QVariantList, arguments);
    QFETCH(QString, told);
    ScriptedModem modem(systemBus.address());
    modem.answerInstead(method, arguments);
    MessagingIf messaging{QString()};
    PendingMessage *const message =
        messaging.sendSMS(QStringLiteral("+15550100"), QStringLiteral("Hello"), false);
    QSignalSpy finished(message, &PendingMessage::finished);
    QString text;
    connect(message, &PendingMessage::finished, this,
            [&](const PendingMessage *done) { text = done->errorText(); });
    QVERIFY(finished.wait(Patience));
    QVERIFY2(text.startsWith(told), qPrintable(text));
    QCOMPARE(modem.messages().size(), 0);
}

void TestHostileDaemon::isBelievedWhenItTakesTheMessage()
{
    ScriptedModem modem(systemBus.address());
    modem.answerInstead(QStringLiteral("Send"), {QStringLiteral("more"), 1});
    MessagingIf messaging{QString()};
    PendingMessage *const message =
        messaging.sendSMS(QStringLiteral("+15550100"), QStringLiteral("Hello"), false);
    QSignalSpy finished(message, &PendingMessage::finished);
    bool isError = true;
    connect(message, &PendingMessage::finished, this,
            [&](const PendingMessage *done) { isError = done->isError(); });
    QVERIFY(finished.wait(Patience));
    QVERIFY(!isError);
}

MODEM_TEST_MAIN(TestHostileDaemon)
#include "tst_hostiledaemon.moc"
