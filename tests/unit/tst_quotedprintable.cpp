// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "messagelog.h"
#include "quotedprintable_p.h"

#include <korvasync/vmessageencoder.h>

#include <QtTest/QTest>

using namespace KorvaSyncIf;

namespace {

const auto controlWarning =
    QStringLiteral("Warning :: control characters found while encoding QP ");
const auto sequenceWarning =
    QStringLiteral("Warning :: Received 2nd/3rd/4th byte of a multibyte seq without getting "
                   "the first byte");
const auto illegalWarning = QStringLiteral("Warning:: found illegal bytes between F5 and FF");

QByteArray escape(int byte) { return '=' + QByteArray(1, char(byte)).toHex().toUpper(); }

QByteArray letters(int count) { return QByteArray(count, 'x'); }

} // namespace

class TestQuotedPrintable : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void everyByteFollowsItsRow_data();
    void everyByteFollowsItsRow();
    void linesAreBrokenSoftly_data();
    void linesAreBrokenSoftly();
    void continuationBytesAreCounted_data();
    void continuationBytesAreCounted();
    void appendCharCountsAndBreaks_data();
    void appendCharCountsAndBreaks();
    void anEmptyTextResetsTheLine();
    void anEqualsSignIsLostWithOneWarning();
    void aCarriageReturnIsLostAndALineFeedBecomesBoth();
    void textsAreEncodedFromUtf8_data();
    void textsAreEncodedFromUtf8();
    void theEncoderCountsItsOwnLine();
    void anEmptyTextResetsTheEncodersLine();
    void encodingSetsTheLineLengthAnew();
    void theResultHasRoomFromTheStart();
};

void TestQuotedPrintable::everyByteFollowsItsRow_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("warning");
    const auto row = [](const char *name, int first, int last, const char *kind,
                        const QString &warning) {
        QTest::newRow(name) << first << last << QString::fromLatin1(kind) << warning;
    };
    row("controls-below-tab", 0x00, 0x08, "dropped", controlWarning);
    row("tab", 0x09, 0x09, "escaped", QString());
    row("line-feed", 0x0A, 0x0A, "=0D=0A", QString());
    row("controls-above-line-feed", 0x0B, 0x1F, "dropped", controlWarning);
    row("space", 0x20, 0x20, "escaped", QString());
    row("printable-below-equals", 0x21, 0x3C, "plain", QString());
    row("equals", 0x3D, 0x3D, "dropped", controlWarning);
    row("printable-above-equals", 0x3E, 0x7E, "plain", QString());
    row("delete", 0x7F, 0x7F, "dropped", controlWarning);
    row("stray-continuation", 0x80, 0xBF, "escaped", sequenceWarning);
    row("never-leading", 0xC0, 0xC1, "dropped", QString());
    row("lead-of-two", 0xC2, 0xDF, "escaped", QString());
    row("lead-of-three", 0xE0, 0xEF, "escaped", QString());
    row("lead-of-four", 0xF0, 0xF4, "escaped", QString());
    row("illegal", 0xF5, 0xFE, "dropped", illegalWarning);
    row("ff", 0xFF, 0xFF, "dropped", QString());
}

void TestQuotedPrintable::everyByteFollowsItsRow()
{
    QFETCH(int, first);
    QFETCH(int, last);
    QFETCH(QString, kind);
    QFETCH(QString, warning);
    for (int byte = first; byte <= last; ++byte) {
        MessageLog log;
        int lineLength = 55;
        const QString text = quotedPrintable('a' + QByteArray(1, char(byte)) + 'b', lineLength);
        QByteArray output = kind.toLatin1();
        if (kind == QLatin1String("plain"))
            output = QByteArray(1, char(byte));
        else if (kind == QLatin1String("escaped"))
            output = escape(byte);
        else if (kind == QLatin1String("dropped"))
            output.clear();
        QCOMPARE(text.toLatin1(), 'a' + output + 'b');
        QCOMPARE(lineLength, int(text.size()));
        QCOMPARE(log.lines(QtWarningMsg), warning.isEmpty() ? QStringList() : QStringList(warning));
    }
}

