// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "messagelog.h"
#include "timezone.h"

#include <korvasync/vmessageencoder.h>

#include <QtTest/QTest>

#include <type_traits>

using namespace KorvaSyncIf;

namespace {

SmsInfo sentMessage()
{
    SmsInfo info;
    info.id = 12;
    info.parentId = LocSent;
    info.toNumber = QStringLiteral("+15550100");
    info.body = QStringLiteral("Hello");
    info.time = QDateTime(QDate(2010, 11, 3), QTime(14, 25, 30), Qt::UTC);
    info.readStatus = QStringLiteral("READ");
    info.messageToken = QStringLiteral("token-1");
    return info;
}

SmsInfo receivedMessage()
{
    SmsInfo info = sentMessage();
    info.parentId = LocInbox;
    info.fromNumber = QStringLiteral("+15550101");
    info.toNumber.clear();
    info.readStatus = QStringLiteral("UNREAD");
    return info;
}

//! The lines of a text in which every line, the last included, ends in CR LF.
QString withLineEnds(const QStringList &lines)
{
    return lines.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n");
}

QString bodyProperty(const SmsInfo &info)
{
    const QString text = VMessageEncoder().encode(info).vMessage;
    const auto start = text.indexOf(QStringLiteral("BEGIN:VBODY\r\n")) + 13;
    return text.mid(start, text.lastIndexOf(QStringLiteral("END:VBODY")) - start);
}

const auto encodeSignature =
    QStringLiteral("KorvaSyncIf::SyncSmsInfo "
                   "KorvaSyncIf::VMessageEncoder::encode(const KorvaSyncIf::SmsInfo&)");
const auto removingLine = QStringLiteral("Removing CR chars from sent txt");

} // namespace

class TestVMessageEncoder : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void constantsHaveTheirValues();
    void theEncoderIsAPlainValue();
    void anOutboundMessageHasTheRecipientInItsEnvelope();
    void anInboundMessageHasTheOriginatorBeforeItsEnvelope();
    void aMessageWithBothNumbersHasBothVCards();
    void aMessageWithoutNumbersHasNoVCard();
    void aMessageWithoutTimeHasABlankLine();
    void theBoxFollowsTheFolder_data();
    void theBoxFollowsTheFolder();
    void theStampIsInUtcAndTheTimeTextInItsOwnZone();
    void aLocalTimeIsStampedInUtc();
    void aLocalTimeThatIsSkippedIsStampedAsQtConvertsIt();
    void aTimeWithoutADateHasEmptyStamps();
    void theStatusIsWrittenAsItStands();
    void theResultCarriesIdsAndToken();
    void carriageReturnsAreRemovedWithOneLine();
    void bodiesAreWrittenAsTheyStand_data();
    void bodiesAreWrittenAsTheyStand();
    void numbersAreWrittenAsTheyStand();
    void aTextThatFitsItsRoomIsNotMoved_data();
    void aTextThatFitsItsRoomIsNotMoved();
    void oneEncoderServesManyMessages();
    void thePiecesAppend();
    void theTraceNamesTheOperationAndTheVCards();
};

void TestVMessageEncoder::constantsHaveTheirValues()
{
    QCOMPARE(VMessageEncoder::CR, "\r");
    QCOMPARE(VMessageEncoder::LF, "\n");
    QCOMPARE(VMessageEncoder::SEMICOLON, ";");
    QCOMPARE(VMessageEncoder::COLON, ":");
    QCOMPARE(VMessageEncoder::EQUAL, "=");
    QCOMPARE(VMessageEncoder::LWSP, " ");
    QCOMPARE(sizeof(VMessageEncoder::hexTab), size_t(16));
    QCOMPARE(QByteArray(VMessageEncoder::hexTab, 16), QByteArray("0123456789ABCDEF"));
}

void TestVMessageEncoder::theEncoderIsAPlainValue()
{
    QVERIFY(!std::is_polymorphic<VMessageEncoder>::value);
    QCOMPARE(sizeof(VMessageEncoder), 2 * sizeof(int));
}

