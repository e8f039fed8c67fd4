// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "decodedmessage.h"
#include "timezone.h"

#include <korvasync/vmessageencoder.h>

#include <QtTest/QTest>

using namespace KorvaSyncIf;

using Direction = HistoryItem::Direction;
using Problem = VMessageDecoder::Problem;

namespace {

//! What a header, cards and a text make together, in the form of VMessageEncoder.
QByteArray message(const QByteArray &header, const QByteArray &cards = "TEL:+15550100\r\n",
                   const QByteArray &text = "Hello")
{
    QByteArray bytes = "BEGIN:VMSG\r\nVERSION:1.1\r\n" + header;
    for (const QByteArray &line : cards.split('\n')) {
        if (line.startsWith("TEL:"))
            bytes += "BEGIN:VCARD\r\nVERSION:2.1\r\n" + line + "\nEND:VCARD\r\n";
    }
    return bytes + "BEGIN:VENV\r\nBEGIN:VBODY\r\nX-SMS;TYPE=TEXT;CHARSET=UTF-8:" + text
        + "\r\nEND:VBODY\r\nEND:VENV\r\nEND:VMSG\r\n";
}

//! A message with cards in both places.
QByteArray messageBetween(const QByteArray &box, const QByteArray &originators,
                          const QByteArray &recipients)
{
    const auto cards = [](const QByteArray &numbers) {
        QByteArray bytes;
        for (const QByteArray &number : numbers.split(' ')) {
            if (!number.isEmpty())
                bytes += "BEGIN:VCARD\r\nVERSION:2.1\r\nTEL:" + number + "\r\nEND:VCARD\r\n";
        }
        return bytes;
    };
    return "BEGIN:VMSG\r\nX-IRMC-TYPE:SMS\r\nX-IRMC-BOX:" + box + "\r\n" + cards(originators)
        + "BEGIN:VENV\r\n" + cards(recipients)
        + "BEGIN:VENV\r\nBEGIN:VBODY\r\nX-SMS:Hello\r\nEND:VBODY\r\nEND:VENV\r\nEND:VENV\r\n"
          "END:VMSG\r\n";
}

QString timeOf(const QByteArray &header, const QTimeZone &zone)
{
    return DecodedMessage(message(header), zone).item.time.toString(Qt::ISODateWithMs);
}

const QTimeZone kathmandu("Asia/Kathmandu");

} // namespace

Q_DECLARE_METATYPE(KorvaSyncIf::HistoryItem::Direction)

class TestVMessageDecoder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fillsInEveryMemberOfAnOwnMessage();
    void leavesOtherMembersAtTheirDefaults();
    void givesBackWhatTheEncoderWrote_data();
    void givesBackWhatTheEncoderWrote();
    void readsTheFormsOfPhones_data();
    void readsTheFormsOfPhones();

    void readsTheTime_data();
    void readsTheTime();
    void takesTheSystemsZoneWithoutAnother();
    void takesTheTextsDateWhereTheHeadersCannotBeRead();

    void takesTheFolderFromTheBox_data();
    void takesTheFolderFromTheBox();
    void takesTheFolderFromStatusAndMessageType_data();
    void takesTheFolderFromStatusAndMessageType();
    void putsAMessageWithoutAFolderIntoTheDefaultOne();
    void tellsWhetherAMessageIsRead_data();
    void tellsWhetherAMessageIsRead();

    void takesThePartyFromThePlaceOfTheDirection_data();
    void takesThePartyFromThePlaceOfTheDirection();
    void handsOutAllNumbers();
    void readsWordsInThePlaceOfNumbers();
    void tellsTheType_data();
    void tellsTheType();

    void namesCharsetEncodingAndLanguage();
    void leavesAbsentNamesNull();
    void readsTheText_data();
    void readsTheText();
    void readsAMessageWithoutABody();

    void tellsOfTheLatestMessageOnly();
    void isAValue();
};

