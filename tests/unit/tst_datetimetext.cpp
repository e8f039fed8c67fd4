// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "base/datetimetext.h"
#include "timezone.h"

#include <QtTest/QTest>

#include <random>

using namespace KorvaSyncIf;

namespace {

const auto utcPattern = QStringLiteral("yyyyMMddThhmmssZ");
const auto localPattern = QStringLiteral("yyyyMMddThhmmss");
const auto datePattern = QStringLiteral("dd.MM.yyyy hh:mm:ss");

using Generator = std::mt19937;

int below(Generator &random, int bound)
{
    return std::uniform_int_distribution<int>(0, bound - 1)(random);
}

//! A day and time of the years 1 to 9999.
QDateTime randomUtcTime(Generator &random)
{
    const QDate date = QDate(1, 1, 1).addDays(below(random, 3652000));
    return QDateTime(date, QTime::fromMSecsSinceStartOfDay(below(random, 86400000)), Qt::UTC);
}

//! One to three characters of a valid text replaced, taken out or put in.
QString broken(const QString &text, Generator &random)
{
    // Without signs, which Qt takes before numbers in places that differ by version.
    static const auto alphabet = QStringLiteral("0123456789TZtz.: x\u0663");
    QString result = text;
    for (int i = below(random, 3); i >= 0; --i) {
        const int position = below(random, int(result.size()));
        const QChar c = alphabet.at(below(random, int(alphabet.size())));
        switch (below(random, 4)) {
        case 0:
            result.remove(position, 1);
            break;
        case 1:
            result.insert(position, c);
            break;
        default:
            result[position] = c;
        }
    }
    return result;
}

//! What Qt reads with the pattern; null instead of invalid.
QDateTime readByQt(const QString &text, const QString &pattern)
{
    const QDateTime time = QDateTime::fromString(text, pattern);
    return time.isValid() ? time : QDateTime();
}

//! The same for a stamp in UTC: in UTC as local time no hour is skipped.
QDateTime utcReadByQt(const QString &text)
{
    const TimeZone utc("UTC");
    const QDateTime time = QDateTime::fromString(text, utcPattern);
    return time.isValid() ? QDateTime(time.date(), time.time(), Qt::UTC) : QDateTime();
}

QString stampWithMilliseconds(const QDateTime &time)
{
    QString text;
    appendStampWithMilliseconds(time, text);
    return text;
}

// Written digit by digit, so that no other formatter is trusted.
QString stampByHand(const QDateTime &value)
{
    const QDate date = value.date();
    const QTime time = value.time();
    return QString::asprintf("%04d%02d%02dT%02d%02d%02d", date.year(), date.month(), date.day(),
                             time.hour(), time.minute(), time.second());
}

QString dateByHand(const QDateTime &value)
{
    const QDate date = value.date();
    const QTime time = value.time();
    return QString::asprintf("%02d.%02d.%04d %02d:%02d:%02d", date.day(), date.month(), date.year(),
                             time.hour(), time.minute(), time.second());
}

//! All of \a count, or a twentieth where each step costs a hundred times as much: valgrind.
int bearable(int count)
{
    return qEnvironmentVariableIsSet("KORVASYNC_TEST_SHORT") ? count / 20 : count;
}

void addZones()
{
    QTest::addColumn<QByteArray>("zone");
    for (const char *const zone : {"Europe/Helsinki", "Asia/Kathmandu", "America/St_Johns"})
        QTest::newRow(zone) << QByteArray(zone);
}

} // namespace

class TestDateTimeText : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void everyHalfHourIsReadAndWritten_data() { addZones(); }
    void everyHalfHourIsReadAndWritten();
    void randomTimesAreReadAndWrittenAsByQt_data() { addZones(); }
    void randomTimesAreReadAndWrittenAsByQt();
    void brokenTextsAreReadAsByQt_data() { addZones(); }
    void brokenTextsAreReadAsByQt();
    void textsThatDoNotMatchAreNull_data();
    void textsThatDoNotMatchAreNull();
    void aUtcStampInsideALocalGapIsRead();
    void aLocalTextInsideAGapIsNull();
    void aSkippedLocalTimeIsStampedWithItsReading();
    void invalidTimesAreWrittenAsNothing();
    void millisecondsHaveNoLeadingZeros_data();
    void millisecondsHaveNoLeadingZeros();
    void theFirstAndTheLastYearAreReadAndWritten_data();
    void theFirstAndTheLastYearAreReadAndWritten();
    void yearsBeyondFourDigitsAreWrittenAsByQt();
    void relabellingKeepsTheClockReading();
    void epochSecondsAreUnsigned_data();
    void epochSecondsAreUnsigned();
};

