// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// How the fields of a parsed vMessage become a record, with every part present and absent.

#include "messagelog.h"
#include "scriptedparser.h"
#include "smssyncinterface_p.h"
#include "timezone.h"

#include <QtTest/QTest>

using namespace KorvaSyncIf;

namespace {

const char number[] = "+15550100";
const char otherNumber[] = "+15550101";

SmsInfo extracted(const ScriptedParser &script, const SmsInfo &before = SmsInfo())
{
    SMSSyncInterfacePrivate decoder;
    VMessageParser parser;
    SmsInfo info = before;
    decoder.extractMsgContents(&parser, script.message(), info);
    return info;
}

VMessageHeader headerWith(const char *status, const char *box, const char *dateTime)
{
    VMessageHeader header{};
    header.status = status;
    header.box = box;
    header.dateTime = dateTime;
    return header;
}

VMessageOriginator originatorWith(const char *telephone)
{
    VMessageOriginator originator{};
    originator.telephone = telephone;
    return originator;
}

VMessageRecipient recipientWith(const char *telephone)
{
    VMessageRecipient recipient{};
    recipient.telephone = telephone;
    return recipient;
}

VMessageBody bodyWith(const char *text, int length, const char *date = nullptr)
{
    VMessageBody body{};
    body.date = date;
    body.text = text;
    body.length = length;
    return body;
}

const auto repairLine = QStringLiteral("Set fromVard value from tovcard value, ");

} // namespace

class TestVMessageFields : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void noMessageLeavesTheRecord();
    void everyCombinationOfAbsentPartsIsTaken();
    void fieldsOutsideTheMessageAreNotTouched();
    void anAbsentBoxLeavesTheFolder();
    void anAbsentStatusGivesANullText();
    void textsAreReadAsLatin1AndTheBodyAsUtf8();
    void theBodyEndsAtItsLength();
    void aByteOrderMarkAtItsBeginningIsDroppedFromTheBody_data();
    void aByteOrderMarkAtItsBeginningIsDroppedFromTheBody();
    void numbersAreTracedInDoubleQuotes();
    void theOnlyNumberMovesToItsSide_data();
    void theOnlyNumberMovesToItsSide();
    void anEmptyNumberIsNone();
    void theSecondPatternIsTriedForADatedBody();
    void theSecondPatternNeedsADatedBody();
    void theSecondPatternDoesNotReplaceATime();
    void theParserIsGivenTheTerminatingZero();
    void eachItemHasAParserOfItsOwn();
};

void TestVMessageFields::noMessageLeavesTheRecord()
{
    ScriptedParser script;
    SMSSyncInterfacePrivate decoder;
    VMessageParser parser;
    SmsInfo info;
    info.id = 5;
    decoder.extractMsgContents(&parser, nullptr, info);
    QCOMPARE(info.id, 5);
}

void TestVMessageFields::everyCombinationOfAbsentPartsIsTaken()
{
    enum Part {
        Header = 1 << 0,
        Status = 1 << 1,
        Box = 1 << 2,
        DateTime = 1 << 3,
        Originator = 1 << 4,
        OriginatorNumber = 1 << 5,
        Recipient = 1 << 6,
        RecipientNumber = 1 << 7,
        Body = 1 << 8,
        BodyDate = 1 << 9,
        Encoding = 1 << 10,
        Charset = 1 << 11,
        Language = 1 << 12,
        Text = 1 << 13,
        AllParts = 1 << 14
    };
    for (int parts = 0; parts < AllParts; ++parts) {
        const auto given = [parts](int part, const char *value) {
            return parts & part ? value : nullptr;
        };
        const auto expected = [parts](int record, int part, const char *value) {
            return (parts & record) && (parts & part) ? QString::fromLatin1(value) : QString();
        };
        const VMessageHeader header = headerWith(given(Status, "READ"), given(Box, "ELSEWHERE"),
                                                 given(DateTime, "03.11.2010 14:25:30"));
        const VMessageOriginator originator = originatorWith(given(OriginatorNumber, number));
        const VMessageRecipient recipient = recipientWith(given(RecipientNumber, otherNumber));
        VMessageBody body = bodyWith(given(Text, "Hello"), 5, given(BodyDate, "x"));
        body.encoding = given(Encoding, "8BIT");
        body.charset = given(Charset, "UTF-8");
        body.language = given(Language, "en");

        ScriptedParser script;
        script.header = parts & Header ? &header : nullptr;
        script.originator = parts & Originator ? &originator : nullptr;
        script.recipient = parts & Recipient ? &recipient : nullptr;
        script.body = parts & Body ? &body : nullptr;
        const SmsInfo info = extracted(script);

        QCOMPARE(info.readStatus, expected(Header, Status, "READ"));
        QCOMPARE(info.folderName, expected(Header, Box, "ELSEWHERE"));
        QCOMPARE(info.parentId, 0);
        QCOMPARE(info.fromNumber, expected(Originator, OriginatorNumber, number));
        QCOMPARE(info.toNumber, expected(Recipient, RecipientNumber, otherNumber));
        QCOMPARE(info.encoding, expected(Body, Encoding, "8BIT"));
        QCOMPARE(info.charset, expected(Body, Charset, "UTF-8"));
        QCOMPARE(info.language, expected(Body, Language, "en"));
        QCOMPARE(info.body, expected(Body, Text, "Hello"));
        const int dated = Header | DateTime | Body | BodyDate;
        QCOMPARE(info.time,
                 (parts & dated) == dated ? QDateTime(QDate(2010, 11, 3), QTime(14, 25, 30))
                                          : QDateTime());
    }
}

