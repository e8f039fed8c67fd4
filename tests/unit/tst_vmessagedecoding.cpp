// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "messagelog.h"
#include "smssyncinterface_p.h"
#include "timezone.h"
#include "vmessagetext.h"

#include <korvasync/vmessageencoder.h>

#include <QtTest/QTest>

using namespace KorvaSyncIf;

namespace {

SyncSmsInfo item(const VMessageText &message, int parentId = 0)
{
    SyncSmsInfo result;
    result.vMessage = message.text();
    result.parentId = parentId;
    return result;
}

//! What the decoding of a list gives.
struct Decoded
{
    explicit Decoded(const QList<SyncSmsInfo> &items, bool modify = false)
    {
        SMSSyncInterfacePrivate decoder;
        if (modify)
            decoder.checkForValidItemIds(items, errors);
        records = decoder.parseAllVMessages(items, errors, modify);
    }

    QList<SmsInfo> records;
    QMap<int, SMSSyncError> errors;
};

const QDateTime messageTime(QDate(2010, 11, 3), QTime(14, 25, 30), Qt::UTC);

} // namespace

class TestVMessageDecoding : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void aReceivedMessageIsDecoded();
    void aSentMessageIsDecoded();
    void theBoxIsReadByItsBeginning_data();
    void theBoxIsReadByItsBeginning();
    void draftsAreRefused_data();
    void draftsAreRefused();
    void aDraftMayEnterThroughTheItemsFolder();
    void aMessageWithoutBoxTakesAnyItemFolder_data();
    void aMessageWithoutBoxTakesAnyItemFolder();
    void aLowerCaseBoxNamesNoFolder();
    void aMessageThatCannotBeParsedIsAnError();
    void aMessageWithoutNumberIsAnError();
    void theFirstFaultCounts();
    void faultsDoNotStopTheBatch();
    void aSentMessageWithOnlyAnOriginatorHasItAsRecipient();
    void anItemTimeReplacesAMissingOne();
    void theClockReplacesAMissingTimeAndIsLabelledUtc();
    void anUnreadableItemTimeStaysNull();
    void anEmptyItemTimeCountsAsAbsent();
    void anUnreadableMessageTimeGivesWayToTheItemTime();
    void theItemsTokenAndPositionAreTaken();
    void modifiedRecordsCarryTheClientsIds();
    void addedRecordsCarryNoIds();
    void invalidItemsAreNotParsedInModifyMode();
    void whatTheEncoderWritesIsReadBack_data();
    void whatTheEncoderWritesIsReadBack();
    void theTraceCountsTheBatch();
};

void TestVMessageDecoding::aReceivedMessageIsDecoded()
{
    const Decoded decoded({item({})});
    QVERIFY(decoded.errors.isEmpty());
    QCOMPARE(int(decoded.records.size()), 1);
    const SmsInfo &info = decoded.records.at(0);
    QCOMPARE(info.id, -1);
    QCOMPARE(info.parentId, 4098);
    QCOMPARE(info.folderName, QStringLiteral("INBOX"));
    QCOMPARE(info.fromNumber, QStringLiteral("+15550100"));
    QVERIFY(info.toNumber.isEmpty());
    QCOMPARE(info.body, QStringLiteral("Hello"));
    QCOMPARE(info.time, messageTime);
    QCOMPARE(info.time.timeSpec(), Qt::UTC);
    QCOMPARE(info.readStatus, QStringLiteral("READ"));
    QCOMPARE(info.charset, QStringLiteral("UTF-8"));
    QCOMPARE(info.refId, 0);
}

void TestVMessageDecoding::aSentMessageIsDecoded()
{
    VMessageText message;
    message.box = QStringLiteral("SENT");
    message.originator = QString();
    message.recipient = QStringLiteral("+15550101");
    message.body = QStringLiteral("Gr\u00FC\u00DFe \U0001F600");
    const Decoded decoded({item(message)});
    QCOMPARE(int(decoded.records.size()), 1);
    QCOMPARE(decoded.records.at(0).parentId, 4101);
    QCOMPARE(decoded.records.at(0).toNumber, QStringLiteral("+15550101"));
    QVERIFY(decoded.records.at(0).fromNumber.isEmpty());
    QCOMPARE(decoded.records.at(0).body, QStringLiteral("Gr\u00FC\u00DFe \U0001F600"));
}

