// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <vmessage/textdecoding.h>

#include <QtCore/QByteArray>
#include <QtTest/QtTest>

#include <string>

using namespace TextDecoding;

class TestTextDecoding : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void decodesQuotedPrintable_data();
    void decodesQuotedPrintable();
    void decodesBase64_data();
    void decodesBase64();
    void knowsBase64_data();
    void knowsBase64();
    void unifiesLineEnds();
    void knowsUtf8_data();
    void knowsUtf8();
    void takesOtherBytesAsLatin1();
    void convertsCharsets();
    void convertsLongTexts();
    void refusesCharsets_data();
    void refusesCharsets();
};

void TestTextDecoding::decodesQuotedPrintable_data()
{
    QTest::addColumn<QByteArray>("encoded");
    QTest::addColumn<QByteArray>("decoded");
    QTest::newRow("empty") << QByteArray("") << QByteArray("");
    QTest::newRow("plain") << QByteArray("a b") << QByteArray("a b");
    QTest::newRow("large and small digits") << QByteArray("=4A=4a") << QByteArray("JJ");
    QTest::newRow("soft breaks") << QByteArray("a=\r\nb=\nc= \t\r\nd") << QByteArray("abcd");
    QTest::newRow("soft break at the end") << QByteArray("a=") << QByteArray("a");
    QTest::newRow("hard break") << QByteArray("a\r\nb\nc") << QByteArray("a\r\nb\nc");
    QTest::newRow("no escapes") << QByteArray("=G1 =1G =- ==3D =4")
                                << QByteArray("=G1 =1G =- == =4");
    QTest::newRow("blanks stay") << QByteArray("a \r\nb\t") << QByteArray("a \r\nb\t");
}

void TestTextDecoding::decodesQuotedPrintable()
{
    QFETCH(QByteArray, encoded);
    QFETCH(QByteArray, decoded);
    const size_t length = decodeQuotedPrintable(encoded.data(), size_t(encoded.size()));
    QCOMPARE(encoded.left(int(length)), decoded);
}

void TestTextDecoding::decodesBase64_data()
{
    QTest::addColumn<QByteArray>("encoded");
    QTest::addColumn<QByteArray>("decoded");
    QTest::newRow("empty") << QByteArray("") << QByteArray("");
    QTest::newRow("three bytes") << QByteArray("YWJj") << QByteArray("abc");
    QTest::newRow("padding") << QByteArray("YWI=") << QByteArray("ab");
    QTest::newRow("two signs of padding") << QByteArray("YQ==") << QByteArray("a");
    QTest::newRow("folded") << QByteArray("YW\r\n Jj\nYWJj") << QByteArray("abcabc");
    QTest::newRow("whole alphabet")
        << QByteArray("+/+/09az") << QByteArray("\xFB\xFF\xBF\xD3\xD6\xB3");
}

void TestTextDecoding::decodesBase64()
{
    QFETCH(QByteArray, encoded);
    QFETCH(QByteArray, decoded);
    const size_t length = decodeBase64(encoded.data(), size_t(encoded.size()));
    QCOMPARE(encoded.left(int(length)), decoded);
}

void TestTextDecoding::knowsBase64_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("known");
    QTest::newRow("empty") << QByteArray("") << true;
    QTest::newRow("padding") << QByteArray("YWI=") << true;
    QTest::newRow("folded") << QByteArray("YW\r\n Jj\n\tYWJj\r\n") << true;
    QTest::newRow("half a group") << QByteArray("YWJjYW") << false;
    QTest::newRow("words") << QByteArray("See you at 5!") << false;
    QTest::newRow("padding within") << QByteArray("YQ==YQ==") << false;
    QTest::newRow("too much padding") << QByteArray("Y===") << false;
}

void TestTextDecoding::knowsBase64()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, known);
    QCOMPARE(isBase64({text.constData(), size_t(text.size())}), known);
}

void TestTextDecoding::unifiesLineEnds()
{
    QByteArray text = "a\r\nb\rc\n\r\r\nd\r";
    const size_t length = unifyLineEnds(text.data(), size_t(text.size()));
    QCOMPARE(text.left(int(length)), QByteArray("a\nb\nc\n\n\nd\n"));
}

