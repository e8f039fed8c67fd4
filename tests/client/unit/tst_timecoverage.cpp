// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "store/timecoverage.h"

#include <QtTest/QTest>

#include <random>

class TestTimeCoverage : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void beginsWithADayInBothDirections();
    void readsNothingTwice();
    void growsToWhatIsLeft();
    void hasNoBoundsAtTheEnds();
    void needsFewPartsForMany();
    void coversWhateverComes();
};

static constexpr qint64 day = 86400;

void TestTimeCoverage::beginsWithADayInBothDirections()
{
    TimeCoverage coverage;
    const auto span = coverage.grow(1000000);
    QVERIFY(span.has_value());
    QCOMPARE(span->begin, 1000000 - day);
    QCOMPARE(span->end, 1000000 + day);
    QCOMPARE(span->from(), QDateTime(QDate(1970, 1, 11), QTime(13, 46, 40), Qt::UTC));
    QCOMPARE(span->to(), QDateTime(QDate(1970, 1, 13), QTime(13, 46, 40), Qt::UTC));
}

void TestTimeCoverage::readsNothingTwice()
{
    TimeCoverage coverage;
    QVERIFY(coverage.grow(0).has_value());
    QVERIFY(!coverage.grow(0).has_value());
    QVERIFY(!coverage.grow(day - 1).has_value());
    QVERIFY(!coverage.grow(-day).has_value());
    const auto later = coverage.grow(day);
    QVERIFY(later.has_value());
    QCOMPARE(later->begin, day);
    QCOMPARE(later->end, 3 * day);
    const auto earlier = coverage.grow(-day - 1);
    QVERIFY(earlier.has_value());
    QCOMPARE(earlier->begin, -day - 1 - 4 * day);
    QCOMPARE(earlier->end, -day);
    QVERIFY(!coverage.grow(2 * day).has_value());
    QVERIFY(!coverage.grow(-2 * day).has_value());
}

void TestTimeCoverage::growsToWhatIsLeft()
{
    TimeCoverage coverage;
    coverage.grow(0);
    coverage.grow(100 * day);
    const QList<TimeCoverage::Span> gaps = coverage.growToAll();
    QCOMPARE(int(gaps.size()), 3);
    QVERIFY(gaps.at(0).from().isNull());
    QCOMPARE(gaps.at(0).end, -day);
    QCOMPARE(gaps.at(1).begin, day);
    QCOMPARE(gaps.at(1).end, 98 * day);
    QCOMPARE(gaps.at(2).begin, 102 * day);
    QVERIFY(gaps.at(2).to().isNull());
    QVERIFY(!coverage.grow(50 * day).has_value());
    QCOMPARE(int(coverage.growToAll().size()), 0);
}

void TestTimeCoverage::hasNoBoundsAtTheEnds()
{
    TimeCoverage coverage;
    const QList<TimeCoverage::Span> all = coverage.growToAll();
    QCOMPARE(int(all.size()), 1);
    QVERIFY(all.first().from().isNull());
    QVERIFY(all.first().to().isNull());
}

void TestTimeCoverage::needsFewPartsForMany()
{
    TimeCoverage coverage;
    int parts = 0;
    for (qint64 time = 0; time < 20 * 365 * day; time += 3600)
        parts += coverage.grow(time).has_value();
    QVERIFY(parts <= 13);
}

void TestTimeCoverage::coversWhateverComes()
{
    std::mt19937 random(1);
    std::uniform_int_distribution<qint64> seconds(-400 * day, 400 * day);
    TimeCoverage coverage;
    QMap<qint64, qint64> read;
    for (int i = 0; i < 1000; ++i) {
        const qint64 second = seconds(random);
        if (const auto span = coverage.grow(second)) {
            QVERIFY(span->begin <= second && second < span->end);
            for (auto other = read.cbegin(); other != read.cend(); ++other)
                QVERIFY(span->end <= other.key() || other.value() <= span->begin);
            read.insert(span->begin, span->end);
        }
        QVERIFY(!coverage.grow(second).has_value());
    }
}

QTEST_GUILESS_MAIN(TestTimeCoverage)
#include "tst_timecoverage.moc"