void TestVMessageDecoding::theBoxIsReadByItsBeginning_data()
{
    QTest::addColumn<QString>("box");
    QTest::addColumn<int>("parentId");
    const auto row = [](const char *box, int parentId) {
        QTest::newRow(box) << QString::fromLatin1(box) << parentId;
    };
    row("INBOX", 4098);
    row("INBOXES", 4098);
    row("OUTBOX", 4099);
    row("OUTBOX2", 4099);
    row("SENT", 4101);
    row("SENT ITEMS", 4101);
    row("MYFOLDER", 4104);
    row("MYFOLDERS", 4104);
    // Nothing of these; 7 is the item's own folder.
    row("inbox", 7);
    row("INBO", 7);
    row("XINBOX", 7);
    row("Drafts", 7);
}

void TestVMessageDecoding::theBoxIsReadByItsBeginning()
{
    QFETCH(QString, box);
    QFETCH(int, parentId);
    VMessageText message;
    message.box = box;
    message.recipient = QStringLiteral("+15550101");
    const Decoded decoded({item(message, 7)});
    QCOMPARE(int(decoded.records.size()), 1);
    QCOMPARE(decoded.records.at(0).parentId, parentId);
    QCOMPARE(decoded.records.at(0).folderName, box);
}

void TestVMessageDecoding::draftsAreRefused_data()
{
    QTest::addColumn<QString>("box");
    QTest::addColumn<bool>("modify");
    for (const char *const box : {"DRAFT", "DRAFTS"}) {
        QTest::addRow("%s-add", box) << QString::fromLatin1(box) << false;
        QTest::addRow("%s-modify", box) << QString::fromLatin1(box) << true;
    }
}

void TestVMessageDecoding::draftsAreRefused()
{
    QFETCH(QString, box);
    QFETCH(bool, modify);
    MessageLog log;
    VMessageText message;
    message.box = box;
    SyncSmsInfo draft = item(message, LocInbox);
    draft.id = 5;
    const Decoded decoded({draft}, modify);
    QVERIFY(decoded.records.isEmpty());
    QCOMPARE(decoded.errors, (QMap<int, SMSSyncError>{{0, SmsDraftNotAllowed}}));
    QVERIFY(log.lines(QtDebugMsg)
                .contains(QStringLiteral("Error - Addition of Drafts messages not allowed")));
}

void TestVMessageDecoding::aDraftMayEnterThroughTheItemsFolder()
{
    VMessageText message;
    message.box = QString();
    const Decoded decoded({item(message, LocDrafts)});
    QVERIFY(decoded.errors.isEmpty());
    QCOMPARE(decoded.records.at(0).parentId, 4100);
}

void TestVMessageDecoding::aMessageWithoutBoxTakesAnyItemFolder_data()
{
    QTest::addColumn<int>("parentId");
    QTest::newRow("default") << -1;
    QTest::newRow("inbox") << 4098;
    QTest::newRow("4102") << 4102;
    QTest::newRow("own") << 4200;
}

void TestVMessageDecoding::aMessageWithoutBoxTakesAnyItemFolder()
{
    QFETCH(int, parentId);
    VMessageText message;
    message.box = QString();
    const Decoded decoded({item(message, parentId)});
    QVERIFY(decoded.errors.isEmpty());
    QCOMPARE(decoded.records.at(0).parentId, parentId);
    QVERIFY(decoded.records.at(0).folderName.isEmpty());
}