void TestQuotedPrintable::linesAreBrokenSoftly_data()
{
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<int>("lineLength");
    const auto row = [](const char *name, const QByteArray &input, const QByteArray &output,
                        int lineLength) { QTest::newRow(name) << input << output << lineLength; };
    row("line-of-73", letters(73), letters(73), 73);
    row("break-before-74th", letters(74), letters(73) + "=\r\nx", 0);
    row("80-letters", letters(80), letters(73) + "=\r\n" + letters(7), 6);
    // The first character of the second line is not counted, so that line holds 74.
    row("second-line-of-74", letters(147), letters(73) + "=\r\n" + letters(74), 73);
    row("third-line", letters(148), letters(73) + "=\r\n" + letters(74) + "=\r\nx", 0);

    row("space-at-67", letters(67) + " y", letters(67) + "=20y", 71);
    row("space-at-68", letters(68) + ' ', letters(68) + "=20=\r\n", 0);
    row("after-space-at-68", letters(68) + " y", letters(68) + "=20=\r\ny", 1);
    row("space-at-69", letters(69) + " y", letters(69) + "=\r\n=20y", 4);
    row("space-at-73", letters(73) + ' ', letters(73) + "=\r\n=20", 3);
    row("tab-at-67", letters(67) + '\t', letters(67) + "=09", 70);
    row("tab-at-68", letters(68) + '\t', letters(68) + "=09=\r\n", 0);
    row("tab-at-69", letters(69) + '\t', letters(69) + "=\r\n=09", 3);

    row("escape-at-68", letters(68) + "\xC3", letters(68) + "=C3", 71);
    row("escape-at-69", letters(69) + "\xC3", letters(69) + "=\r\n=C3", 3);
    row("escape-at-72", letters(72) + "\xC3", letters(72) + "=\r\n=C3", 3);
    // Past the limit the general rule comes first, which does not count the equals sign.
    row("escape-at-73", letters(73) + "\xC3", letters(73) + "=\r\n=C3", 2);
    row("continuation-at-69", letters(66) + "\xC3\xA9", letters(66) + "=C3=\r\n=A9", 3);
    row("lead-of-three-at-69", letters(69) + "\xE2", letters(69) + "=\r\n=E2", 3);
    row("lead-of-four-at-69", letters(69) + "\xF0", letters(69) + "=\r\n=F0", 3);
    row("line-feed-at-66", letters(66) + '\n', letters(66) + "=0D=\r\n=0A", 3);
    row("dropped-byte-at-73", letters(73) + "=", letters(73), 73);
}

void TestQuotedPrintable::linesAreBrokenSoftly()
{
    QFETCH(QByteArray, input);
    QFETCH(QByteArray, output);
    QFETCH(int, lineLength);
    int counted = 0;
    QCOMPARE(quotedPrintable(input, counted).toLatin1(), output);
    QCOMPARE(counted, lineLength);
}

void TestQuotedPrintable::continuationBytesAreCounted_data()
{
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<int>("sequenceWarnings");
    const auto row = [](const char *name, const QByteArray &input, const QByteArray &output,
                        int warnings) { QTest::newRow(name) << input << output << warnings; };
    row("two-bytes", "\xC3\xA9", "=C3=A9", 0);
    row("one-too-many-after-two", "\xC3\xA9\xA9", "=C3=A9=A9", 1);
    row("one-too-many-after-three", "\xE2\x82\xAC\xAC", "=E2=82=AC=AC", 1);
    row("one-too-many-after-four", "\xF0\x9F\x98\x80\x80", "=F0=9F=98=80=80", 1);
    row("each-stray-byte-warns", "\x80\x80", "=80=80", 2);
    row("a-lead-byte-sets-the-count-anew", "\x80\x80\xC3\xA9", "=80=80=C3=A9", 2);
    row("a-lead-byte-is-not-checked", "\xE2\xC3\xA9\xA9", "=E2=C3=A9=A9", 1);
    row("plain-bytes-leave-the-count",
        QByteArray("\xE2"
                   "A\x82 \xAC"),
        "=E2A=82=20=AC", 0);
    row("dropped-bytes-leave-the-count", "\xE2\xC0\x82\xFF\xAC", "=E2=82=AC", 0);
    row("illegal-bytes-leave-the-count", "\xE2\xF5\x82\xAC", "=E2=82=AC", 0);
}

void TestQuotedPrintable::continuationBytesAreCounted()
{
    QFETCH(QByteArray, input);
    QFETCH(QByteArray, output);
    QFETCH(int, sequenceWarnings);
    MessageLog log;
    int lineLength = 0;
    QCOMPARE(quotedPrintable(input, lineLength).toLatin1(), output);
    QCOMPARE(int(log.linesFrom(QtWarningMsg, sequenceWarning).size()), sequenceWarnings);
}

void TestQuotedPrintable::appendCharCountsAndBreaks_data()
{
    QTest::addColumn<QString>("character");
    QTest::addColumn<int>("before");
    QTest::addColumn<QString>("output");
    QTest::addColumn<int>("after");
    const auto row = [](const char *name, const char *character, int before, const char *output,
                        int after) {
        QTest::newRow(name) << QString::fromLatin1(character) << before
                            << QString::fromLatin1(output) << after;
    };
    row("letter-at-0", "x", 0, "x", 1);
    row("letter-at-72", "x", 72, "x", 73);
    row("letter-at-73", "x", 73, "=\r\nx", 0);
    row("equals-at-68", "=", 68, "=", 69);
    row("equals-at-69", "=", 69, "=\r\n=", 1);
    row("equals-at-70", "=", 70, "=\r\n=", 1);
    row("equals-at-72", "=", 72, "=\r\n=", 1);
    row("equals-at-73", "=", 73, "=\r\n=", 0);
}