void TestDateTimeText::everyHalfHourIsReadAndWritten()
{
    QFETCH(QByteArray, zone);
    const TimeZone own(zone);
    const QDateTime end(QDate(2020, 1, 1), QTime(0, 0), Qt::UTC);
    for (QDateTime time = end.addYears(-bearable(20)); time < end; time = time.addSecs(1800)) {
        const QString text = stampByHand(time);
        const QDateTime local = time.toLocalTime();
        const QDateTime read = readUtcStamp(text + QLatin1Char('Z'));
        if (read != time || read.timeSpec() != Qt::UTC || utcStamp(time) != text + QLatin1Char('Z')
            || utcStamp(local) != text + QLatin1Char('Z'))
            QFAIL(qPrintable(text));

        const QString localText = stampByHand(local);
        for (const QDateTime &readLocal :
             {readLocalStamp(localText), readLocalDate(dateByHand(local))}) {
            // Of the two hours with one reading at the end of DST, either may be meant.
            if (readLocal.timeSpec() != Qt::LocalTime || readLocal.date() != local.date()
                || readLocal.time() != local.time())
                QFAIL(qPrintable(localText));
        }
        if (stampWithMilliseconds(local) != localText + QLatin1Char('0'))
            QFAIL(qPrintable(localText));
    }
}

void TestDateTimeText::randomTimesAreReadAndWrittenAsByQt()
{
    QFETCH(QByteArray, zone);
    const TimeZone own(zone);
    Generator random(20101103);
    for (int i = 0; i < bearable(5000); ++i) {
        const QDateTime utc = randomUtcTime(random);
        const QString text = utc.toString(utcPattern);
        QCOMPARE(utcStamp(utc), text);
        QCOMPARE(textDate(utc), utc.toString(Qt::TextDate));
        const QDateTime whole = utc.addMSecs(-utc.time().msec());
        QCOMPARE(readUtcStamp(text), whole);

        // Local readings of 1901 on: before that Qt 5 and the zone's history differ.
        const QDateTime local = whole.date().year() >= 1902 && whole.date().year() <= 2037
            ? whole.toLocalTime()
            : QDateTime(QDate(1995, 7, 1), whole.time());
        QCOMPARE(stampWithMilliseconds(local.addMSecs(250)),
                 local.toString(localPattern) + QStringLiteral("250"));
        const QString localText = local.toString(localPattern);
        QCOMPARE(readLocalStamp(localText), QDateTime::fromString(localText, localPattern));
        QCOMPARE(textDate(local), local.toString(Qt::TextDate));
        const QString dateText = local.toString(datePattern);
        QCOMPARE(readLocalDate(dateText), QDateTime::fromString(dateText, datePattern));
    }
}

void TestDateTimeText::brokenTextsAreReadAsByQt()
{
    QFETCH(QByteArray, zone);
    const TimeZone own(zone);
    Generator random(19991231);
    for (int i = 0; i < bearable(5000); ++i) {
        const QDateTime time =
            QDateTime(QDate(1990, 1, 1).addDays(below(random, 12000)),
                      QTime::fromMSecsSinceStartOfDay(below(random, 86400) * 1000), Qt::UTC);
        const QString utcText = broken(time.toString(utcPattern), random);
        const QString localText = broken(time.toString(localPattern), random);
        const QString dateText = broken(time.toString(datePattern), random);
        QVERIFY2(readUtcStamp(utcText) == utcReadByQt(utcText), qPrintable(utcText));
        QVERIFY2(readLocalStamp(localText) == readByQt(localText, localPattern),
                 qPrintable(localText));
        QVERIFY2(readLocalDate(dateText) == readByQt(dateText, datePattern), qPrintable(dateText));
    }
}