void TestVMessageDecoding::aLowerCaseBoxNamesNoFolder()
{
    MessageLog log;
    VMessageText message;
    message.box = QStringLiteral("inboxes");
    const Decoded decoded({item(message, 0)});
    QVERIFY(decoded.records.isEmpty());
    QCOMPARE(decoded.errors, (QMap<int, SMSSyncError>{{0, SmsNoParentId}}));
    QVERIFY(log.lines(QtDebugMsg)
                .contains(QStringLiteral(
                    "Error parentId not present in vmessage nor in supplied syncInfo struct")));
}

void TestVMessageDecoding::aMessageThatCannotBeParsedIsAnError()
{
    MessageLog log;
    SyncSmsInfo broken;
    broken.vMessage = QStringLiteral("not a message");
    const Decoded decoded({item({}), broken});
    QCOMPARE(int(decoded.records.size()), 1);
    QCOMPARE(decoded.errors, (QMap<int, SMSSyncError>{{1, SmsParseError}}));
    QVERIFY(log.lines(QtDebugMsg).contains(QStringLiteral("Message parsing failed for idx 1")));
}

void TestVMessageDecoding::aMessageWithoutNumberIsAnError()
{
    MessageLog log;
    VMessageText message;
    message.originator = QString();
    const Decoded decoded({item(message)});
    QCOMPARE(decoded.errors, (QMap<int, SMSSyncError>{{0, SmsNoVCard}}));
    QVERIFY(log.lines(QtDebugMsg).contains(QStringLiteral("No vcard present in vmessage")));
}

void TestVMessageDecoding::theFirstFaultCounts()
{
    VMessageText message;
    message.originator = QString();
    message.box = QStringLiteral("DRAFTS");
    QCOMPARE(Decoded({item(message)}).errors.value(0), SmsDraftNotAllowed);
    message.box = QString();
    QCOMPARE(Decoded({item(message)}).errors.value(0), SmsNoParentId);
}

void TestVMessageDecoding::faultsDoNotStopTheBatch()
{
    VMessageText draft;
    draft.box = QStringLiteral("DRAFTS");
    VMessageText noNumber;
    noNumber.originator = QString();
    const Decoded decoded({item(draft), item({}), item(noNumber), item({})});
    QCOMPARE(int(decoded.records.size()), 2);
    QCOMPARE(decoded.records.at(0).refId, 1);
    QCOMPARE(decoded.records.at(1).refId, 3);
    QCOMPARE(decoded.errors, (QMap<int, SMSSyncError>{{0, SmsDraftNotAllowed}, {2, SmsNoVCard}}));
}

void TestVMessageDecoding::aSentMessageWithOnlyAnOriginatorHasItAsRecipient()
{
    VMessageText message;
    message.box = QStringLiteral("SENT");
    const Decoded decoded({item(message)});
    QCOMPARE(decoded.records.at(0).toNumber, QStringLiteral("+15550100"));
    QVERIFY(decoded.records.at(0).fromNumber.isEmpty());
}

void TestVMessageDecoding::anItemTimeReplacesAMissingOne()
{
    MessageLog log;
    VMessageText message;
    message.dateTime = QString();
    SyncSmsInfo timed = item(message);
    timed.time = QStringLiteral("20020331T030000Z");
    const Decoded decoded({timed});
    QCOMPARE(decoded.records.at(0).time, QDateTime(QDate(2002, 3, 31), QTime(3, 0), Qt::UTC));
    QCOMPARE(decoded.records.at(0).time.timeSpec(), Qt::UTC);
    const QStringList lines = log.lines(QtDebugMsg);
    QVERIFY(lines.contains(QStringLiteral("No time present in vmessage")));
    const auto at = lines.indexOf(QStringLiteral("Setting time from syncedMsg : "));
    QVERIFY(at >= 0);
    QCOMPARE(lines.value(at + 1), QStringLiteral("QDateTime(2002-03-31 03:00:00.000 UTC Qt::UTC)"));
    QCOMPARE(int(lines.count(lines.at(at))), 1);
}