void TestQuotedPrintable::appendCharCountsAndBreaks()
{
    QFETCH(QString, character);
    QFETCH(int, before);
    QFETCH(QString, output);
    QFETCH(int, after);
    QString text = QStringLiteral("kept");
    int lineLength = before;
    appendQuotedPrintable(uchar(character.at(0).toLatin1()), text, lineLength);
    QCOMPARE(text, QStringLiteral("kept") + output);
    QCOMPARE(lineLength, after);
}

void TestQuotedPrintable::anEmptyTextResetsTheLine()
{
    int lineLength = 42;
    QCOMPARE(quotedPrintable(QByteArray(), lineLength), QString());
    QCOMPARE(lineLength, 0);
}

void TestQuotedPrintable::anEqualsSignIsLostWithOneWarning()
{
    MessageLog log;
    VMessageEncoder encoder;
    QCOMPARE(encoder.encodeQP(QStringLiteral("a=b")), QStringLiteral("ab"));
    QCOMPARE(log.lines(QtWarningMsg), QStringList(controlWarning));
}

void TestQuotedPrintable::aCarriageReturnIsLostAndALineFeedBecomesBoth()
{
    MessageLog log;
    VMessageEncoder encoder;
    QCOMPARE(encoder.encodeQP(QStringLiteral("a\r\nb")), QStringLiteral("a=0D=0Ab"));
    QCOMPARE(log.lines(QtWarningMsg), QStringList(controlWarning));
}

void TestQuotedPrintable::textsAreEncodedFromUtf8_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("encoded");
    QTest::newRow("e-acute") << QStringLiteral("\u00E9") << QStringLiteral("=C3=A9");
    QTest::newRow("euro") << QStringLiteral("\u20AC") << QStringLiteral("=E2=82=AC");
    QTest::newRow("emoji") << QStringLiteral("\U0001F600") << QStringLiteral("=F0=9F=98=80");
    QTest::newRow("blanks-inside") << QStringLiteral("a b\tc") << QStringLiteral("a=20b=09c");
}

void TestQuotedPrintable::textsAreEncodedFromUtf8()
{
    QFETCH(QString, text);
    QFETCH(QString, encoded);
    MessageLog log;
    VMessageEncoder encoder;
    QCOMPARE(encoder.encodeQP(text), encoded);
    QCOMPARE(log.lines(QtWarningMsg), QStringList());
}

void TestQuotedPrintable::theEncoderCountsItsOwnLine()
{
    VMessageEncoder encoder;
    QString text = encoder.encodeQP(QString(70, QLatin1Char('x')));
    encoder.appendChar('=', text);
    QCOMPARE(text, QString(70, QLatin1Char('x')) + QStringLiteral("=\r\n="));
    // The count is 1 now, so 72 more characters fill the line.
    for (int i = 0; i < 73; ++i)
        encoder.appendChar('y', text);
    QCOMPARE(text.mid(74), QString(72, QLatin1Char('y')) + QStringLiteral("=\r\ny"));

    // encode() leaves the count at the length of the body property, 30.
    encoder.encode(SmsInfo());
    text.clear();
    for (int i = 0; i < 44; ++i)
        encoder.appendChar('z', text);
    QCOMPARE(text, QString(43, QLatin1Char('z')) + QStringLiteral("=\r\nz"));
}

void TestQuotedPrintable::anEmptyTextResetsTheEncodersLine()
{
    VMessageEncoder encoder;
    encoder.encodeQP(QString(70, QLatin1Char('x')));
    QCOMPARE(encoder.encodeQP(QString()), QString());
    QString text;
    encoder.appendChar('=', text);
    QCOMPARE(text, QStringLiteral("="));
}

void TestQuotedPrintable::encodingSetsTheLineLengthAnew()
{
    VMessageEncoder encoder;
    encoder.encode(SmsInfo());
    encoder.encode(SmsInfo());
    QString text;
    for (int i = 0; i < 44; ++i)
        encoder.appendChar('z', text);
    QCOMPARE(text, QString(43, QLatin1Char('z')) + QStringLiteral("=\r\nz"));
}

void TestQuotedPrintable::theResultHasRoomFromTheStart()
{
    int lineLength = 0;
    QVERIFY(quotedPrintable(QByteArray(1000, '\x01'), lineLength).capacity() >= 1300);
}

QTEST_GUILESS_MAIN(TestQuotedPrintable)
#include "tst_quotedprintable.moc"