void TestVMessageFields::fieldsOutsideTheMessageAreNotTouched()
{
    ScriptedParser script;
    SmsInfo before;
    before.id = 5;
    before.groupId = 6;
    before.modifiedTime = QDateTime(QDate(2010, 11, 3), QTime(1, 2), Qt::UTC);
    before.messageToken = QStringLiteral("token-1");
    before.refId = 7;
    const SmsInfo info = extracted(script, before);
    QCOMPARE(info.id, -1);
    QCOMPARE(info.groupId, 6);
    QCOMPARE(info.modifiedTime, before.modifiedTime);
    QCOMPARE(info.messageToken, QStringLiteral("token-1"));
    QCOMPARE(info.refId, 7);
}

void TestVMessageFields::anAbsentBoxLeavesTheFolder()
{
    ScriptedParser script;
    const VMessageHeader header = headerWith("READ", nullptr, nullptr);
    script.header = &header;
    SmsInfo before;
    before.parentId = 4103;
    before.folderName = QStringLiteral("kept");
    QCOMPARE(extracted(script, before).parentId, 4103);
    QCOMPARE(extracted(script, before).folderName, QStringLiteral("kept"));
}

void TestVMessageFields::anAbsentStatusGivesANullText()
{
    ScriptedParser script;
    const VMessageHeader header = headerWith(nullptr, nullptr, nullptr);
    script.header = &header;
    SmsInfo before;
    before.readStatus = QStringLiteral("READ");
    QVERIFY(extracted(script, before).readStatus.isNull());
}

void TestVMessageFields::textsAreReadAsLatin1AndTheBodyAsUtf8()
{
    ScriptedParser script;
    const VMessageOriginator originator = originatorWith("\xE9");
    const VMessageBody body = bodyWith("\xC3\xA9", 2);
    script.originator = &originator;
    script.body = &body;
    const SmsInfo info = extracted(script);
    QCOMPARE(info.fromNumber, QStringLiteral("\u00E9"));
    QCOMPARE(info.body, QStringLiteral("\u00E9"));
}

void TestVMessageFields::theBodyEndsAtItsLength()
{
    ScriptedParser script;
    VMessageBody body = bodyWith("Hello", 2);
    script.body = &body;
    QCOMPARE(extracted(script).body, QStringLiteral("He"));
    body.length = 0;
    QCOMPARE(extracted(script).body, QString());
    body = bodyWith("a\0b", 3);
    QCOMPARE(extracted(script).body, QString::fromLatin1("a\0b", 3));
}

void TestVMessageFields::aByteOrderMarkAtItsBeginningIsDroppedFromTheBody_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("body");
    const QByteArray mark("\xEF\xBB\xBF");
    QTest::newRow("one") << mark + "x" << QStringLiteral("x");
    QTest::newRow("two") << mark + mark + "x" << QStringLiteral("\uFEFFx");
    QTest::newRow("alone") << mark << QString();
    QTest::newRow("later") << "x" + mark << QStringLiteral("x\uFEFF");
}