void TestVMessageDecoder::fillsInEveryMemberOfAnOwnMessage()
{
    const DecodedMessage decoded(ownMessage);
    QVERIFY(decoded.isMessage);
    QCOMPARE(decoded.decoder.problem().kind, Problem::None);
    QCOMPARE(decoded.decoder.problem().line, 0);
    QCOMPARE(decoded.item.kind, HistoryItem::Kind::Message);
    QCOMPARE(decoded.item.folder, 4098);
    QCOMPARE(decoded.item.direction, Direction::Inbound);
    QVERIFY(decoded.item.isRead);
    QCOMPARE(decoded.item.party, QStringLiteral("+15550100"));
    QCOMPARE(decoded.item.time, QDateTime(QDate(2024, 1, 5), QTime(8, 15), Qt::UTC));
    QCOMPARE(decoded.item.time.timeSpec(), Qt::UTC);
    QCOMPARE(decoded.item.text, QStringLiteral("Good\nmorning"));
    QCOMPARE(decoded.item.charset, QStringLiteral("UTF-8"));
    QCOMPARE(decoded.decoder.type(), QStringLiteral("SMS"));
}

void TestVMessageDecoder::leavesOtherMembersAtTheirDefaults()
{
    VMessageDecoder decoder;
    HistoryItem item;
    item.id = 7;
    item.status = HistoryItem::Status::Failed;
    item.isMissed = true;
    item.conversation = 8;
    item.duration = 9;
    item.token = QStringLiteral("token");
    item.change = 10;
    QVERIFY(decoder.decode(ownMessage, &item));
    QCOMPARE(item.id, -1);
    QCOMPARE(item.status, HistoryItem::Status::Unknown);
    QVERIFY(!item.isMissed);
    QCOMPARE(item.conversation, -1);
    QCOMPARE(item.duration, 0);
    QCOMPARE(item.token, QString());
    QCOMPARE(item.change, 0);
}

void TestVMessageDecoder::givesBackWhatTheEncoderWrote_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << QString();
    QTest::newRow("lines") << QStringLiteral("\nGood\n\nmorning\n");
    QTest::newRow("blanks") << QStringLiteral(" \t Hello \t ");
    QTest::newRow("closing lines") << QStringLiteral("a\nEND:VBODY\nEND:VENV\nEND:VMSG\nb");
    QTest::newRow("a whole message") << QString::fromLatin1(ownMessage).remove(QLatin1Char('\r'));
    QTest::newRow("a message behind this one")
        << QStringLiteral("a\nEND:VBODY\nEND:VENV\nEND:VMSG\nBEGIN:VMSG\nBEGIN:VBODY\nX-SMS:b");
    QTest::newRow("NUL") << QString(QChar(QChar::Null));
    QTest::newRow("NUL among others")
        << QStringLiteral("a") + QChar(QChar::Null) + QLatin1Char('b');
    QTest::newRow("byte order marks") << QString(2, QChar(QChar::ByteOrderMark));
    QTest::newRow("a character of four bytes") << QString::fromUtf8("\xF0\x9F\x98\x80");
}

void TestVMessageDecoder::givesBackWhatTheEncoderWrote()
{
    QFETCH(QString, text);
    SmsInfo sent;
    sent.parentId = LocSent;
    sent.toNumber = QStringLiteral("+15550101");
    sent.readStatus = QStringLiteral("UNREAD");
    sent.time = QDateTime(QDate(2010, 11, 3), QTime(14, 25, 30), Qt::UTC);
    sent.body = text;
    const DecodedMessage decoded(VMessageEncoder().encode(sent).vMessage.toUtf8());
    QVERIFY(decoded.isMessage);
    QCOMPARE(decoded.item.folder, 4101);
    QCOMPARE(decoded.item.direction, Direction::Outbound);
    QCOMPARE(decoded.item.party, QStringLiteral("+15550101"));
    QVERIFY(!decoded.item.isRead);
    QCOMPARE(decoded.item.time, QDateTime(QDate(2010, 11, 3), QTime(14, 25, 30), Qt::UTC));
    QCOMPARE(decoded.item.text, text);
}

