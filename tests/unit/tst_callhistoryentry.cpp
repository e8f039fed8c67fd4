// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// Call-history entries as sync clients send them.

#include "callsyncinterface_p.h"
#include "messagelog.h"

#include <QtTest/QTest>

using namespace KorvaSyncIf;

namespace {

//! The literal as it stands, zero bytes inside included.
template <size_t size>
QString text(const char (&literal)[size])
{
    return QString::fromUtf8(literal, int(size - 1));
}

//! What was read: error; type; number; duration; date-time, local and so without zone letter.
QString summary(const CallInfo &call, CallSyncError error)
{
    return QStringLiteral("%1;%2;%3;%4;")
               .arg(QString::number(int(error)), call.type, call.number,
                    QString::number(call.duration))
        + (call.dateTime.isNull() ? QStringLiteral("null") : call.dateTime.toString(Qt::ISODate));
}

QString parsed(const QString &entry)
{
    CallSyncInterfacePrivate parser;
    const CallInfo call = parser.parseCallSyncMsg(entry);
    return summary(call, parser.lastError);
}

struct Row
{
    const char *name;
    QString entry; //!< for tables of lines: what follows the first line
    QString expected;
};

template <size_t count>
void addRows(const Row (&rows)[count])
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("expected");
    for (const Row &row : rows)
        QTest::newRow(row.name) << row.entry << row.expected;
}

const auto begin = QStringLiteral("BEGIN:VCALLHISTENTRY\r\n");
const auto nothing = QStringLiteral("0;;;0;null");
const auto refused = QStringLiteral("1;;;0;null");

} // namespace

class TestCallHistoryEntry : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void aParserStartsWithoutErrorAndKnowsThreeTypes();
    void anEntryIsRead_data();
    void anEntryIsRead();
    void linesAndTheirEnds_data();
    void linesAndTheirEnds();
    void firstLines_data();
    void firstLines();
    void namesAndColons_data();
    void namesAndColons();
    void typesNumbersAndEnds_data();
    void typesNumbersAndEnds();
    void durations_data();
    void durations();
    void dateTimes_data();
    void dateTimes();
    void longTexts();
    void theErrorIsThatOfTheLatestEntry();
    void readingLogsNothing();
};

void TestCallHistoryEntry::aParserStartsWithoutErrorAndKnowsThreeTypes()
{
    QCOMPARE(int(CallSyncInterfacePrivate().lastError), 0);
    QCOMPARE(CallSyncInterfacePrivate::incoming, QStringLiteral("incoming"));
    QCOMPARE(CallSyncInterfacePrivate::outgoing, QStringLiteral("outgoing"));
    QCOMPARE(CallSyncInterfacePrivate::missed, QStringLiteral("missed"));
}

void TestCallHistoryEntry::anEntryIsRead_data()
{
    const QString missed = text("0;missed;12345;0;2010-11-03T14:25:30");
    addRows({
        {"as-sent",
         text("BEGIN:VCALLHISTENTRY\r\nTYPE:missed\r\nTEL:12345\r\nDURATION:0\r\n"
              "CALL-DATETIME:20101103T142530Z\r\nEND:VCALLHISTENTRY\r\n"),
         missed},
        {"line-feeds",
         text("BEGIN:VCALLHISTENTRY\nTYPE:missed\nTEL:12345\nDURATION:0\n"
              "CALL-DATETIME:20101103T142530Z\nEND:VCALLHISTENTRY\n"),
         missed},
        {"blank-lines",
         text("\r\n\r\nBEGIN:VCALLHISTENTRY\r\n\r\nTYPE:missed\r\nTEL:12345\r\n\r\n\r\n"
              "DURATION:0\r\nCALL-DATETIME:20101103T142530Z\r\n\r\nEND:VCALLHISTENTRY\r\n\r\n"),
         missed},
        {"blank-lines-of-line-feeds",
         text("\n\nBEGIN:VCALLHISTENTRY\n\nTYPE:missed\nTEL:12345\n\n\nDURATION:0\n"
              "CALL-DATETIME:20101103T142530Z\n\nEND:VCALLHISTENTRY\n\n"),
         missed},
        {"no-end-no-last-line-end",
         text("BEGIN:VCALLHISTENTRY\r\nTYPE:missed\r\nTEL:12345\r\nDURATION:0\r\n"
              "CALL-DATETIME:20101103T142530Z"),
         missed},
        {"other-order",
         text("BEGIN:VCALLHISTENTRY\r\nEND:VCALLHISTENTRY\r\nCALL-DATETIME:20101103T142530\r\n"
              "DURATION:65\r\nTEL:+15550100\r\nTYPE:outgoing\r\n"),
         text("0;outgoing;+15550100;65;2010-11-03T14:25:30")},
        {"incoming", text("BEGIN:VCALLHISTENTRY\nTYPE:incoming\nTEL:\n"),
         text("0;incoming;;0;null")},
        {"what-stood-before-the-fault-is-kept",
         text("BEGIN:VCALLHISTENTRY\r\nTYPE:missed\r\nTEL:12345\r\nDURATION:7\r\n"
              "CALL-DATETIME:20101103T142530Z\r\nX-NOTE:1\r\nTEL:999\r\nTYPE:incoming\r\n"),
         text("1;missed;12345;7;2010-11-03T14:25:30")},
    });
}

