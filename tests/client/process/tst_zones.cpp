// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "clientprocess.h"

#include <QtTest/QTest>

// Times without a zone, read in the zone that the C library goes by.
class TestZones : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesTheZoneOfTz_data();
    void takesTheZoneOfTz();
    void takesTheZoneOfTheSystem_data();
    void takesTheZoneOfTheSystem();
    void tellsOfAZoneThatIsNotKnown();
    void refusesWhatIsNoZone_data();
    void refusesWhatIsNoZone();
    void helpsInWhateverIsNoZone();
};

static const QByteArray old =
    vMessage("INBOX", "", "+15550100", "Hello")
        .replace("BEGIN:VBODY\r\n", "BEGIN:VBODY\r\nDate: 03.07.2010 14:25:30\r\n");

static QByteArray listedAs(const QByteArray &time)
{
    return "{\"id\":1,\"folder\":\"inbox\",\"number\":\"+15550100\",\"time\":\"" + time
        + "\",\"read\":true,\"body\":\"Hello\"}\n";
}

void TestZones::takesTheZoneOfTz_data()
{
    QTest::addColumn<QByteArray>("time");
    const auto row = [](const char *zone, const char *time) {
        QTest::newRow(zone) << QByteArray(time);
    };
    row("Europe/Berlin", "2010-07-03T12:25:30Z");
    row(":Europe/Berlin", "2010-07-03T12:25:30Z");
    row("/usr/share/zoneinfo/Europe/Berlin", "2010-07-03T12:25:30Z");
    row(":/usr/share/zoneinfo/Europe/Berlin", "2010-07-03T12:25:30Z");
    row("Asia/Kathmandu", "2010-07-03T08:40:30Z");
    row("<+0530>-5:30", "2010-07-03T08:55:30Z");
    row("UTC-2", "2010-07-03T12:25:30Z");
    row("", "2010-07-03T14:25:30Z");
    row("UTC", "2010-07-03T14:25:30Z");
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0) // before, Qt reads no rules
    row("CET-1CEST,M3.5.0,M10.5.0/3", "2010-07-03T12:25:30Z");
    row("<-24>24:59:59", "2010-07-04T15:25:29Z");
#endif
}

void TestZones::takesTheZoneOfTz()
{
    QFETCH(QByteArray, time);
    ClientProcess client;
    client.environment.insert(text("TZ"), text(QTest::currentDataTag()));
    const auto added = client.run({text("add"), text("-")}, old);
    QCOMPARE(added.exitCode, 0);
    QCOMPARE(added.errors, QByteArray());
    QCOMPARE(client.listed(), listedAs(time));
}

void TestZones::takesTheZoneOfTheSystem_data()
{
    QTest::addColumn<QByteArray>("setting");
    QTest::newRow("unset") << QByteArray("unset TZ");
    QTest::newRow("named") << QByteArray("export TZ=:/etc/localtime");
    // A system may have a copy of the zone's file in the place of a link.
    QTest::newRow("copied") << QByteArray(
        "unset TZ; rm /etc/localtime; cp /usr/share/zoneinfo/Europe/Berlin /etc/localtime");
}

void TestZones::takesTheZoneOfTheSystem()
{
    QFETCH(QByteArray, setting);
    ClientProcess client;
    client.write(text("old.vmg"), old);
    client.workingDirectory = client.filePath(QString());
    const auto outcome =
        client.runOnDisk("200m",
                         "cp -a /etc $DISK/etc; mount --bind $DISK/etc /etc; "
                         "ln -sf /usr/share/zoneinfo/Europe/Berlin /etc/localtime; "
                         "echo America/New_York > /etc/timezone; "
                             + setting + "; $KORVASYNC add -q old.vmg; $KORVASYNC list -o ndjson");
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(outcome.output, "added  1  old.vmg:1\n" + listedAs("2010-07-03T12:25:30Z"));
}

void TestZones::tellsOfAZoneThatIsNotKnown()
{
    ClientProcess client;
    // A zone's file: 3:17 ahead of UTC, from the beginning of 2015 on 4:17.
    const QByteArray zone = QByteArray("TZif").append(16, '\0')
        + QByteArray::fromHex("000000000000000000000000000000010000000200000004"
                              "54a48e00"
                              "01"
                              "00002e2c0000"
                              "00003c3c0000")
        + QByteArray("ODD\0", 4);
    client.environment.insert(text("TZ"), client.write(text("odd-zone"), zone));
    const auto added = client.run({text("add"), text("-")}, old);
    QCOMPARE(added.exitCode, 0);
    QCOMPARE(added.errors,
             QByteArray("korvasync: TZ names no zone that is known here; times without a zone are "
                        "read with today's distance, UTC+04:17: name a zone such as "
                        "Europe/Helsinki\n"));
    QCOMPARE(client.listed(), listedAs("2010-07-03T10:08:30Z"));
}

// The C library takes all of these for UTC, and Qt the one or other as well.
void TestZones::refusesWhatIsNoZone_data()
{
    QTest::addColumn<QByteArray>("hint");
    const auto row = [](const char *zone, const char *hint) {
        QTest::newRow(zone) << QByteArray(hint);
    };
    row("Europe/Helsinky", " (did you mean Europe/Helsinki?)");
    row("europe/berlin", " (did you mean Europe/Berlin?)");
    row("Kathmandu", " (did you mean Asia/Kathmandu?)");
    for (const char *zone :
         {"No/Such", "Europe", "zone.tab", "AAA99", "AAA-24:60", "AAA", "/etc/passwd", "/dev/zero",
          "/no/such", "../../../etc/passwd", "CET-1CEST,M3.5.0,M13.5.0/3",
          "CET-1CEST,M3.5.0,M10.5.7", "CET-1CEST,M3.5.0", "CET-1CEST,J366,1", "CET-1CEST,1,2/168"})
        row(zone, "; name one such as Europe/Helsinki");
}

void TestZones::refusesWhatIsNoZone()
{
    QFETCH(QByteArray, hint);
    const QByteArray zone = QTest::currentDataTag();
    ClientProcess client;
    const auto given =
        client.run({text("add"), text("--assume-tz"), text(zone.constData()), text("-")}, old);
    QCOMPARE(given.exitCode, 2);
    QCOMPARE(given.errors, "korvasync: --assume-tz names no time zone: " + zone + hint + '\n');
    client.environment.insert(text("TZ"), text(zone.constData()));
    const auto inherited = client.run({text("add"), text("-")}, old);
    QCOMPARE(inherited.exitCode, 2);
    QCOMPARE(inherited.output, QByteArray());
    QCOMPARE(inherited.errors, "korvasync: TZ names no time zone: " + zone + hint + '\n');
    client.environment.insert(text("TZ"), text(":") + text(zone.constData()));
    QCOMPARE(client.run({text("add"), text("-")}, old).errors, inherited.errors);
}

void TestZones::helpsInWhateverIsNoZone()
{
    ClientProcess client;
    client.environment.insert(text("TZ"), text("No/Such"));
    QCOMPARE(client.run({text("list"), text("--help")}).exitCode, 0);
    QCOMPARE(client.run({text("--version")}).exitCode, 0);
}

QTEST_GUILESS_MAIN(TestZones)
#include "tst_zones.moc"
