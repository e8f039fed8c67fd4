// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "messagingtests.h"

#include "messagelog.h"

#include <QtCore/QElapsedTimer>

using namespace CommHistory;
using namespace ModemTesting;
using StoreTesting::Patience;
using StoreTesting::read;
using StoreTesting::Sent;

namespace {

const QString Number = QStringLiteral("+15550100");

QList<QJsonObject> one(const QString &number, const QString &text)
{
    return {{{QStringLiteral("number"), number}, {QStringLiteral("text"), text}}};
}

} // namespace

void MessagingTests::cleanup()
{
    stack.takeMessages();
    removeMessages();
}

void MessagingTests::sendsWhole(const QString &text)
{
    QVERIFY(stack.provide());
    MessagingIf messaging{QString()};
    Outcome outcome(messaging.sendSMS(Number, text, true));
    QVERIFY(outcome.wait());
    QCOMPARE(outcome.text(), QString());
    QCOMPARE(stack.takeMessages(), one(Number, text));
    QCOMPARE(read(Sent).value(0).freeText(), text);
}

void MessagingTests::fails(const QString &problem, bool isStored)
{
    const QString text = isStored
        ? problem
        : QStringLiteral("It is not known whether the message was sent. %1").arg(problem);
    MessageLog log;
    MessagingIf messaging{QString()};
    Outcome outcome(messaging.sendSMS(Number, QStringLiteral("Hello"), true));
    QVERIFY(outcome.wait());
    QVERIFY(outcome.isError());
    QCOMPARE(outcome.text(), text);
    QCOMPARE(log.lines(QtWarningMsg), QStringList(problem));
    QCOMPARE(stack.takeMessages(), QList<QJsonObject>());
    QCOMPARE(read(Sent).size(), 0);
    const QList<Event> events = read(Outbox);
    QCOMPARE(events.size(), isStored ? 1 : 0);
    if (isStored)
        QCOMPARE(events.first().status(), Event::FailedStatus);
}

void MessagingTests::sendsTextsWhole_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("plain") << QStringLiteral("Hello");
    QTest::newRow("extended") << QStringLiteral("{~} [€]|^\\ @£ÄÖÑÜ");
    QTest::newRow("lines") << QStringLiteral("One\nTwo\n");
    QTest::newRow("300 letters") << QStringLiteral("abcdefghij").repeated(30);
    QTest::newRow("160 letters") << QStringLiteral("abcdefghij").repeated(16);
    QTest::newRow("Cyrillic") << QStringLiteral("Привет, мир");
    QTest::newRow("160 Cyrillic letters") << QStringLiteral("абвгдежзик").repeated(16);
    QTest::newRow("255 parts") << QStringLiteral("а").repeated(255 * 67);
}

void MessagingTests::sendsTextsWhole()
{
    QFETCH(QString, text);
    sendsWhole(text);
}

//! A message has 255 parts at most.
void MessagingTests::tellsATooLongText()
{
    QVERIFY(stack.provide());
    const QString text = QStringLiteral("а").repeated(255 * 67 + 1);
    MessagingIf messaging{QString()};
    Outcome outcome(messaging.sendSMS(Number, text, true));
    QVERIFY(outcome.wait());
    QCOMPARE(outcome.text(), QStringLiteral("The text is too long."));
    QCOMPARE(stack.takeMessages(), QList<QJsonObject>());
    QCOMPARE(read(Outbox).value(0).freeText(), text);
}

void MessagingTests::storesASentMessage()
{
    QVERIFY(stack.provide());
    const QDateTime before = QDateTime::currentDateTime().addSecs(-1);
    MessagingIf messaging{QString()};
    Outcome outcome(messaging.sendSMS(Number, QStringLiteral("Hello"), true));
    QCOMPARE(outcome.count(), 0);
    QVERIFY(outcome.wait());
    QVERIFY(!outcome.isError());
    const QList<Event> events = read(Sent);
    QCOMPARE(events.size(), 1);
    const Event event = events.first();
    QCOMPARE(event.type(), Event::SmsEvent);
    QCOMPARE(event.direction(), Event::Outbound);
    QCOMPARE(event.status(), Event::SentStatus);
    QCOMPARE(event.remoteUid(), Number);
    QCOMPARE(event.localUid(), QStringLiteral("/org/freedesktop/Telepathy/Account/ring/tel/ring"));
    QCOMPARE(event.freeText(), QStringLiteral("Hello"));
    QVERIFY(event.isRead());
    QVERIFY(event.groupId() > 0);
    QVERIFY(event.startTime() >= before);
    QVERIFY(event.startTime() <= QDateTime::currentDateTime());
    QCOMPARE(event.endTime(), event.startTime());
    QCOMPARE(read(Outbox).size(), 0);
}

void MessagingTests::sendsTwoInARow()
{
    QVERIFY(stack.provide());
    const QString first = QStringLiteral("abcdefghij").repeated(30);
    const QString second = QStringLiteral("jihgfedcba").repeated(30);
    MessagingIf messaging{QString()};
    Outcome firstOutcome(messaging.sendSMS(Number, first, true));
    Outcome secondOutcome(messaging.sendSMS(QStringLiteral("5550100"), second, true));
    QVERIFY(firstOutcome.wait());
    QVERIFY(secondOutcome.wait());
    QCOMPARE(firstOutcome.text(), QString());
    QCOMPARE(secondOutcome.text(), QString());
    const QList<QJsonObject> messages = stack.takeMessages();
    QCOMPARE(messages.size(), 2);
    QVERIFY(messages.contains(one(Number, first).first()));
    QVERIFY(messages.contains(one(QStringLiteral("5550100"), second).first()));
    const QList<Event> events = read(Sent);
    QCOMPARE(events.size(), 2);
    QCOMPARE(events.at(0).groupId(), events.at(1).groupId());
}