void TestVMessageDecoder::readsTheFormsOfPhones_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray party = "BEGIN:VCARD\nVERSION:2.1\nN:Ada\nTEL;CELL:+15550100\nEND:VCARD\n";
    QTest::newRow("bare lines behind a date")
        << "BEGIN:VMSG\nVERSION:1.1\nX-IRMC-STATUS:READ\nX-IRMC-BOX:INBOX\n" + party
            + "BEGIN:VENV\nBEGIN:VBODY\nDate:03-11-2010 14:25:30 GMT\nHello, Ada!\nEND:VBODY\n"
              "END:VENV\nEND:VMSG\n";
    QTest::newRow("maker's date, quoted-printable")
        << "BEGIN:VMSG\nX-MESSAGE-TYPE:DELIVER\nX-READ:1\nX-ABC-DT:20101103T142530Z\n" + party
            + "BEGIN:VENV\nBEGIN:VBODY\n"
              "Subject;ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8:Hello=2C=\n Ada!\n"
              "END:VBODY\nEND:VENV\nEND:VMSG\n";
    QTest::newRow("base64, closing lines missing, small letters")
        << "begin:vmsg\nx-box:inbox\nx-message-status:read\nx-qlt-dt:1288794330000\n" + party
            + "begin:vbody\ntext;encoding=base64:SGVsbG8sIEFkYSE=\nend:vbody";
}

void TestVMessageDecoder::readsTheFormsOfPhones()
{
    QFETCH(QByteArray, bytes);
    const DecodedMessage decoded(bytes);
    QVERIFY(decoded.isMessage);
    QCOMPARE(decoded.item.folder, 4098);
    QCOMPARE(decoded.item.direction, Direction::Inbound);
    QVERIFY(decoded.item.isRead);
    QCOMPARE(decoded.item.party, QStringLiteral("+15550100"));
    QCOMPARE(decoded.item.time, QDateTime(QDate(2010, 11, 3), QTime(14, 25, 30), Qt::UTC));
    QCOMPARE(decoded.item.text.trimmed().remove(QLatin1Char(' ')), QStringLiteral("Hello,Ada!"));
}

void TestVMessageDecoder::readsTheTime_data()
{
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<QString>("utc");
    const auto row = [](const char *name, const QByteArray &value, const char *utc) {
        QTest::newRow(name) << "X-QLT-DT:" + value + "\r\n" << QString::fromLatin1(utc);
    };
    row("UTC", "20101103T142530Z", "2010-11-03T14:25:30.000Z");
    row("with a distance", "2010-11-03 14:25:30 +0900", "2010-11-03T05:25:30.000Z");
    row("without a zone", "20101103T142530", "2010-11-03T08:40:30.000Z");
    row("without a zone, by day first", "03.11.2010 14:25:30", "2010-11-03T08:40:30.000Z");
    row("seconds", "1288794330", "2010-11-03T14:25:30.000Z");
    row("milliseconds", "1288794330999", "2010-11-03T14:25:30.000Z");
    row("unreadable", "soon", "");
    row("no such day", "20100231T142530Z", "");
    row("stand-in for none", "19700000T000000Z", "");
    row("empty", "", "");
    QTest::newRow("missing") << QByteArray() << QString();
}

void TestVMessageDecoder::readsTheTime()
{
    QFETCH(QByteArray, header);
    QTEST(timeOf(header, kathmandu), "utc");
}

void TestVMessageDecoder::takesTheSystemsZoneWithoutAnother()
{
    const TimeZone zone("Asia/Kathmandu");
    QCOMPARE(timeOf("X-QLT-DT:20101103T142530\r\n", QTimeZone()),
             QStringLiteral("2010-11-03T08:40:30.000Z"));
}

void TestVMessageDecoder::takesTheTextsDateWhereTheHeadersCannotBeRead()
{
    const DecodedMessage decoded("BEGIN:VMSG\nX-QLT-DT:19700000T000000Z\nBEGIN:VBODY\n"
                                 "Date:2010/11/03 14:25:30\nHello\nEND:VBODY\n",
                                 kathmandu);
    QCOMPARE(decoded.item.time, QDateTime(QDate(2010, 11, 3), QTime(8, 40, 30), Qt::UTC));
    QCOMPARE(decoded.item.text, QStringLiteral("Hello"));
}