// In a zone of its own, since in UTC the clock's reading and its label agree by themselves.
void TestVMessageDecoding::theClockReplacesAMissingTimeAndIsLabelledUtc()
{
    const TimeZone zone("Asia/Kathmandu");
    MessageLog log;
    VMessageText message;
    message.dateTime = QString();
    const QDateTime before = QDateTime::currentDateTime();
    const Decoded decoded({item(message)});
    const QDateTime after = QDateTime::currentDateTime();
    const QDateTime time = decoded.records.at(0).time;
    QCOMPARE(time.timeSpec(), Qt::UTC);
    QVERIFY(time >= QDateTime(before.date(), before.time(), Qt::UTC));
    QVERIFY(time <= QDateTime(after.date(), after.time(), Qt::UTC));
    const QStringList lines = log.lines(QtDebugMsg);
    const auto at = lines.indexOf(QStringLiteral("No time supplied, setting current Time : "));
    QVERIFY(at >= 0);
    QCOMPARE(lines.value(at + 1),
             time.toString(QStringLiteral("'QDateTime('yyyy-MM-dd HH:mm:ss.zzz 'UTC Qt::UTC)'")));
    QCOMPARE(int(lines.count(lines.at(at))), 1);
}

void TestVMessageDecoding::anUnreadableItemTimeStaysNull()
{
    VMessageText message;
    message.dateTime = QString();
    SyncSmsInfo timed = item(message);
    timed.time = QStringLiteral("yesterday");
    const Decoded decoded({timed});
    QCOMPARE(int(decoded.records.size()), 1);
    QVERIFY(decoded.records.at(0).time.isNull());
}

void TestVMessageDecoding::anEmptyItemTimeCountsAsAbsent()
{
    MessageLog log;
    VMessageText message;
    message.dateTime = QString();
    SyncSmsInfo timed = item(message);
    timed.time = QStringLiteral("");
    QVERIFY(Decoded({timed}).records.at(0).time.isValid());
    QVERIFY(log.lines(QtDebugMsg)
                .contains(QStringLiteral("No time supplied, setting current Time : ")));
}

void TestVMessageDecoding::anUnreadableMessageTimeGivesWayToTheItemTime()
{
    VMessageText message;
    message.dateTime = QStringLiteral("yesterday");
    SyncSmsInfo timed = item(message);
    timed.time = QStringLiteral("20101103T142530Z");
    QCOMPARE(Decoded({timed}).records.at(0).time, messageTime);
}

void TestVMessageDecoding::theItemsTokenAndPositionAreTaken()
{
    SyncSmsInfo first = item({});
    first.messageToken = QStringLiteral("token-1");
    SyncSmsInfo second = item({});
    second.messageToken = QStringLiteral("token-2");
    const Decoded decoded({first, second});
    QCOMPARE(decoded.records.at(0).messageToken, QStringLiteral("token-1"));
    QCOMPARE(decoded.records.at(0).refId, 0);
    QCOMPARE(decoded.records.at(1).messageToken, QStringLiteral("token-2"));
    QCOMPARE(decoded.records.at(1).refId, 1);
}

void TestVMessageDecoding::modifiedRecordsCarryTheClientsIds()
{
    MessageLog log;
    SyncSmsInfo first = item({});
    first.id = 31;
    SyncSmsInfo second = item({});
    second.id = 0;
    const Decoded decoded({first, second}, true);
    QCOMPARE(decoded.records.at(0).id, 31);
    QCOMPARE(decoded.records.at(1).id, 0);
    QCOMPARE(
        int(log.linesFrom(QtDebugMsg, QStringLiteral("Received item id to be modified")).size()),
        2);
}

void TestVMessageDecoding::addedRecordsCarryNoIds()
{
    SyncSmsInfo first = item({});
    first.id = 31;
    const Decoded decoded({first, item({})});
    QCOMPARE(decoded.records.at(0).id, -1);
    QCOMPARE(decoded.records.at(1).id, -1);
    QVERIFY(decoded.errors.isEmpty());
}

