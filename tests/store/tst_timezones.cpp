// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "storetesting.h"

#include <commhistory/trackerio.h>

#include <ctime>

using namespace CommHistory;
using namespace StoreTesting;

//! Times are moments: what is stored under one time zone is the same moment under another,
//! also around the changes of daylight saving time.
class TestTimeZones : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void momentsSurvive_data();
    void momentsSurvive();
    void cleanup();
};

namespace {

void setZone(const char *zone)
{
    qputenv("TZ", zone);
    tzset();
}

} // namespace

void TestTimeZones::momentsSurvive_data()
{
    QTest::addColumn<QByteArray>("writer");
    QTest::addColumn<QByteArray>("reader");
    QTest::addColumn<QString>("shown"); // the first moment, as the reader sees it
    QTest::newRow("utc") << QByteArray("UTC") << QByteArray("UTC")
                         << QStringLiteral("2026-03-28T22:00:00");
    QTest::newRow("helsinki") << QByteArray("Europe/Helsinki") << QByteArray("Europe/Helsinki")
                              << QStringLiteral("2026-03-29T00:00:00");
    QTest::newRow("helsinki to kathmandu")
        << QByteArray("Europe/Helsinki") << QByteArray("Asia/Kathmandu")
        << QStringLiteral("2026-03-29T03:45:00");
    QTest::newRow("new york to helsinki")
        << QByteArray("America/New_York") << QByteArray("Europe/Helsinki")
        << QStringLiteral("2026-03-29T00:00:00");
    QTest::newRow("lord howe to apia")
        << QByteArray("Australia/Lord_Howe") << QByteArray("Pacific/Apia")
        << QStringLiteral("2026-03-29T11:00:00");
}

void TestTimeZones::momentsSurvive()
{
    QFETCH(QByteArray, writer);
    QFETCH(QByteArray, reader);
    QFETCH(QString, shown);
    // Every half hour of two days around both changes in Helsinki.
    QList<QDateTime> moments;
    for (const QDateTime &start : {utc(2026, 3, 28, 22), utc(2026, 10, 24, 22)}) {
        for (int i = 0; i < 96; ++i)
            moments.append(start.addSecs(1800 * i));
    }
    setZone(writer.constData());
    QList<Event> events;
    for (const QDateTime &moment : moments)
        events.append(message(QStringLiteral("text"), 5301, moment.toLocalTime()));
    const QList<int> ids = add(events);
    QCOMPARE(ids.size(), moments.size());

    setZone(reader.constData());
    for (int i = 0; i < ids.size(); ++i) {
        Event event;
        QVERIFY(TrackerIO::instance()->getEvent(ids.at(i), event));
        QCOMPARE(event.startTime().timeSpec(), Qt::LocalTime);
        QCOMPARE(event.startTime().toSecsSinceEpoch(), moments.at(i).toSecsSinceEpoch());
        QCOMPARE(event.endTime().toUTC(), moments.at(i));
    }
    Event first;
    QVERIFY(TrackerIO::instance()->getEvent(ids.first(), first));
    QCOMPARE(first.startTime().toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss")), shown);
}

void TestTimeZones::cleanup() { setZone("UTC"); }

STORE_TEST_MAIN(TestTimeZones)
#include "tst_timezones.moc"