void MessagingTests::leavesSeparatorsOutForTheModemOnly_data()
{
    QTest::addColumn<QString>("typed");
    const QString plain = QStringLiteral("+1 (555) 01-00");
    const QString typeset = QStringLiteral("\u202a+1\u00a05\u20095\u20115\u20130\u202f100\u202c");
    QTest::newRow("ASCII") << plain;
    QTest::newRow("beyond ASCII") << typeset;
    // As the library reads what a program hands over.
    QTest::newRow("UTF-8 as Latin-1") << QString::fromLatin1(typeset.toUtf8());
    QTest::newRow("Latin-1") << QStringLiteral("+1\u00a05550100");
}

void MessagingTests::leavesSeparatorsOutForTheModemOnly()
{
    QFETCH(QString, typed);
    QVERIFY(stack.provide());
    MessagingIf messaging{QString()};
    Outcome outcome(messaging.sendSMS(typed, QStringLiteral("Hello"), true));
    QVERIFY(outcome.wait());
    QCOMPARE(stack.takeMessages(), one(Number, QStringLiteral("Hello")));
    QCOMPARE(read(Sent).value(0).remoteUid(), typed);
}

void MessagingTests::dialsALongNumberWhole()
{
    QVERIFY(stack.provide());
    const QString number = QStringLiteral("+15550100155501001555");
    QCOMPARE(number.size(), 21); // as many digits as a message has room for
    MessagingIf messaging{QString()};
    Outcome outcome(messaging.sendSMS(number, QStringLiteral("Hello"), true));
    QVERIFY(outcome.wait());
    QCOMPARE(stack.takeMessages(), one(number, QStringLiteral("Hello")));
}

void MessagingTests::sendsThroughTheModemThatIsNamed()
{
    QVERIFY(stack.provide());
    MessagingIf messaging(stack.modemPath());
    Outcome outcome(messaging.sendSMS(Number, QStringLiteral("Hello"), true));
    QVERIFY(outcome.wait());
    QCOMPARE(outcome.text(), QString());
    QCOMPARE(stack.takeMessages(), one(Number, QStringLiteral("Hello")));
}

void MessagingTests::tellsThatTheNamedModemIsMissing()
{
    QVERIFY(stack.provide());
    MessagingIf messaging(stack.modemPath() + QLatin1Char('9'));
    Outcome outcome(messaging.sendSMS(Number, QStringLiteral("Hello"), true));
    QVERIFY(outcome.wait());
    QCOMPARE(outcome.text(),
             QStringLiteral("There is no modem %1.").arg(stack.modemPath() + QLatin1Char('9')));
    QCOMPARE(stack.takeMessages(), QList<QJsonObject>());
}

void MessagingTests::keepsNothingWhenAsked()
{
    QVERIFY(stack.provide());
    MessagingIf messaging{QString()};
    Outcome outcome(messaging.sendSMS(Number, QStringLiteral("Hello"), false));
    QVERIFY(outcome.wait());
    QVERIFY(!outcome.isError());
    QCOMPARE(stack.takeMessages(), one(Number, QStringLiteral("Hello")));
    QCOMPARE(read(Sent).size(), 0);
}

void MessagingTests::seesAMessageThroughWithoutItsSender()
{
    QVERIFY(stack.provide());
    MessagingIf(QString()).sendSMS(Number, QStringLiteral("Hello"), true);
    QTRY_COMPARE_WITH_TIMEOUT(read(Sent).size(), 1, Patience);
}

void MessagingTests::waitsForALateAnswer()
{
    QVERIFY(stack.provide());
    QVERIFY(stack.order("delay 5000"));
    QElapsedTimer timer;
    timer.start();
    MessagingIf messaging{QString()};
    Outcome outcome(messaging.sendSMS(Number, QStringLiteral("Hello"), true));
    QVERIFY(outcome.wait());
    QCOMPARE(outcome.text(), QString());
    QVERIFY(timer.elapsed() >= 5000);
    QCOMPARE(read(Sent).size(), 1);
}

void MessagingTests::tellsALockedSim()
{
    QVERIFY(stack.start("ask-pin"));
    fails(QStringLiteral("The SIM card is locked and asks for its PIN."));
}

void MessagingTests::tellsAMissingSim()
{
    QVERIFY(stack.start("no-sim"));
    fails(QStringLiteral("The modem has no SIM card."));
}

void MessagingTests::tellsAMissingModem()
{
    QVERIFY(stack.startWithoutModem());
    fails(QStringLiteral("There is no modem."));
}

void MessagingTests::tellsAMissingNetwork()
{
    QVERIFY(stack.provide());
    {
        MessagingIf messaging{QString()}; // enables the modem if need be
        Outcome outcome(messaging.sendSMS(Number, QStringLiteral("Hello"), false));
        QVERIFY(outcome.wait());
        QCOMPARE(stack.takeMessages().size(), 1);
    }
    QVERIFY(stack.goAway());
    fails(QStringLiteral("The modem is not registered with a network."));
}

void MessagingTests::doesNotKnowWhenTheDaemonGoes()
{
    QVERIFY(stack.provide());
    QVERIFY(stack.order("ignore"));
    MessagingIf messaging{QString()};
    Outcome outcome(messaging.sendSMS(Number, QStringLiteral("Hello"), true));
    QVERIFY(stack.waitForSubmission());
    stack.killDaemon();
    QVERIFY(outcome.wait());
    QVERIFY(outcome.isError());
    QCOMPARE(outcome.text(),
             QStringLiteral("It is not known whether the message was sent. "
                            "The modem daemon has ended."));
    QCOMPARE(read(Sent).size(), 0);
    QCOMPARE(read(Outbox).size(), 0);
}