void TestVMessageEncoder::anOutboundMessageHasTheRecipientInItsEnvelope()
{
    QCOMPARE(VMessageEncoder().encode(sentMessage()).vMessage,
             QStringLiteral("BEGIN:VMSG\r\n"
                            "VERSION:1.1\r\n"
                            "X-IRMC-STATUS:READ\r\n"
                            "X-IRMC-BOX:SENT\r\n"
                            "X-IRMC-TYPE:SMS\r\n"
                            "X-MDO-TIMESTAMP:20101103T142530Z\r\n"
                            "X-QLT-DT:20101103T142530Z\r\n"
                            "BEGIN:VENV\r\n"
                            "BEGIN:VCARD\r\n"
                            "VERSION:2.1\r\n"
                            "TEL:+15550100\r\n"
                            "END:VCARD\r\n"
                            "BEGIN:VENV\r\n"
                            "BEGIN:VBODY\r\n"
                            "X-SMS;TYPE=TEXT;CHARSET=UTF-8:Hello\r\n"
                            "END:VBODY\r\n"
                            "END:VENV\r\n"
                            "END:VENV\r\n"
                            "END:VMSG\r\n"));
}

void TestVMessageEncoder::anInboundMessageHasTheOriginatorBeforeItsEnvelope()
{
    QCOMPARE(VMessageEncoder().encode(receivedMessage()).vMessage,
             QStringLiteral("BEGIN:VMSG\r\n"
                            "VERSION:1.1\r\n"
                            "X-IRMC-STATUS:UNREAD\r\n"
                            "X-IRMC-BOX:INBOX\r\n"
                            "X-IRMC-TYPE:SMS\r\n"
                            "X-MDO-TIMESTAMP:20101103T142530Z\r\n"
                            "X-QLT-DT:20101103T142530Z\r\n"
                            "BEGIN:VCARD\r\n"
                            "VERSION:2.1\r\n"
                            "TEL:+15550101\r\n"
                            "END:VCARD\r\n"
                            "BEGIN:VENV\r\n"
                            "BEGIN:VBODY\r\n"
                            "X-SMS;TYPE=TEXT;CHARSET=UTF-8:Hello\r\n"
                            "END:VBODY\r\n"
                            "END:VENV\r\n"
                            "END:VMSG\r\n"));
}

void TestVMessageEncoder::aMessageWithBothNumbersHasBothVCards()
{
    SmsInfo info = sentMessage();
    info.fromNumber = QStringLiteral("+15550101");
    const QStringList lines{
        QStringLiteral("BEGIN:VCARD"),   QStringLiteral("VERSION:2.1"),
        QStringLiteral("TEL:+15550101"), QStringLiteral("END:VCARD"),
        QStringLiteral("BEGIN:VENV"),    QStringLiteral("BEGIN:VCARD"),
        QStringLiteral("VERSION:2.1"),   QStringLiteral("TEL:+15550100"),
        QStringLiteral("END:VCARD"),     QStringLiteral("BEGIN:VENV"),
        QStringLiteral("BEGIN:VBODY"),   QStringLiteral("X-SMS;TYPE=TEXT;CHARSET=UTF-8:Hello"),
        QStringLiteral("END:VBODY"),     QStringLiteral("END:VENV"),
        QStringLiteral("END:VENV"),      QStringLiteral("END:VMSG")};
    const QString text = VMessageEncoder().encode(info).vMessage;
    QCOMPARE(text.mid(text.indexOf(QStringLiteral("BEGIN:VCARD"))), withLineEnds(lines));
}

void TestVMessageEncoder::aMessageWithoutNumbersHasNoVCard()
{
    SmsInfo info = sentMessage();
    info.toNumber.clear();
    info.body.clear();
    QCOMPARE(VMessageEncoder().encode(info).vMessage,
             QStringLiteral("BEGIN:VMSG\r\n"
                            "VERSION:1.1\r\n"
                            "X-IRMC-STATUS:READ\r\n"
                            "X-IRMC-BOX:SENT\r\n"
                            "X-IRMC-TYPE:SMS\r\n"
                            "X-MDO-TIMESTAMP:20101103T142530Z\r\n"
                            "X-QLT-DT:20101103T142530Z\r\n"
                            "BEGIN:VENV\r\n"
                            "BEGIN:VBODY\r\n"
                            "X-SMS;TYPE=TEXT;CHARSET=UTF-8:\r\n"
                            "END:VBODY\r\n"
                            "END:VENV\r\n"
                            "END:VMSG\r\n"));
}