void TestVMessageDecoder::takesTheFolderFromTheBox_data()
{
    QTest::addColumn<QByteArray>("box");
    QTest::addColumn<int>("folder");
    QTest::addColumn<Direction>("direction");
    const auto row = [](const char *box, int folder, Direction direction) {
        QTest::newRow(box) << QByteArray(box) << folder << direction;
    };
    row("INBOX", 4098, Direction::Inbound);
    row("inbox", 4098, Direction::Inbound);
    row("OUTBOX", 4099, Direction::Outbound);
    row("DRAFT", 4100, Direction::Outbound);
    row("Drafts", 4100, Direction::Outbound);
    row("SENT", 4101, Direction::Outbound);
    row("SentBox", 4101, Direction::Outbound);
    row("SENDBOX", 4101, Direction::Outbound);
    row("MYFOLDER", 4104, Direction::Inbound);
    row("MYFOLDERS", 4104, Direction::Inbound);
    row("ARCHIVE", 0, Direction::Unknown);
    row("SEND", 0, Direction::Unknown);
    row("", 0, Direction::Unknown);
}

void TestVMessageDecoder::takesTheFolderFromTheBox()
{
    QFETCH(QByteArray, box);
    const DecodedMessage decoded(message("X-IRMC-BOX:" + box + "\r\n"));
    QTEST(decoded.item.folder, "folder");
    QTEST(decoded.item.direction, "direction");
}

void TestVMessageDecoder::takesTheFolderFromStatusAndMessageType_data()
{
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<int>("folder");
    const auto row = [](const char *name, const QByteArray &header, int folder) {
        QTest::newRow(name) << header << folder;
    };
    row("delivered", "X-MESSAGE-TYPE:DELIVER\r\n", 4098);
    row("delivered, small", "X-MESSAGE-TYPE:deliver\r\n", 4098);
    row("1", "X-MESSAGE-TYPE:1\r\n", 4098);
    row("submitted", "X-MESSAGE-TYPE:SUBMIT\r\n", 4101);
    row("2", "X-MESSAGE-TYPE:2\r\n", 4101);
    row("another", "X-MESSAGE-TYPE:STATUS-REPORT\r\n", 0);
    row("sent", "X-IRMC-STATUS:SENT\r\n", 4101);
    row("draft", "X-IRMC-STATUS:DRAFT\r\n", 4100);
    row("draft before the type", "X-MESSAGE-TYPE:SUBMIT\r\nX-IRMC-STATUS:DRAFT\r\n", 4100);
    row("type before sent", "X-IRMC-STATUS:SENT\r\nX-MESSAGE-TYPE:DELIVER\r\n", 4098);
    row("box first", "X-MESSAGE-TYPE:SUBMIT\r\nX-IRMC-BOX:OUTBOX\r\n", 4099);
    row("unknown box", "X-MESSAGE-TYPE:SUBMIT\r\nX-IRMC-BOX:ARCHIVE\r\n", 4101);
    row("none", "", 0);
}

void TestVMessageDecoder::takesTheFolderFromStatusAndMessageType()
{
    QFETCH(QByteArray, header);
    QTEST(DecodedMessage(message(header)).item.folder, "folder");
}

void TestVMessageDecoder::putsAMessageWithoutAFolderIntoTheDefaultOne()
{
    const QTimeZone utc = QTimeZone::utc();
    const DecodedMessage homeless(messageBetween("", "+15550100", "+15550101"), utc, LocSent);
    QCOMPARE(homeless.item.folder, 4101);
    QCOMPARE(homeless.item.direction, Direction::Outbound);
    QCOMPARE(homeless.item.party, QStringLiteral("+15550101"));
    QVERIFY(homeless.item.isRead);
    QCOMPARE(DecodedMessage(message("X-IRMC-BOX:INBOX\r\n"), utc, LocSent).item.folder, 4098);
    const DecodedMessage own(message(""), utc, 4110);
    QCOMPARE(own.item.folder, 4110);
    QCOMPARE(own.item.direction, Direction::Inbound);
}

void TestVMessageDecoder::tellsWhetherAMessageIsRead_data()
{
    QTest::addColumn<QByteArray>("status");
    QTest::addColumn<bool>("isReadWhenReceived");
    QTest::addColumn<bool>("isReadWhenSent");
    QTest::newRow("READ") << QByteArray("READ") << true << true;
    QTest::newRow("read") << QByteArray("read") << true << true;
    QTest::newRow("1") << QByteArray("1") << true << true;
    QTest::newRow("UNREAD") << QByteArray("UNREAD") << false << false;
    QTest::newRow("0") << QByteArray("0") << false << false;
    QTest::newRow("SENT") << QByteArray("SENT") << false << true;
    QTest::newRow("none") << QByteArray() << false << true;
}