void TestCallHistoryEntry::anEntryIsRead()
{
    QFETCH(QString, entry);
    QFETCH(QString, expected);
    QCOMPARE(parsed(entry), expected);
}

void TestCallHistoryEntry::linesAndTheirEnds_data()
{
    addRows({
        {"null", QString(), nothing},
        {"empty", text(""), nothing},
        {"one-lf", text("\n"), nothing},
        {"many-lf", text("\n\n\n\n"), nothing},
        {"one-crlf", text("\r\n"), nothing},
        {"many-crlf", text("\r\n\r\n\r\n"), nothing},
        {"lf-among-crlf", text("\r\n\n\r\n"), refused},
        {"lf-before-crlf", text("\n\r\n"), refused},
        {"lone-cr", text("\r"), refused},
        {"many-cr", text("\r\r\r"), refused},
        {"lf-cr", text("\n\r"), refused},
        {"blank", text(" "), refused},
        {"zero-byte", text("\0"), refused},
        {"cr-for-line-ends", text("BEGIN:VCALLHISTENTRY\rTEL:1\r"), nothing},
        {"cr-at-the-end", text("BEGIN:VCALLHISTENTRY\r"), refused},
        {"cr-within-a-line", text("BEGIN:VCALLHISTENTRY\r\nTEL:1\r2\r\n"), text("0;;1\r2;0;null")},
        {"cr-between-lines-of-crlf", text("BEGIN:VCALLHISTENTRY\r\nTEL:1\rDURATION:5\r\n"),
         refused},
        {"first-lf-of-crlf", text("BEGIN:VCALLHISTENTRY\nTEL:1\r\nDURATION:5"), text("0;;;5;null")},
        {"later-lf-of-crlf", text("BEGIN:VCALLHISTENTRY\r\nTEL:1\nDURATION:5\r\n"), refused},
        {"lf-at-the-end-of-a-value", text("BEGIN:VCALLHISTENTRY\r\nTEL:1\n\r\n"),
         text("0;;1\n;0;null")},
        {"crlf-at-the-very-end", text("BEGIN:VCALLHISTENTRY\nTEL:1\n\r\n"), nothing},
        {"cr-cr-lf", text("BEGIN:VCALLHISTENTRY\r\r\nTEL:1\r\r\n"), refused},
        {"line-separator", text("BEGIN:VCALLHISTENTRY\xE2\x80\xA8TEL:1"), nothing},
        {"vertical-tab", text("BEGIN:VCALLHISTENTRY\n\vTEL:1"), refused},
        {"line-of-blanks", text("BEGIN:VCALLHISTENTRY\n  \nTEL:1"), refused},
    });
}

void TestCallHistoryEntry::linesAndTheirEnds()
{
    QFETCH(QString, entry);
    QFETCH(QString, expected);
    QCOMPARE(parsed(entry), expected);
}