void TestVMessageFields::aByteOrderMarkAtItsBeginningIsDroppedFromTheBody()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, body);
    ScriptedParser script;
    const VMessageBody given = bodyWith(bytes.constData(), int(bytes.size()));
    script.body = &given;
    QCOMPARE(extracted(script).body, body);
}

void TestVMessageFields::numbersAreTracedInDoubleQuotes()
{
    MessageLog log;
    ScriptedParser script;
    const VMessageOriginator originator = originatorWith(number);
    const VMessageRecipient recipient = recipientWith(otherNumber);
    script.originator = &originator;
    script.recipient = &recipient;
    extracted(script);
    const QStringList lines = log.lines(QtDebugMsg);
    QVERIFY(lines.contains(QStringLiteral("from vcard \"+15550100\"")));
    QVERIFY(lines.contains(QStringLiteral("to vcard \"+15550101\"")));
}

void TestVMessageFields::theOnlyNumberMovesToItsSide_data()
{
    QTest::addColumn<int>("parentId");
    QTest::addColumn<QString>("kind"); // which side a lone number belongs to
    QTest::newRow("inbox") << 4098 << QStringLiteral("from");
    QTest::newRow("own") << 4104 << QStringLiteral("from");
    QTest::newRow("above") << 4200 << QStringLiteral("from");
    QTest::newRow("outbox") << 4099 << QStringLiteral("to");
    QTest::newRow("sent") << 4101 << QStringLiteral("to");
    QTest::newRow("none") << 0 << QStringLiteral("any");
    QTest::newRow("drafts") << 4100 << QStringLiteral("any");
    QTest::newRow("4102") << 4102 << QStringLiteral("any");
    QTest::newRow("4103") << 4103 << QStringLiteral("any");
    QTest::newRow("negative") << -1 << QStringLiteral("any");
}

void TestVMessageFields::theOnlyNumberMovesToItsSide()
{
    QFETCH(int, parentId);
    QFETCH(QString, kind);
    const QString first = QString::fromLatin1(number);
    const QString second = QString::fromLatin1(otherNumber);
    ScriptedParser script;
    SmsInfo before;
    before.parentId = parentId;
    const VMessageOriginator originator = originatorWith(number);
    const VMessageRecipient recipient = recipientWith(otherNumber);

    { // originator alone
        MessageLog log;
        script.originator = &originator;
        const SmsInfo info = extracted(script, before);
        const bool moves = kind == QLatin1String("to");
        QCOMPARE(info.fromNumber, moves ? QString() : first);
        QCOMPARE(info.toNumber, moves ? first : QString());
        QCOMPARE(int(log.linesFrom(QtDebugMsg, repairLine).size()), moves ? 1 : 0);
    }
    { // recipient alone
        MessageLog log;
        script.originator = nullptr;
        script.recipient = &recipient;
        const SmsInfo info = extracted(script, before);
        const bool moves = kind == QLatin1String("from");
        QCOMPARE(info.fromNumber, moves ? second : QString());
        QCOMPARE(info.toNumber, moves ? QString() : second);
        QCOMPARE(int(log.linesFrom(QtDebugMsg, repairLine).size()), moves ? 1 : 0);
    }
    { // both, and neither: nothing to repair
        MessageLog log;
        script.originator = &originator;
        const SmsInfo both = extracted(script, before);
        QCOMPARE(both.fromNumber, first);
        QCOMPARE(both.toNumber, second);
        script.originator = nullptr;
        script.recipient = nullptr;
        const SmsInfo neither = extracted(script, before);
        QVERIFY(neither.fromNumber.isEmpty());
        QVERIFY(neither.toNumber.isEmpty());
        QVERIFY(log.linesFrom(QtDebugMsg, repairLine).isEmpty());
    }
}