void TestVMessageDecoder::tellsWhetherAMessageIsRead()
{
    QFETCH(QByteArray, status);
    const QByteArray line = status.isNull() ? QByteArray() : "X-IRMC-STATUS:" + status + "\r\n";
    QTEST(DecodedMessage(message(line + "X-IRMC-BOX:INBOX\r\n")).item.isRead, "isReadWhenReceived");
    QTEST(DecodedMessage(message(line + "X-IRMC-BOX:SENT\r\n")).item.isRead, "isReadWhenSent");
}

void TestVMessageDecoder::takesThePartyFromThePlaceOfTheDirection_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("party");
    const auto row = [](const char *name, const QByteArray &bytes, const char *party) {
        QTest::newRow(name) << bytes << QString::fromLatin1(party);
    };
    row("received", messageBetween("INBOX", "+15550100", "+15550101"), "+15550100");
    row("sent", messageBetween("SENT", "+15550100", "+15550101"), "+15550101");
    row("draft", messageBetween("DRAFT", "+15550100", "+15550101"), "+15550101");
    row("user's folder", messageBetween("MYFOLDER", "+15550100", "+15550101"), "+15550100");
    row("no folder", messageBetween("", "+15550100", "+15550101"), "+15550100");
    row("received, in the other place", messageBetween("INBOX", "", "+15550101"), "+15550101");
    row("sent, in the other place", messageBetween("SENT", "+15550100", ""), "+15550100");
    row("draft, in the other place", messageBetween("DRAFT", "+15550100", ""), "+15550100");
    row("several recipients", messageBetween("SENT", "", "+15550101 +15550102"), "+15550101");
    row("a byte order mark", messageBetween("INBOX", "\xEF\xBB\xBF", "+15550101"), "+15550101");
    row("nobody", messageBetween("INBOX", "", ""), "");
}

void TestVMessageDecoder::takesThePartyFromThePlaceOfTheDirection()
{
    QFETCH(QByteArray, bytes);
    const DecodedMessage decoded(bytes);
    QVERIFY(decoded.isMessage);
    QTEST(decoded.item.party, "party");
}

void TestVMessageDecoder::handsOutAllNumbers()
{
    const DecodedMessage decoded(
        messageBetween("SENT", "+15550100", "+15550101 +15550102 +15550101"));
    QCOMPARE(decoded.decoder.originators(), QStringList{QStringLiteral("+15550100")});
    QCOMPARE(decoded.decoder.recipients(),
             (QStringList{QStringLiteral("+15550101"), QStringLiteral("+15550102"),
                          QStringLiteral("+15550101")}));
}

void TestVMessageDecoder::readsWordsInThePlaceOfNumbers()
{
    QCOMPARE(DecodedMessage(message("", "TEL:B\xC3\xA4nk 24\r\n")).item.party,
             QString::fromUtf8("B\xC3\xA4nk 24"));
}

void TestVMessageDecoder::tellsTheType_data()
{
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<QString>("type");
    QTest::newRow("text message") << QByteArray("X-IRMC-TYPE:SMS\r\n") << QStringLiteral("SMS");
    QTest::newRow("e-mail") << QByteArray("X-IRMC-TYPE:INET\r\n") << QStringLiteral("INET");
    QTest::newRow("other name") << QByteArray("X-TYPE:mms\r\n") << QStringLiteral("mms");
    QTest::newRow("none") << QByteArray() << QString();
}

void TestVMessageDecoder::tellsTheType()
{
    QFETCH(QByteArray, header);
    const DecodedMessage decoded(message(header));
    QVERIFY(decoded.isMessage);
    QTEST(decoded.decoder.type(), "type");
}

void TestVMessageDecoder::namesCharsetEncodingAndLanguage()
{
    const DecodedMessage decoded("BEGIN:VMSG\r\nBEGIN:VBODY\r\nSubject;ENCODING=QUOTED-PRINTABLE;"
                                 "CHARSET=ISO-8859-1;LANGUAGE=de-DE:B=E4nk\r\nEND:VBODY\r\n");
    QCOMPARE(decoded.item.charset, QStringLiteral("ISO-8859-1"));
    QCOMPARE(decoded.item.encoding, QStringLiteral("QUOTED-PRINTABLE"));
    QCOMPARE(decoded.item.language, QStringLiteral("de-DE"));
    QCOMPARE(decoded.item.text, QString::fromUtf8("B\xC3\xA4nk"));
}

