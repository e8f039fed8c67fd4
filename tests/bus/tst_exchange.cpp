// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// Events go over the bus to a program built with the other Qt version and back.

#include "bustesting.h"
#include "exchange.h"
#include "fullevent.h"

#include <QtCore/QProcess>
#include <QtTest/QSignalSpy>

using namespace BusTesting;
using CommHistory::Event;

namespace {

QDateTime utc(const QTime &time) { return QDateTime(QDate(2010, 11, 3), time, Qt::UTC); }

//! With what the bus carries besides, and times to the millisecond.
Event wholeEvent()
{
    CommHistory::MessagePart part;
    part.contentId = QStringLiteral("part1");
    part.contentType = QStringLiteral("text/plain");
    part.path = QStringLiteral("/tmp/part1");
    part.plainText = QStringLiteral("Part");
    part.size = 4;
    part.contentLocation = QStringLiteral("part1.txt");
    CommHistory::MessagePart secondPart;
    secondPart.contentId = QStringLiteral("part2");
    Event event = fullEvent();
    event.setId(42);
    event.setStartTime(utc(QTime(10, 0, 1, 7)));
    event.setEndTime(utc(QTime(11, 0, 2, 250)));
    event.setLastModified(utc(QTime(12, 0, 3, 999)));
    event.setMessageParts({part, secondPart});
    event.setContacts({{5, QStringLiteral("Ann")}, {6, QStringLiteral("Bob")}});
    return event;
}

const QString FullText = QStringLiteral(
    "42|2|2010-11-03T10:00:01.007Z|2010-11-03T11:00:02.250Z|2|1|1|3|ring/tel/account0|+15550100|"
    "4101|7|H\u00e9llo\n\U0001F600|token|QUOTED-PRINTABLE|UTF-8|en|2010-11-03T12:00:03.999Z|"
    "part1|text/plain|/tmp/part1|Part|4|part1.txt|part2||||0||5|Ann|6|Bob");
const QString EmptyText = QStringLiteral("-1|0|none|none|0|0|0|0|||0|-1||||||none");

} // namespace

class TestExchange : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void bothQtVersionsUnderstandEachOther();

public Q_SLOTS:
    void take(const QList<CommHistory::Event> &events, const QDBusMessage &message)
    {
        returned = events;
        signature = message.signature();
        Q_EMIT taken();
    }

Q_SIGNALS:
    void taken();

private:
    QList<Event> returned;
    QString signature;
};

void TestExchange::bothQtVersionsUnderstandEachOther()
{
    Exchange::registerTypes();
    QDBusConnection bus = QDBusConnection::sessionBus();
    QVERIFY(bus.connect(QString(), QString(), Exchange::Interface, Exchange::Returned, this,
                        SLOT(take(QList<CommHistory::Event>, QDBusMessage))));
    roundTrip(bus);
    QProcess peer;
    peer.start(QStringLiteral(EXCHANGEPEER), QStringList());
    while (!peer.canReadLine() && peer.waitForReadyRead(Patience)) { }
    QCOMPARE(peer.readLine(), QByteArray("Qt " OTHER_QT "\n"));

    QSignalSpy spy(this, &TestExchange::taken);
    bus.send(QDBusMessage::createSignal(QStringLiteral("/"), Exchange::Interface, Exchange::Given)
             << QVariant::fromValue(QList<Event>{wholeEvent(), Event()}));
    const bool isTaken = spy.wait(Patience);
    peer.kill();
    QVERIFY(peer.waitForFinished(Patience));
    QCOMPARE(QString::fromUtf8(peer.readAllStandardOutput()),
             FullText + QLatin1Char('\n') + EmptyText + QLatin1Char('\n'));
    QVERIFY(isTaken);
    QCOMPARE(signature, QStringLiteral("a(iixxibbissiisssssxa(ssssis)a(is))"));
    QCOMPARE(int(returned.size()), 2);
    QCOMPARE(Exchange::text(returned.at(0)), FullText);
    QCOMPARE(Exchange::text(returned.at(1)), EmptyText);
    QCOMPARE(returned.at(0).startTime().timeSpec(), Qt::LocalTime);
    QCOMPARE(returned.at(0).endTime().timeSpec(), Qt::LocalTime);
    QCOMPARE(returned.at(0).lastModified().timeSpec(), Qt::LocalTime);
}

BUS_TEST_MAIN(TestExchange)
#include "tst_exchange.moc"