void TestVMessageEncoder::aMessageWithoutTimeHasABlankLine()
{
    QCOMPARE(VMessageEncoder().encode(SmsInfo()).vMessage,
             QStringLiteral("BEGIN:VMSG\r\n"
                            "VERSION:1.1\r\n"
                            "X-IRMC-STATUS:\r\n"
                            "X-IRMC-BOX:\r\n"
                            "X-IRMC-TYPE:SMS\r\n"
                            "\r\n"
                            "BEGIN:VENV\r\n"
                            "BEGIN:VBODY\r\n"
                            "X-SMS;TYPE=TEXT;CHARSET=UTF-8:\r\n"
                            "END:VBODY\r\n"
                            "END:VENV\r\n"
                            "END:VMSG\r\n"));
}

void TestVMessageEncoder::theBoxFollowsTheFolder_data()
{
    QTest::addColumn<int>("parentId");
    QTest::addColumn<QString>("line");
    QTest::newRow("inbox") << 4098 << QStringLiteral("X-IRMC-BOX:INBOX");
    QTest::newRow("outbox") << 4099 << QStringLiteral("X-IRMC-BOX:OUTBOX");
    QTest::newRow("drafts") << 4100 << QStringLiteral("X-IRMC-BOX:DRAFTS");
    QTest::newRow("sent") << 4101 << QStringLiteral("X-IRMC-BOX:SENT");
    QTest::newRow("none") << 0 << QStringLiteral("X-IRMC-BOX:");
    QTest::newRow("own") << 4104 << QStringLiteral("X-IRMC-BOX:MYFOLDERS");
    QTest::newRow("4102") << 4102 << QStringLiteral("X-IRMC-BOX:MYFOLDERS");
    QTest::newRow("4097") << 4097 << QStringLiteral("X-IRMC-BOX:MYFOLDERS");
    QTest::newRow("above") << 5000 << QStringLiteral("X-IRMC-BOX:MYFOLDERS");
    QTest::newRow("negative") << -1 << QStringLiteral("X-IRMC-BOX:MYFOLDERS");
}

void TestVMessageEncoder::theBoxFollowsTheFolder()
{
    QFETCH(int, parentId);
    QFETCH(QString, line);
    SmsInfo info = sentMessage();
    info.parentId = parentId;
    const SyncSmsInfo result = VMessageEncoder().encode(info);
    QCOMPARE(result.vMessage.split(QStringLiteral("\r\n")).value(3), line);
    QCOMPARE(result.parentId, parentId);
}

void TestVMessageEncoder::theStampIsInUtcAndTheTimeTextInItsOwnZone()
{
    SmsInfo info = sentMessage();
    info.time = QDateTime(QDate(2010, 11, 3), QTime(14, 25, 30), Qt::OffsetFromUTC, 7200);
    const SyncSmsInfo result = VMessageEncoder().encode(info);
    const QStringList lines = result.vMessage.split(QStringLiteral("\r\n"));
    QCOMPARE(lines.value(5), QStringLiteral("X-MDO-TIMESTAMP:20101103T122530Z"));
    QCOMPARE(lines.value(6), QStringLiteral("X-QLT-DT:20101103T122530Z"));
    QCOMPARE(result.time, QStringLiteral("Wed Nov 3 14:25:30 2010 GMT+0200"));
}

void TestVMessageEncoder::aLocalTimeIsStampedInUtc()
{
    const TimeZone zone("Europe/Helsinki");
    SmsInfo info = sentMessage();
    info.time = QDateTime(QDate(2010, 11, 3), QTime(14, 25, 30));
    const SyncSmsInfo result = VMessageEncoder().encode(info);
    QVERIFY(result.vMessage.contains(QStringLiteral("\r\nX-QLT-DT:20101103T122530Z\r\n")));
    QCOMPARE(result.time, QStringLiteral("Wed Nov 3 14:25:30 2010"));
}