void TestVMessageDecoder::leavesAbsentNamesNull()
{
    const DecodedMessage decoded("BEGIN:VMSG\r\nBEGIN:VBODY\r\nHello\r\nEND:VBODY\r\n");
    QVERIFY(decoded.item.charset.isNull());
    QVERIFY(decoded.item.encoding.isNull());
    QVERIFY(decoded.item.language.isNull());
    QVERIFY(decoded.item.party.isNull());
}

void TestVMessageDecoder::readsTheText_data()
{
    QTest::addColumn<QByteArray>("written");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const QByteArray &written, const QString &text) {
        QTest::newRow(name) << written << text;
    };
    const QChar mark(QChar::ByteOrderMark);
    row("line feed", "a\nb", QStringLiteral("a\nb"));
    row("carriage return and line feed", "a\r\nb", QStringLiteral("a\nb"));
    row("lone carriage return", "a\rb", QStringLiteral("a\nb"));
    row("byte order mark", "\xEF\xBB\xBFHello", mark + QStringLiteral("Hello"));
    row("mark alone", "\xEF\xBB\xBF", QString(mark));
    row("two marks", "\xEF\xBB\xBF\xEF\xBB\xBF", QString(2, mark));
    row("mark in the middle", "a\xEF\xBB\xBF", QLatin1Char('a') + QString(mark));
    row("NUL", QByteArray("a\0b", 3), QString::fromLatin1("a\0b", 3));
    row("no UTF-8", "caf\xE9", QString::fromUtf8("caf\xC3\xA9"));
    row("empty", "", QString());
}

void TestVMessageDecoder::readsTheText()
{
    QFETCH(QByteArray, written);
    const DecodedMessage decoded(message("", "TEL:+15550100\r\n", written));
    QVERIFY(decoded.isMessage);
    QTEST(decoded.item.text, "text");
}

void TestVMessageDecoder::readsAMessageWithoutABody()
{
    const DecodedMessage decoded("BEGIN:VMSG\r\nX-IRMC-BOX:INBOX\r\nEND:VMSG\r\n");
    QVERIFY(decoded.isMessage);
    QCOMPARE(decoded.item.folder, 4098);
    QCOMPARE(decoded.item.text, QString());
}

void TestVMessageDecoder::tellsOfTheLatestMessageOnly()
{
    VMessageDecoder decoder;
    HistoryItem item;
    QVERIFY(decoder.decode(messageBetween("SENT", "+15550100", "+15550101"), &item));
    QVERIFY(!decoder.decode("BEGIN:VMSG\r\nVERSION:1.1\r\n", &item));
    QCOMPARE(decoder.problem().kind, Problem::CutHeader);
    QCOMPARE(decoder.problem().line, 2);
    QCOMPARE(decoder.type(), QString());
    QVERIFY(decoder.originators().isEmpty());
    QVERIFY(decoder.recipients().isEmpty());
    QVERIFY(decoder.decode(ownMessage, &item));
    QCOMPARE(decoder.problem().kind, Problem::None);
    QCOMPARE(decoder.problem().line, 0);
    QCOMPARE(decoder.type(), QStringLiteral("SMS"));
    QCOMPARE(decoder.originators(), QStringList{QStringLiteral("+15550100")});
}

void TestVMessageDecoder::isAValue()
{
    VMessageDecoder first;
    first.setLocalZone(kathmandu);
    first.setDefaultFolder(LocMyFolder);
    HistoryItem item;
    QVERIFY(!first.decode("BEGIN:VMSG\r\nVERSION:1.1\r\n", &item));
    VMessageDecoder second(first);
    QVERIFY(first.decode(ownMessage, &item));
    QCOMPARE(second.problem().kind, Problem::CutHeader);
    QCOMPARE(second.problem().line, 2);
    QVERIFY(second.decode(message("X-QLT-DT:20101103T142530\r\n"), &item));
    QCOMPARE(item.folder, 4104);
    QCOMPARE(item.time, QDateTime(QDate(2010, 11, 3), QTime(8, 40, 30), Qt::UTC));
}

QTEST_GUILESS_MAIN(TestVMessageDecoder)
#include "tst_vmessagedecoder.moc"
