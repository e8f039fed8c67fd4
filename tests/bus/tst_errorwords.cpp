// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// What a modem daemon says of an error reaches people and logs, but nothing that a terminal acts
// on, nor number or text of a message, whatever modem and network have made it say.

#include "messagelog.h"
#include "modemtest.h"
#include "senderservice.h"

#include <messaging/messagingif.h>

#include <QtDBus/QDBusServiceWatcher>

#include <optional>

using StoreTesting::Patience;

namespace {

const QString Number = QStringLiteral("+15550100");
const QString Text = QStringLiteral("The key lies\nunder the third stone.");
const QString Refusal =
    QStringLiteral("org.freedesktop.ModemManager1.Error.Message.NetworkTimeout");
const QString Hostile =
    QStringLiteral("\u001b]0;x\u0007one\r\n<1>two\u009b31m\u202ethree\u2028four");

} // namespace

class TestErrorWords : public ModemTest
{
    Q_OBJECT
public:
    using ModemTest::ModemTest;

private Q_SLOTS:
    void initTestCase() { QVERIFY(StoreTesting::makeStore()); }
    void init() { modem = std::make_unique<ScriptedModem>(systemBus.address()); }
    void cleanup() { modem.reset(); }
    void areToldOnOneLineWithoutTheMessage_data();
    void areToldOnOneLineWithoutTheMessage();
    void areToldOfAMessageThatIsNotTaken();
    void areToldOfAMessageThatMayHaveGone();
    void areToldInTheJournalOfTheService();

private:
    //! What became of the message when the modem answers so.
    QString outcome(const QString &text, const QString &errorName, const QString &errorText);

    std::unique_ptr<ScriptedModem> modem;
};

QString TestErrorWords::outcome(const QString &text, const QString &errorName,
                                const QString &errorText)
{
    QObject::connect(modem.get(), &ScriptedModem::asked, modem.get(),
                     [&] { modem->refuse(errorName, errorText); });
    MessagingIf messaging{QString()};
    PendingMessage *const message = messaging.sendSMS(Number, text, false);
    // A spy of Qt 5 would warn of the type, which the log takes for words of the library.
    std::optional<QString> told;
    QObject::connect(message, &PendingMessage::finished, message,
                     [&](const PendingMessage *done) { told = done->errorText(); });
    const bool isFinished = QTest::qWaitFor([&] { return told.has_value(); }, Patience);
    return isFinished ? *told : QStringLiteral("never finished");
}

void TestErrorWords::areToldOnOneLineWithoutTheMessage_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("words");
    QTest::addColumn<QString>("told");
    const auto row = [](const char *name, const QString &words, const QString &told,
                        const QString &text = Text) {
        QTest::newRow(name) << text << words << told;
    };
    row("plain", QStringLiteral("No answer: 42"), QStringLiteral("No answer: 42"));
    row("hostile", Hostile, QStringLiteral("]0;x one <1>two 31m three four"));
    row("beyond 16 bits", QStringLiteral("a\U000E0001b"), QStringLiteral("a b"));
    row("long", QString(5000, QLatin1Char('z')), QString(200, QLatin1Char('z')));
    row("nothing", QString(), Refusal);
    row("only controls", QStringLiteral("\u001b\n"), Refusal);
    row("number", QStringLiteral("cannot reach +15550100"), Refusal);
    row("number in parts", QStringLiteral("cannot reach 1 (555) 01-00"), Refusal);
    row("national number", QStringLiteral("cannot reach 05550100"), Refusal);
    row("number in other digits", QStringLiteral("cannot reach ١٥٥٥٠١٠٠"), Refusal);
    row("other number", QStringLiteral("cannot reach 15550199"),
        QStringLiteral("cannot reach 15550199"));
    row("text", QStringLiteral("not sent: ") + Text, Refusal);
    row("beginning of the text", QStringLiteral("not sent: 'The key lies un...'"), Refusal);
    row("middle of the text", QStringLiteral("not sent: '...THE THIRD STONE...'"), Refusal);
    row("short text", QStringLiteral("'Mine' was not sent"), Refusal, QStringLiteral("Mine"));
    row("a letter", QStringLiteral("not sent"), QStringLiteral("not sent"), QStringLiteral("s"));
}

void TestErrorWords::areToldOnOneLineWithoutTheMessage()
{
    QFETCH(QString, text);
    QFETCH(QString, words);
    QFETCH(QString, told);
    const MessageLog log;
    const QString sentence = QStringLiteral("The message was refused: ") + told;
    QCOMPARE(outcome(text, Refusal, words), sentence);
    QCOMPARE(log.lines(QtWarningMsg), QStringList(sentence));
}

void TestErrorWords::areToldOfAMessageThatIsNotTaken()
{
    modem->refuseToTake(Refusal, Hostile);
    QCOMPARE(outcome(Text, QString(), QString()),
             QStringLiteral("The modem daemon reports: ]0;x one <1>two 31m three four"));
    QCOMPARE(modem->messages().size(), 0);
}

void TestErrorWords::areToldOfAMessageThatMayHaveGone()
{
    QCOMPARE(outcome(Text, QStringLiteral("org.freedesktop.ModemManager1.Error.Core.Failed"),
                     QStringLiteral("lost \u001b[2J+15550100")),
             QStringLiteral("It is not known whether the message was sent. The modem daemon "
                            "reports: org.freedesktop.ModemManager1.Error.Core.Failed"));
}

//! Also where the environment asks for the library's trace.
void TestErrorWords::areToldInTheJournalOfTheService()
{
    QDBusServiceWatcher watcher(SenderService::BusName, QDBusConnection::sessionBus(),
                                QDBusServiceWatcher::WatchForRegistration);
    QSignalSpy registered(&watcher, &QDBusServiceWatcher::serviceRegistered);
    BoundProcess service;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("*=true"));
    service.setProcessEnvironment(environment);
    service.startBound(QStringLiteral(KORVASYNCD), QStringList());
    QVERIFY(registered.wait(Patience));
    QObject::connect(modem.get(), &ScriptedModem::asked, modem.get(),
                     [&] { modem->refuse(Refusal, Hostile); });
    const QList<int> result = SenderService::answer(
        SenderService::call(SenderService::vMessage(QStringLiteral("Hello"))));
    QCOMPARE(result.value(1), 0);
    service.terminate();
    QTRY_COMPARE_WITH_TIMEOUT(service.state(), QProcess::NotRunning, Patience);
    QCOMPARE(service.readAllStandardError(),
             QByteArray("korvasyncd: The message was refused: ]0;x one <1>two 31m three four\n"
                        "korvasyncd: Error in sendSms request\n"));
}

MODEM_TEST_MAIN(TestErrorWords)
#include "tst_errorwords.moc"