void TestCallHistoryEntry::firstLines_data()
{
    const QString accepted = text("0;;999;0;null");
    addRows({
        {"as-sent", text("BEGIN:VCALLHISTENTRY"), accepted},
        {"no-colon", text("BEGIN"), refused},
        {"no-value", text("BEGIN:"), refused},
        {"colon-alone", text(":"), refused},
        {"other-object", text("BEGIN:VCARD"), refused},
        {"other-name", text("START:VCALLHISTENTRY"), refused},
        {"end", text("END:VCALLHISTENTRY"), refused},
        {"property", text("TEL:1"), refused},
        {"lower-case-name", text("begin:VCALLHISTENTRY"), refused},
        {"lower-case-value", text("BEGIN:vcallhistentry"), refused},
        {"blank-before", text(" BEGIN:VCALLHISTENTRY"), refused},
        {"blank-behind", text("BEGIN:VCALLHISTENTRY "), refused},
        {"blank-within", text("BEGIN: VCALLHISTENTRY"), refused},
        {"byte-order-mark", QChar(0xFEFF) + text("BEGIN:VCALLHISTENTRY"), refused},
        {"zero-byte-behind", text("BEGIN:VCALLHISTENTRY\0"), refused},
        {"longer", text("BEGIN:VCALLHISTENTRY2"), refused},
        {"third-piece", text("BEGIN:VCALLHISTENTRY:extra"), accepted},
        {"empty-third-piece", text("BEGIN:VCALLHISTENTRY:"), accepted},
        {"other-object-and-third-piece", text("BEGIN:VCARD:2.1"), accepted},
        {"two-colons", text("::"), accepted},
        {"many-colons", text(":::::::"), accepted},
        {"property-with-two-colons", text("TEL:1:2"), accepted},
        {"type-with-two-colons", text("TYPE:missed:"), accepted},
    });
}

void TestCallHistoryEntry::firstLines()
{
    QFETCH(QString, entry);
    QFETCH(QString, expected);
    QCOMPARE(parsed(entry + QStringLiteral("\r\nTEL:999\r\n")), expected);
    QCOMPARE(parsed(entry + QStringLiteral("\nTEL:999\n")), expected);
}

// A line that is accepted here changes nothing, and the number behind it is read.
void TestCallHistoryEntry::namesAndColons_data()
{
    const QString accepted = text("0;;999;0;null");
    addRows({
        {"unknown", text("X-NOTE:1"), refused},
        {"unknown-without-colon", text("note"), refused},
        {"second-begin", text("BEGIN:VCALLHISTENTRY"), refused},
        {"second-begin-of-three", text("BEGIN:VCALLHISTENTRY:extra"), refused},
        {"lower-case-tel", text("tel:1"), refused},
        {"lower-case-type", text("type:missed"), refused},
        {"lower-case-duration", text("duration:5"), refused},
        {"lower-case-date", text("call-datetime:20101103T142530"), refused},
        {"lower-case-end", text("end:VCALLHISTENTRY"), refused},
        {"capital-tel", text("Tel:1"), refused},
        {"blank-before", text(" TEL:1"), refused},
        {"blank-behind-name", text("TEL :1"), refused},
        {"tab-before", text("\tTEL:1"), refused},
        {"zero-byte-before", text("\0TEL:1"), refused},
        {"zero-byte-in-name", text("TE\0L:1"), refused},
        {"parameter", text("TEL;CELL:1"), refused},
        {"name-cut", text("TE"), refused},
        {"name-doubled", text("TELTEL:1"), refused},
        {"no-name", text(":1"), refused},
        {"colon-alone", text(":"), refused},
        {"two-colons", text("::"), refused},
        {"wide-colon",
         text("TEL\xEF\xBC\x9A"
              "1"),
         refused},
        {"colon-in-number", text("TEL:+1:2"), refused},
        {"colon-behind-number", text("TEL:1:"), refused},
        {"two-colons-behind-tel", text("TEL::"), refused},
        {"colon-in-type", text("TYPE:missed:"), refused},
        {"colon-in-duration", text("DURATION:1:05"), refused},
        {"colons-in-date", text("CALL-DATETIME:2010-11-03T14:25:30Z"), refused},
        {"colon-behind-end", text("END:VCALLHISTENTRY:"), refused},
        {"duration-without-colon", text("DURATION"), accepted},
        {"date-without-colon", text("CALL-DATETIME"), accepted},
        {"tel-without-colon", text("TEL"), accepted},
        {"type-without-colon", text("TYPE"), refused},
        {"end-without-colon", text("END"), refused},
    });
}