void TestDateTimeText::textsThatDoNotMatchAreNull_data()
{
    QTest::addColumn<QString>("text");
    for (const char *const text : {"",
                                   "x",
                                   "20101103T142530",
                                   "20101103t142530Z",
                                   "20101103T142530z",
                                   "20101103T142530ZZ",
                                   " 20101103T142530Z",
                                   "20101103T142530 ",
                                   "20101303T142530Z",
                                   "20101131T142530Z",
                                   "20100229T142530Z",
                                   "20101103T242530Z",
                                   "20101103T146030Z",
                                   "20101103T142560Z",
                                   "00001103T142530Z",
                                   "-0101103T142530Z",
                                   "+2010113T142530Z",
                                   "2010 103T142530Z",
                                   "2010-11-03T14:25",
                                   "03.11.2010 14:25",
                                   "3.11.2010 14:25:30",
                                   "03.11.2010T14:25:30",
                                   "03.13.2010 14:25:30",
                                   "31.11.2010 14:25:30",
                                   "03.11.2010 24:25:30"})
        QTest::newRow(text) << QString::fromLatin1(text);
    QTest::newRow("other-digits") << QStringLiteral("2010110\u0663T142530Z");
    QTest::newRow("null") << QString();
}

void TestDateTimeText::textsThatDoNotMatchAreNull()
{
    QFETCH(QString, text);
    QVERIFY(readUtcStamp(text).isNull());
    QVERIFY(readLocalDate(text).isNull());
    if (text.size() != 15)
        QVERIFY(readLocalStamp(text).isNull());
}

void TestDateTimeText::aUtcStampInsideALocalGapIsRead()
{
    const TimeZone zone("Europe/Helsinki");
    QCOMPARE(readUtcStamp(QStringLiteral("20020331T030000Z")),
             QDateTime(QDate(2002, 3, 31), QTime(3, 0), Qt::UTC));
}

void TestDateTimeText::aLocalTextInsideAGapIsNull()
{
    const TimeZone zone("Europe/Helsinki");
    QVERIFY(readLocalStamp(QStringLiteral("20020331T030000")).isNull());
    QVERIFY(readLocalStamp(QStringLiteral("20020331T035959")).isNull());
    QVERIFY(readLocalDate(QStringLiteral("31.03.2002 03:30:00")).isNull());
    QVERIFY(!readLocalStamp(QStringLiteral("20020331T025959")).isNull());
    QVERIFY(!readLocalStamp(QStringLiteral("20020331T040000")).isNull());
}

void TestDateTimeText::aSkippedLocalTimeIsStampedWithItsReading()
{
    const TimeZone zone("America/St_Johns");
    const QDateTime skipped(QDate(2002, 4, 7), QTime(0, 30));
    QVERIFY(!skipped.isValid());
    QCOMPARE(utcStamp(skipped), QStringLiteral("20020407T003000Z"));
    QCOMPARE(utcStamp(QDateTime(QDate(2002, 4, 7), QTime(1, 30))),
             QStringLiteral("20020407T040000Z"));
}

void TestDateTimeText::invalidTimesAreWrittenAsNothing()
{
    QString text = QStringLiteral("kept");
    appendStampWithMilliseconds(QDateTime(), text);
    QCOMPARE(text, QStringLiteral("kept"));
    QCOMPARE(utcStamp(QDateTime()), QString());
    QCOMPARE(utcStamp(QDateTime(QDate(), QTime(1, 2, 3))), QString());
    QCOMPARE(textDate(QDateTime()), QString());
}

void TestDateTimeText::millisecondsHaveNoLeadingZeros_data()
{
    QTest::addColumn<int>("msec");
    QTest::addColumn<QString>("text");
    QTest::newRow("0") << 0 << QStringLiteral("20101103T1425300");
    QTest::newRow("7") << 7 << QStringLiteral("20101103T1425307");
    QTest::newRow("25") << 25 << QStringLiteral("20101103T14253025");
    QTest::newRow("250") << 250 << QStringLiteral("20101103T142530250");
}