// Qt takes the clock reading of such a time for one in UTC.
void TestVMessageEncoder::aLocalTimeThatIsSkippedIsStampedAsQtConvertsIt()
{
    const TimeZone zone("Europe/Helsinki");
    SmsInfo info = sentMessage();
    info.time = QDateTime(QDate(2002, 3, 31), QTime(3, 30, 15));
    QVERIFY(!info.time.isValid());
    const QStringList lines = VMessageEncoder().encode(info).vMessage.split(QStringLiteral("\r\n"));
    QCOMPARE(lines.value(5), QStringLiteral("X-MDO-TIMESTAMP:20020331T033015Z"));
    QCOMPARE(lines.value(6), QStringLiteral("X-QLT-DT:20020331T033015Z"));
}

void TestVMessageEncoder::aTimeWithoutADateHasEmptyStamps()
{
    SmsInfo info = sentMessage();
    info.time = QDateTime(QDate(), QTime(3, 30));
    QVERIFY(!info.time.isNull());
    const QStringList lines = VMessageEncoder().encode(info).vMessage.split(QStringLiteral("\r\n"));
    QCOMPARE(lines.value(5), QStringLiteral("X-MDO-TIMESTAMP:"));
    QCOMPARE(lines.value(6), QStringLiteral("X-QLT-DT:"));
    QCOMPARE(lines.value(7), QStringLiteral("BEGIN:VENV"));
}

void TestVMessageEncoder::theStatusIsWrittenAsItStands()
{
    SmsInfo info = sentMessage();
    info.readStatus = QStringLiteral("odd Status");
    QVERIFY(VMessageEncoder().encode(info).vMessage.contains(
        QStringLiteral("\r\nX-IRMC-STATUS:odd Status\r\n")));
}

void TestVMessageEncoder::theResultCarriesIdsAndToken()
{
    const SyncSmsInfo result = VMessageEncoder().encode(sentMessage());
    QCOMPARE(result.id, 12);
    QCOMPARE(result.parentId, 4101);
    QCOMPARE(result.time, QStringLiteral("Wed Nov 3 14:25:30 2010 GMT"));
    QCOMPARE(result.messageToken, QStringLiteral("token-1"));

    const SyncSmsInfo empty = VMessageEncoder().encode(SmsInfo());
    QCOMPARE(empty.id, -1);
    QCOMPARE(empty.parentId, 0);
    QVERIFY(empty.time.isEmpty());
    QVERIFY(empty.messageToken.isEmpty());
}

void TestVMessageEncoder::carriageReturnsAreRemovedWithOneLine()
{
    MessageLog log;
    SmsInfo info = sentMessage();
    info.body = QStringLiteral("a\r\nb\rc\r\r");
    QCOMPARE(bodyProperty(info), QStringLiteral("X-SMS;TYPE=TEXT;CHARSET=UTF-8:a\nbc\r\n"));
    QCOMPARE(log.linesFrom(QtDebugMsg, removingLine), QStringList(removingLine));

    log.clear();
    info.body = QStringLiteral("a\nb");
    QCOMPARE(bodyProperty(info), QStringLiteral("X-SMS;TYPE=TEXT;CHARSET=UTF-8:a\nb\r\n"));
    QCOMPARE(log.linesFrom(QtDebugMsg, removingLine), QStringList());
}

void TestVMessageEncoder::bodiesAreWrittenAsTheyStand_data()
{
    QTest::addColumn<QString>("body");
    QTest::newRow("empty") << QString();
    QTest::newRow("a-diaeresis") << QStringLiteral("\u00E4");
    QTest::newRow("emoji") << QStringLiteral("\U0001F600");
    QTest::newRow("equals-and-semicolon") << QStringLiteral("a=b;c:d=20");
    QTest::newRow("line-feeds") << QStringLiteral("\none\n\ntwo\n");
    QTest::newRow("like-structure") << QStringLiteral("x\nEND:VBODY\nEND:VMSG\nBEGIN:VMSG");
    QTest::newRow("place-holders") << QStringLiteral("%1 %2 %L1");
    QTest::newRow("longer-than-a-line") << QString(3000, QLatin1Char('x'));
    QTest::newRow("zero") << QString(QLatin1Char('\0'));
}