void TestCallHistoryEntry::namesAndColons()
{
    QFETCH(QString, entry);
    QFETCH(QString, expected);
    QCOMPARE(parsed(begin + entry + QStringLiteral("\r\nTEL:999\r\n")), expected);
}

void TestCallHistoryEntry::typesNumbersAndEnds_data()
{
    addRows({
        {"outgoing", text("TYPE:outgoing"), text("0;outgoing;;0;null")},
        {"type-twice", text("TYPE:missed\r\nTYPE:incoming"), text("0;incoming;;0;null")},
        {"type-twice-second-unknown", text("TYPE:missed\r\nTYPE:unknown\r\nTEL:1"),
         text("1;missed;;0;null")},
        {"type-capital", text("TYPE:Incoming"), refused},
        {"type-upper-case", text("TYPE:MISSED"), refused},
        {"type-empty", text("TYPE:"), refused},
        {"type-blank-before", text("TYPE: missed"), refused},
        {"type-blank-behind", text("TYPE:missed "), refused},
        {"type-longer", text("TYPE:missed2"), refused},
        {"type-cut", text("TYPE:miss"), refused},
        {"type-other", text("TYPE:voicemail"), refused},
        {"type-zero-byte", text("TYPE:missed\0"), refused},
        {"tel-empty", text("TEL:"), nothing},
        {"tel-twice", text("TEL:1\r\nTEL:2"), text("0;;2;0;null")},
        {"tel-twice-second-empty", text("TEL:1\r\nTEL:"), nothing},
        {"tel-twice-second-without-colon", text("TEL:1\r\nTEL"), nothing},
        {"tel-blanks-kept", text("TEL:  +1 (555) 0100 "), text("0;;  +1 (555) 0100 ;0;null")},
        {"tel-word", text("TEL:Bank24"), text("0;;Bank24;0;null")},
        {"tel-zero-byte", text("TEL:1\0002"), text("0;;1\0002;0;null")},
        {"tel-emoji", text("TEL:\xF0\x9F\x98\x80"), text("0;;\xF0\x9F\x98\x80;0;null")},
        {"tel-percent", text("TEL:%1%2%3"), text("0;;%1%2%3;0;null")},
        {"tel-quotes", text("TEL:'\"\\`"), text("0;;'\"\\`;0;null")},
        {"end-then-tel", text("TEL:1\r\nEND:VCALLHISTENTRY\r\nTEL:999"), text("0;;999;0;null")},
        {"end-twice", text("END:VCALLHISTENTRY\r\nEND:VCALLHISTENTRY"), nothing},
        {"end-then-fault", text("END:VCALLHISTENTRY\r\nX:1"), refused},
        {"end-then-second-entry", text("END:VCALLHISTENTRY\r\nBEGIN:VCALLHISTENTRY\r\nTEL:2"),
         refused},
        {"end-other-object", text("END:VCARD"), refused},
        {"end-empty", text("END:"), refused},
        {"end-lower-case", text("END:vcallhistentry"), refused},
        {"end-blank-behind", text("END:VCALLHISTENTRY "), refused},
        {"end-fault-stops", text("END:VCARD\r\nTEL:1"), refused},
    });
}

void TestCallHistoryEntry::typesNumbersAndEnds()
{
    QFETCH(QString, entry);
    QFETCH(QString, expected);
    QCOMPARE(parsed(begin + entry), expected);
    QCOMPARE(parsed(begin + entry + QStringLiteral("\r\n")), expected);
}