void TestTextDecoding::knowsUtf8_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("known");
    QTest::newRow("empty") << QByteArray("") << true;
    QTest::newRow("one byte") << QByteArray("a\x7F") << true;
    QTest::newRow("two bytes") << QByteArray("\xC2\x80\xDF\xBF") << true;
    QTest::newRow("three bytes") << QByteArray("\xE0\xA0\x80\xED\x9F\xBF\xEF\xBF\xBF") << true;
    QTest::newRow("four bytes") << QByteArray("\xF0\x90\x80\x80\xF4\x8F\xBF\xBF") << true;
    QTest::newRow("continuation alone") << QByteArray("\x80") << false;
    QTest::newRow("overlong two") << QByteArray("\xC1\xBF") << false;
    QTest::newRow("overlong three") << QByteArray("\xE0\x9F\xBF") << false;
    QTest::newRow("overlong four") << QByteArray("\xF0\x8F\xBF\xBF") << false;
    QTest::newRow("surrogate") << QByteArray("\xED\xA0\x80") << false;
    QTest::newRow("beyond Unicode") << QByteArray("\xF4\x90\x80\x80") << false;
    QTest::newRow("no lead byte") << QByteArray("\xF5\x80\x80\x80") << false;
    QTest::newRow("cut") << QByteArray("a\xE2\x82") << false;
    QTest::newRow("broken off") << QByteArray("\xE2\x82z") << false;
}

void TestTextDecoding::knowsUtf8()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, known);
    QCOMPARE(isUtf8({bytes.constData(), size_t(bytes.size())}), known);
}

void TestTextDecoding::takesOtherBytesAsLatin1()
{
    QCOMPARE(repairedUtf8("Gr\xFC\xDF"
                          "e"),
             std::string("Gr\xC3\xBC\xC3\x9F"
                         "e"));
    QCOMPARE(repairedUtf8("\xE2\x82\xAC \xE2\x82"), std::string("\xE2\x82\xAC \xC3\xA2\xC2\x82"));
}

void TestTextDecoding::convertsCharsets()
{
    std::string result = "before";
    QVERIFY(convertToUtf8("\x82\xB1", "shift_jis", &result));
    QCOMPARE(result, std::string("\xE3\x81\x93"));
    QVERIFY(convertToUtf8("\x1B$B$3\x1B(B", "ISO-2022-JP", &result));
    QCOMPARE(result, std::string("\xE3\x81\x93"));
    QVERIFY(convertToUtf8("", "KOI8-R", &result));
    QCOMPARE(result, std::string());
}

void TestTextDecoding::convertsLongTexts()
{
    std::string result;
    QVERIFY(convertToUtf8(std::string(10001, '\x80'), "windows-1252", &result));
    QCOMPARE(result.size(), size_t(30003));
    QCOMPARE(result.substr(30000), std::string("\xE2\x82\xAC"));
}

void TestTextDecoding::refusesCharsets_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("charset");
    QTest::newRow("unknown") << QByteArray("a") << QByteArray("X-ABC-8");
    QTest::newRow("empty") << QByteArray("a") << QByteArray("");
    QTest::newRow("with an option") << QByteArray("a") << QByteArray("UTF-8//IGNORE");
    QTest::newRow("a path") << QByteArray("a") << QByteArray("../UTF-8");
    QTest::newRow("long") << QByteArray("a") << QByteArray(100000, 'A');
    QTest::newRow("bytes of another") << QByteArray("\xFC") << QByteArray("US-ASCII");
    QTest::newRow("cut character") << QByteArray("\x82") << QByteArray("SHIFT_JIS");
    QTest::newRow("beyond Unicode") << QByteArray("\xF6\x8B\x97\x93") << QByteArray("UTF8");
}

void TestTextDecoding::refusesCharsets()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, charset);
    std::string result;
    QVERIFY(
        !convertToUtf8({bytes.constData(), size_t(bytes.size())}, charset.toStdString(), &result));
}

QTEST_APPLESS_MAIN(TestTextDecoding)

#include "tst_textdecoding.moc"