void TestVMessageDecoding::invalidItemsAreNotParsedInModifyMode()
{
    MessageLog log;
    SyncSmsInfo valid = item({});
    valid.id = 31;
    SyncSmsInfo invalid;
    invalid.vMessage = QStringLiteral("not a message");
    const Decoded decoded({valid, invalid}, true);
    QCOMPARE(int(decoded.records.size()), 1);
    QCOMPARE(decoded.errors, (QMap<int, SMSSyncError>{{1, SmsInvalidId}}));
    const QStringList lines = log.lines(QtDebugMsg);
    QVERIFY(lines.contains(QStringLiteral("Found an invalid item id -1 @ idx 1")));
    QVERIFY(lines.contains(QStringLiteral("idx 1 already in invalid indexes list, not parsing")));
    QVERIFY(!lines.contains(QStringLiteral("Message parsing failed for idx 1")));
}

void TestVMessageDecoding::whatTheEncoderWritesIsReadBack_data()
{
    QTest::addColumn<int>("parentId");
    QTest::addColumn<QString>("body");
    const auto text = QStringLiteral("Hello");
    QTest::newRow("inbox") << int(LocInbox) << text;
    QTest::newRow("outbox") << int(LocOutbox) << text;
    QTest::newRow("sent") << int(LocSent) << text;
    QTest::newRow("own") << int(LocMyFolder) << text;
    QTest::newRow("lines") << int(LocInbox) << QStringLiteral("one\n\ntwo\n");
    QTest::newRow("structure") << int(LocSent) << QStringLiteral("END:VBODY\nEND:VMSG");
    QTest::newRow("wide") << int(LocInbox) << QStringLiteral("\u00E4\u20AC\U0001F600");
    QTest::newRow("empty") << int(LocInbox) << QString();
}

void TestVMessageDecoding::whatTheEncoderWritesIsReadBack()
{
    QFETCH(int, parentId);
    QFETCH(QString, body);
    SmsInfo original;
    original.parentId = parentId;
    original.body = body;
    original.time = messageTime;
    original.readStatus = QStringLiteral("UNREAD");
    const bool outbound = parentId == LocOutbox || parentId == LocSent;
    (outbound ? original.toNumber : original.fromNumber) = QStringLiteral("+15550100");
    const Decoded decoded({VMessageEncoder().encode(original)});
    QCOMPARE(int(decoded.records.size()), 1);
    const SmsInfo &info = decoded.records.at(0);
    QCOMPARE(info.parentId, parentId);
    QCOMPARE(info.body, body);
    QCOMPARE(info.time, messageTime);
    QCOMPARE(info.readStatus, QStringLiteral("UNREAD"));
    QCOMPARE(info.fromNumber, original.fromNumber);
    QCOMPARE(info.toNumber, original.toNumber);
}

void TestVMessageDecoding::theTraceCountsTheBatch()
{
    MessageLog log;
    Decoded({item({}), item({})});
    const QStringList timeLines = log.linesFrom(QtDebugMsg, QStringLiteral("Time to parse"));
    QCOMPARE(int(timeLines.size()), 1);
    QVERIFY(timeLines.at(0).startsWith(QStringLiteral("Time to parse 2 ")));
    QVERIFY(timeLines.at(0).endsWith(QStringLiteral(" ms")));
    const QStringList entryLines =
        log.linesFrom(QtDebugMsg,
                      QStringLiteral("QList<KorvaSyncIf::SmsInfo> "
                                     "KorvaSyncIf::SMSSyncInterfacePrivate::parseAllVMessages("));
    QCOMPARE(int(entryLines.size()), 1);
    QVERIFY(entryLines.at(0).endsWith(QStringLiteral(" 2 modify Use Case false")));
    log.clear();
    Decoded({item({})}, true);
    QCOMPARE(int(log.lines(QtDebugMsg).filter(QStringLiteral(" 1 modify Use Case true")).size()),
             1);
}

QTEST_GUILESS_MAIN(TestVMessageDecoding)
#include "tst_vmessagedecoding.moc"