void TestCallHistoryEntry::durations_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("duration");
    QTest::newRow("zero") << text("0") << 0;
    QTest::newRow("number") << text("65") << 65;
    QTest::newRow("leading-zeros") << text("0065") << 65;
    QTest::newRow("negative") << text("-5") << -5;
    QTest::newRow("plus") << text("+5") << 5;
    QTest::newRow("greatest") << text("2147483647") << 2147483647;
    QTest::newRow("beyond") << text("2147483648") << 0;
    QTest::newRow("far-beyond") << text("99999999999999999999") << 0;
    QTest::newRow("least") << text("-2147483648") << -2147483647 - 1;
    QTest::newRow("below") << text("-2147483649") << 0;
    QTest::newRow("empty") << text("") << 0;
    QTest::newRow("letters") << text("abc") << 0;
    QTest::newRow("hexadecimal") << text("0x10") << 0;
    QTest::newRow("hexadecimal-digits") << text("ff") << 0;
    QTest::newRow("exponent") << text("1e3") << 0;
    QTest::newRow("point") << text("1.5") << 0;
    QTest::newRow("comma") << text("1,000") << 0;
    QTest::newRow("unit") << text("65s") << 0;
    QTest::newRow("two-numbers") << text("6 5") << 0;
    QTest::newRow("minus-alone") << text("-") << 0;
    QTest::newRow("other-digits") << text("\xD9\xA3") << 0;
}

void TestCallHistoryEntry::durations()
{
    QFETCH(QString, value);
    QFETCH(int, duration);
    // The line before shows that the later value counts, also when it is no number.
    CallSyncInterfacePrivate parser;
    const CallInfo call = parser.parseCallSyncMsg(begin + QStringLiteral("DURATION:77\r\nDURATION:")
                                                  + value + QStringLiteral("\r\nTEL:999"));
    QCOMPARE(int(parser.lastError), 0);
    QCOMPARE(call.duration, duration);
    QCOMPARE(call.number, QStringLiteral("999"));
}

void TestCallHistoryEntry::dateTimes_data()
{
    const QString good = text("2010-11-03T14:25:30");
    const QString none = text("null");
    addRows({
        {"no-letter", text("20101103T142530"), good},
        {"upper-case-z", text("20101103T142530Z"), good},
        {"lower-case-z", text("20101103T142530z"), good},
        {"two-letters", text("20101103T142530ZZ"), good},
        {"upper-then-lower", text("20101103T142530Zz"), good},
        {"lower-then-upper", text("20101103T142530zZ"), none},
        {"rest-behind-upper", text("20101103T142530Z+0100 and more"), good},
        {"rest-behind-lower", text("20101103T142530z 7"), good},
        {"letter-in-front", text("Z20101103T142530"), none},
        {"lower-letter-in-front", text("z20101103T142530"), none},
        {"letter-on-both-sides", text("Z20101103T142530Z"), none},
        {"upper-in-front-lower-behind", text("Z20101103T142530z"), none},
        {"letter-for-t", text("20101103Z142530"), none},
        {"letter-alone", text("Z"), none},
        {"empty", text(""), none},
        {"midnight", text("20101103T000000Z"), text("2010-11-03T00:00:00")},
        {"last-second", text("20101103T235959Z"), text("2010-11-03T23:59:59")},
        {"hour-24", text("20101103T240000Z"), none},
        {"minute-60", text("20101103T146030Z"), none},
        {"second-60", text("20101103T142560Z"), none},
        {"month-0", text("20100003T142530Z"), none},
        {"month-13", text("20101303T142530Z"), none},
        {"day-0", text("20101100T142530Z"), none},
        {"31-november", text("20101131T142530Z"), none},
        {"30-february", text("20100230T142530Z"), none},
        {"29-february", text("20120229T142530Z"), text("2012-02-29T14:25:30")},
        {"29-february-of-no-leap-year", text("20110229T142530Z"), none},
        {"29-february-1900", text("19000229T142530Z"), none},
        {"29-february-2000", text("20000229T142530Z"), text("2000-02-29T14:25:30")},
        {"year-0", text("00001103T142530Z"), none},
        {"before-1970", text("19601103T142530Z"), text("1960-11-03T14:25:30")},
        {"after-2038", text("20991103T142530Z"), text("2099-11-03T14:25:30")},
        {"lower-case-t", text("20101103t142530Z"), none},
        {"blank-for-t", text("20101103 142530Z"), none},
        {"no-t", text("20101103142530Z"), none},
        {"with-milliseconds", text("20101103T1425300"), none},
        {"with-three-milliseconds", text("20101103T142530250"), none},
        {"fraction", text("20101103T142530.5Z"), none},
        {"offset", text("20101103T142530+0100"), none},
        {"no-seconds", text("20101103T1425Z"), none},
        {"date-only", text("20101103"), none},
        {"two-digit-year", text("101103T142530Z"), none},
        {"dashes", text("2010-11-03T142530Z"), none},
        {"negative-year", text("-2010113T142530Z"), none},
        {"signs-for-digits", text("201011+3T142530Z"), none},
        {"blank-before", text(" 20101103T142530Z"), none},
        {"blank-behind", text("20101103T142530 "), none},
        {"zero-byte-behind", text("20101103T142530\0"), none},
        {"zero-byte-behind-letter", text("20101103T142530Z\0"), good},
        {"other-digits", text("2010110\xD9\xA3T142530Z"), none},
        {"words", text("yesterday"), none},
    });
}