void TestVMessageEncoder::bodiesAreWrittenAsTheyStand()
{
    QFETCH(QString, body);
    SmsInfo info = sentMessage();
    info.body = body;
    QCOMPARE(bodyProperty(info),
             QStringLiteral("X-SMS;TYPE=TEXT;CHARSET=UTF-8:") + body + QStringLiteral("\r\n"));
}

void TestVMessageEncoder::numbersAreWrittenAsTheyStand()
{
    SmsInfo info = sentMessage();
    info.toNumber = QStringLiteral(" (555) 01-00 %1;Bank24");
    QVERIFY(VMessageEncoder().encode(info).vMessage.contains(
        QStringLiteral("\r\nTEL: (555) 01-00 %1;Bank24\r\n")));
}

void TestVMessageEncoder::aTextThatFitsItsRoomIsNotMoved_data()
{
    QTest::addColumn<int>("length");
    QTest::newRow("short") << 400;
    QTest::newRow("room-half-used") << 826;
    QTest::newRow("all-room-used") << 1024;
}

void TestVMessageEncoder::aTextThatFitsItsRoomIsNotMoved()
{
    QFETCH(int, length);
    SmsInfo info = sentMessage();
    info.fromNumber = QStringLiteral("+15550101");
    VMessageEncoder encoder;
    // What encodeHeader() and encodeBody() leave for the two vCards is written before the body.
    QString text;
    text.reserve(1024);
    const QChar *const place = text.constData();
    encoder.encodeHeader(info, text);
    encoder.encodeVCardData(info.fromNumber, text);
    encoder.encodeVCardData(info.toNumber, text);
    QString empty;
    SmsInfo withoutText = info;
    withoutText.body.clear();
    encoder.encodeBody(withoutText, empty);
    info.body = QString(length - int(text.size() + empty.size()), QLatin1Char('x'));
    encoder.encodeBody(info, text);
    QCOMPARE(int(text.size()), length);
    QVERIFY(text.constData() == place);
}

void TestVMessageEncoder::oneEncoderServesManyMessages()
{
    VMessageEncoder encoder;
    const auto closings = [&encoder](const SmsInfo &info) {
        return encoder.encode(info).vMessage.count(QStringLiteral("END:VENV\r\n"));
    };
    QCOMPARE(int(closings(sentMessage())), 2);
    QCOMPARE(int(closings(receivedMessage())), 1);
    QCOMPARE(int(closings(sentMessage())), 2);
}

void TestVMessageEncoder::thePiecesAppend()
{
    VMessageEncoder encoder;
    QString text = QStringLiteral("kept|");
    encoder.encodeVCardData(QStringLiteral("5550100"), text);
    QCOMPARE(text,
             QStringLiteral("kept|BEGIN:VCARD\r\nVERSION:2.1\r\nTEL:5550100\r\nEND:VCARD\r\n"));
    text = QStringLiteral("kept|");
    encoder.encodeBody(sentMessage(), text);
    QCOMPARE(text,
             QStringLiteral("kept|BEGIN:VENV\r\nBEGIN:VBODY\r\n"
                            "X-SMS;TYPE=TEXT;CHARSET=UTF-8:Hello\r\nEND:VBODY\r\nEND:VENV\r\n"));
    text = QStringLiteral("kept|");
    encoder.encodeHeader(SmsInfo(), text);
    QCOMPARE(text,
             QStringLiteral("kept|BEGIN:VMSG\r\nVERSION:1.1\r\nX-IRMC-STATUS:\r\nX-IRMC-BOX:\r\n"
                            "X-IRMC-TYPE:SMS\r\n\r\n"));
}

void TestVMessageEncoder::theTraceNamesTheOperationAndTheVCards()
{
    MessageLog log;
    SmsInfo info = sentMessage();
    info.fromNumber = QStringLiteral("+15550101");
    info.body = QStringLiteral("a\rb");
    VMessageEncoder().encode(info);
    QCOMPARE(log.lines(QtDebugMsg),
             QStringList({encodeSignature, QStringLiteral("fromVCard :  \"+15550101\""),
                          QStringLiteral("toVCard : \"+15550100\""), removingLine}));
}

QTEST_GUILESS_MAIN(TestVMessageEncoder)
#include "tst_vmessageencoder.moc"