void TestDateTimeText::millisecondsHaveNoLeadingZeros()
{
    QFETCH(int, msec);
    QFETCH(QString, text);
    const QDate date(2010, 11, 3);
    const QTime time(14, 25, 30, msec);
    QCOMPARE(stampWithMilliseconds(QDateTime(date, time)), text);
    QCOMPARE(stampWithMilliseconds(QDateTime(date, time, Qt::OffsetFromUTC, 19800)), text);
    QCOMPARE(stampWithMilliseconds(QDateTime(date, time, Qt::UTC)), text);
}

void TestDateTimeText::theFirstAndTheLastYearAreReadAndWritten_data()
{
    QTest::addColumn<QDate>("date");
    QTest::addColumn<QString>("stamp");
    QTest::newRow("first") << QDate(1, 1, 1) << QStringLiteral("00010101T010203Z");
    QTest::newRow("last") << QDate(9999, 12, 31) << QStringLiteral("99991231T010203Z");
}

void TestDateTimeText::theFirstAndTheLastYearAreReadAndWritten()
{
    QFETCH(QDate, date);
    QFETCH(QString, stamp);
    const QDateTime time(date, QTime(1, 2, 3), Qt::UTC);
    QCOMPARE(readUtcStamp(stamp), time);
    QCOMPARE(utcStamp(time), stamp);
    QCOMPARE(stampWithMilliseconds(time), stamp.left(15) + QLatin1Char('0'));
}

void TestDateTimeText::yearsBeyondFourDigitsAreWrittenAsByQt()
{
    const QDateTime first(QDate(10000, 1, 1), QTime(0, 0), Qt::UTC);
    QCOMPARE(utcStamp(first), first.toString(utcPattern));
    const QDateTime last(QDate(-1, 12, 31), QTime(0, 0), Qt::UTC);
    QCOMPARE(utcStamp(last), last.toString(utcPattern));
    for (const int year : {10000, 12345, -1, -44}) {
        const QDateTime time(QDate(year, 3, 15), QTime(12, 0, 1), Qt::UTC);
        QCOMPARE(utcStamp(time), time.toString(utcPattern));
        QCOMPARE(textDate(time), time.toString(Qt::TextDate));
        QCOMPARE(stampWithMilliseconds(time), time.toString(localPattern) + QLatin1Char('0'));
    }
}

void TestDateTimeText::relabellingKeepsTheClockReading()
{
    const QDateTime time(QDate(2010, 11, 3), QTime(14, 25, 30), Qt::OffsetFromUTC, 20700);
    const QDateTime utc = relabelledAsUtc(time);
    QCOMPARE(utc.timeSpec(), Qt::UTC);
    QCOMPARE(utc.date(), QDate(2010, 11, 3));
    QCOMPARE(utc.time(), QTime(14, 25, 30));
    QVERIFY(relabelledAsUtc(QDateTime()).isNull());
}

void TestDateTimeText::epochSecondsAreUnsigned_data()
{
    QTest::addColumn<QDateTime>("time");
    QTest::addColumn<uint>("seconds");
    const auto utc = [](int year, int month, int day, QTime time) {
        return QDateTime(QDate(year, month, day), time, Qt::UTC);
    };
    QTest::newRow("null") << QDateTime() << 4294967295u;
    QTest::newRow("epoch") << utc(1970, 1, 1, QTime(0, 0)) << 0u;
    QTest::newRow("before") << utc(1969, 12, 31, QTime(23, 59, 59)) << 4294967295u;
    QTest::newRow("long-before") << utc(1903, 7, 1, QTime(0, 0)) << 4294967295u;
    QTest::newRow("fraction") << utc(1970, 1, 1, QTime(0, 0, 1, 999)) << 1u;
    QTest::newRow("beyond-31-bits") << utc(2038, 1, 19, QTime(3, 14, 8)) << 2147483648u;
    QTest::newRow("beyond-32-bits") << utc(2106, 2, 7, QTime(6, 28, 17)) << 4294967295u;
    QTest::newRow("with-offset") << QDateTime(QDate(1970, 1, 1), QTime(2, 0), Qt::OffsetFromUTC,
                                              7200)
                                 << 0u;
}

void TestDateTimeText::epochSecondsAreUnsigned()
{
    QFETCH(QDateTime, time);
    QFETCH(uint, seconds);
    QCOMPARE(epochSeconds(time), seconds);
}

QTEST_GUILESS_MAIN(TestDateTimeText)
#include "tst_datetimetext.moc"