void TestVMessageFields::anEmptyNumberIsNone()
{
    ScriptedParser script;
    const VMessageOriginator originator = originatorWith("");
    const VMessageRecipient recipient = recipientWith("");
    script.originator = &originator;
    script.recipient = &recipient;
    SyncSmsInfo item;
    item.parentId = LocInbox;
    QMap<int, SMSSyncError> errors;
    SMSSyncInterfacePrivate().parseAllVMessages({item}, errors, false);
    QCOMPARE(errors, (QMap<int, SMSSyncError>{{0, SmsNoVCard}}));

    SmsInfo before;
    before.parentId = LocInbox;
    const VMessageRecipient numberedRecipient = recipientWith(otherNumber);
    script.recipient = &numberedRecipient;
    QCOMPARE(extracted(script, before).fromNumber, QString::fromLatin1(otherNumber));

    before.parentId = LocSent;
    const VMessageOriginator numberedOriginator = originatorWith(number);
    script.originator = &numberedOriginator;
    script.recipient = &recipient;
    QCOMPARE(extracted(script, before).toNumber, QString::fromLatin1(number));
    script.recipient = &numberedRecipient;

    // Nothing moves into the place of a number, nor an empty one anywhere.
    MessageLog log;
    script.originator = &originator;
    QCOMPARE(extracted(script, before).toNumber, QString::fromLatin1(otherNumber));
    script.recipient = &recipient;
    extracted(script, before);
    QVERIFY(log.linesFrom(QtDebugMsg, repairLine).isEmpty());
}

void TestVMessageFields::theSecondPatternIsTriedForADatedBody()
{
    const TimeZone zone("Asia/Kathmandu");
    ScriptedParser script;
    const VMessageHeader header = headerWith("READ", "INBOX", "03.11.2010 14:25:30");
    const VMessageBody body = bodyWith("Hello", 5, "03.11.2010 00:00:00");
    script.header = &header;
    script.body = &body;
    const SmsInfo info = extracted(script);
    // Of the header's text, as local time.
    QCOMPARE(info.time, QDateTime(QDate(2010, 11, 3), QTime(14, 25, 30)));
    QCOMPARE(info.time.timeSpec(), Qt::LocalTime);
    QCOMPARE(info.time.toUTC(), QDateTime(QDate(2010, 11, 3), QTime(8, 40, 30), Qt::UTC));
}

void TestVMessageFields::theSecondPatternNeedsADatedBody()
{
    ScriptedParser script;
    const VMessageHeader header = headerWith("READ", "INBOX", "03.11.2010 14:25:30");
    const VMessageBody body = bodyWith("Hello", 5);
    script.header = &header;
    script.body = &body;
    QVERIFY(extracted(script).time.isNull());
}

void TestVMessageFields::theSecondPatternDoesNotReplaceATime()
{
    ScriptedParser script;
    const VMessageHeader header = headerWith("READ", "INBOX", "20101103T142530Z");
    const VMessageBody body = bodyWith("Hello", 5, "04.12.2011 01:02:03");
    script.header = &header;
    script.body = &body;
    QCOMPARE(extracted(script).time, QDateTime(QDate(2010, 11, 3), QTime(14, 25, 30), Qt::UTC));
}

void TestVMessageFields::theParserIsGivenTheTerminatingZero()
{
    ScriptedParser script;
    script.parses = false;
    SyncSmsInfo item;
    item.vMessage = QStringLiteral("a\u00E9");
    QMap<int, SMSSyncError> errors;
    SMSSyncInterfacePrivate().parseAllVMessages({item, SyncSmsInfo()}, errors, false);
    QCOMPARE(script.inputs, (QList<QByteArray>{QByteArray("a\xC3\xA9\0", 4), QByteArray("\0", 1)}));
    QCOMPARE(errors, (QMap<int, SMSSyncError>{{0, SmsParseError}, {1, SmsParseError}}));
}

void TestVMessageFields::eachItemHasAParserOfItsOwn()
{
    ScriptedParser script;
    QMap<int, SMSSyncError> errors;
    SMSSyncInterfacePrivate decoder;
    decoder.invalidIndexes = {1};
    decoder.parseAllVMessages({SyncSmsInfo(), SyncSmsInfo(), SyncSmsInfo()}, errors, true);
    QCOMPARE(script.parsersMade, 2);
    QCOMPARE(script.parsersAlive, 0);

    // Only a modification consults the invalid indexes.
    decoder.parseAllVMessages({SyncSmsInfo(), SyncSmsInfo(), SyncSmsInfo()}, errors, false);
    QCOMPARE(script.parsersMade, 5);
}

QTEST_GUILESS_MAIN(TestVMessageFields)
#include "tst_vmessagefields.moc"