void TestCallHistoryEntry::dateTimes()
{
    QFETCH(QString, entry);
    QFETCH(QString, expected);
    // The line before shows that the later value counts, also when it cannot be read.
    QCOMPARE(parsed(begin + QStringLiteral("CALL-DATETIME:20010101T000000\r\nCALL-DATETIME:")
                    + entry + QStringLiteral("\r\nTEL:999")),
             QStringLiteral("0;;999;0;") + expected);
}

void TestCallHistoryEntry::longTexts()
{
    constexpr int mebi = 1 << 20;
    const QString digits(mebi, QLatin1Char('5'));
    QCOMPARE(parsed(digits), refused);
    QCOMPARE(parsed(begin + digits), refused);
    QCOMPARE(parsed(begin + QStringLiteral("DURATION:") + digits), nothing);
    QCOMPARE(parsed(begin + QStringLiteral("CALL-DATETIME:") + digits), nothing);
    QCOMPARE(parsed(begin + QStringLiteral("TYPE:") + digits), refused);
    QCOMPARE(parsed(QString(mebi, QLatin1Char('\n'))), nothing);
    QCOMPARE(parsed(QString(mebi, QLatin1Char('\r'))), refused);
    QCOMPARE(parsed(QString(mebi, QLatin1Char(':'))), nothing);
    QCOMPARE(parsed(begin + QString(mebi, QLatin1Char(':'))), refused);
    QCOMPARE(parsed(begin + QStringLiteral("TEL:1\r\n").repeated(150000)),
             QStringLiteral("0;;1;0;null"));

    CallSyncInterfacePrivate parser;
    QVERIFY(parser.parseCallSyncMsg(begin + QStringLiteral("TEL:") + digits).number == digits);
    QCOMPARE(int(parser.lastError), 0);
}

void TestCallHistoryEntry::theErrorIsThatOfTheLatestEntry()
{
    CallSyncInterfacePrivate parser;
    parser.parseCallSyncMsg(QStringLiteral("BEGIN:VCARD"));
    QCOMPARE(int(parser.lastError), 1);
    const CallInfo call = parser.parseCallSyncMsg(begin + QStringLiteral("TEL:1\r\n"));
    QCOMPARE(summary(call, parser.lastError), QStringLiteral("0;;1;0;null"));
    QCOMPARE(call.id, 0);
    // Nothing of the entry before shows in the next.
    const CallInfo next = parser.parseCallSyncMsg(begin);
    QCOMPARE(summary(next, parser.lastError), nothing);
}

void TestCallHistoryEntry::readingLogsNothing()
{
    CallSyncInterfacePrivate parser;
    const MessageLog log;
    for (const QString &entry : {text(""), text("\r"), text("BEGIN:VCARD"), begin + text("TYPE:x"),
                                 begin + text("DURATION:x\r\nCALL-DATETIME:x")})
        parser.parseCallSyncMsg(entry);
    for (const QtMsgType level : {QtDebugMsg, QtInfoMsg, QtWarningMsg, QtCriticalMsg})
        QCOMPARE(log.lines(level), QStringList());
}

QTEST_GUILESS_MAIN(TestCallHistoryEntry)
#include "tst_callhistoryentry.moc"
