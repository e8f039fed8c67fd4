// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "clientprocess.h"

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

// What the files of phones and backup programs become.
class TestMessageFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void addsTheSamples();
    void foretellsTheSamples();
    void findsTheSamplesPresent();
    void readsBothByteOrders_data();
    void readsBothByteOrders();
    void settlesFolderAndNumber_data();
    void settlesFolderAndNumber();
    void settlesTheReadStatus_data();
    void settlesTheReadStatus();
    void takesTheFirstBelievableTime_data();
    void takesTheFirstBelievableTime();
    void takesTimesInTheZoneThatIsSaid_data();
    void takesTimesInTheZoneThatIsSaid();
    void givesEveryTextBack_data();
    void givesEveryTextBack();
    void givesAWholeStoreBackByteForByte();
};

static QByteArray expected(const char *name)
{
    QFile file(QStringLiteral(EXPECTED_DIRECTORY "/") + QLatin1String(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no such file");
}

static const QStringList addSamples{QStringLiteral("add"), QStringLiteral("-o"),
                                    QStringLiteral("ndjson"), QStringLiteral(".")};

void TestMessageFiles::addsTheSamples()
{
    ClientProcess client;
    client.workingDirectory = QStringLiteral(SAMPLES_DIRECTORY);
    const auto outcome = client.run(addSamples);
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.output.split('\n'), expected("samples-added.ndjson").split('\n'));
    QCOMPARE(client.listed().split('\n'), expected("samples-listed.ndjson").split('\n'));
}

void TestMessageFiles::foretellsTheSamples()
{
    ClientProcess client;
    client.workingDirectory = QStringLiteral(SAMPLES_DIRECTORY);
    const auto outcome = client.run(addSamples + QStringList{QStringLiteral("-n")});
    QByteArray withoutIds;
    for (QByteArray line : expected("samples-added.ndjson").split('\n')) {
        const auto start = line.indexOf(",\"id\":");
        if (start > 0)
            line = line.left(start) + '}';
        withoutIds += line + '\n';
    }
    withoutIds.chop(1);
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.output.split('\n'), withoutIds.split('\n'));
    QVERIFY(!QFile::exists(client.store()));
}

void TestMessageFiles::findsTheSamplesPresent()
{
    ClientProcess client;
    client.workingDirectory = QStringLiteral(SAMPLES_DIRECTORY);
    client.run(addSamples);
    const QByteArray before = client.listed();
    const auto again = client.run(addSamples);
    QVERIFY(again.output.endsWith("{\"summary\":{\"read\":51,\"added\":0,\"present\":43,"
                                  "\"refused\":8,\"failed\":0,\"passed over\":1}}\n"));
    QCOMPARE(client.listed(), before);
}

void TestMessageFiles::readsBothByteOrders_data()
{
    QTest::addColumn<bool>("bigEndian");
    QTest::addColumn<bool>("marked");
    QTest::newRow("little") << false << false;
    QTest::newRow("little-marked") << false << true;
    QTest::newRow("big") << true << false;
    QTest::newRow("big-marked") << true << true;
}

void TestMessageFiles::readsBothByteOrders()
{
    QFETCH(bool, bigEndian);
    QFETCH(bool, marked);
    const QString message = QString::fromUtf8(vMessage("INBOX", "20101103T142530Z", "+15550100",
                                                       "Gr\xC3\xBC\xC3\x9F"
                                                       "e \xF0\x9F\x98\x80"));
    QByteArray file;
    for (const QChar c : (marked ? QString(QChar(QChar::ByteOrderMark)) : QString()) + message) {
        const char high = static_cast<char>(c.unicode() >> 8);
        const char low = static_cast<char>(c.unicode() & 0xFF);
        file += bigEndian ? high : low;
        file += bigEndian ? low : high;
    }
    file += 'x'; // cut at an odd byte
    ClientProcess client;
    client.fill(file);
    QCOMPARE(client.listed(),
             QByteArray("{\"id\":1,\"folder\":\"inbox\",\"number\":\"+15550100\","
                        "\"time\":\"2010-11-03T14:25:30Z\",\"read\":true,"
                        "\"body\":\"Gr\xC3\xBC\xC3\x9F"
                        "e \xF0\x9F\x98\x80\"}\n"));
}

void TestMessageFiles::settlesFolderAndNumber_data()
{
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<QByteArray>("originator");
    QTest::addColumn<QByteArray>("recipient");
    QTest::addColumn<QByteArray>("result"); // folder and number, or the code
    const auto row = [](const char *name, const char *header, const char *originator,
                        const char *recipient, const char *result) {
        QTest::newRow(name) << QByteArray(header) << QByteArray(originator) << QByteArray(recipient)
                            << QByteArray(result);
    };
    row("inbox", "X-IRMC-BOX:INBOX", "+15550100", "", "inbox +15550100");
    row("inbox-both", "X-IRMC-BOX:INBOX", "+15550100", "+15550199", "inbox +15550100");
    row("inbox-moved", "X-IRMC-BOX:INBOX", "", "+15550100", "inbox +15550100");
    row("inbox-lower-case", "x-irmc-box:inbox", "+15550100", "", "inbox +15550100");
    row("sent", "X-IRMC-BOX:SENT", "", "+15550100", "sent +15550100");
    row("sent-both", "X-IRMC-BOX:SENT", "+15550199", "+15550100", "sent +15550100");
    row("sent-moved", "X-IRMC-BOX:SENT", "+15550100", "", "sent +15550100");
    row("sendbox", "X-IRMC-BOX:SENDBOX", "+15550100", "", "sent +15550100");
    row("sentbox", "X-IRMC-BOX:SENTBOX", "+15550100", "", "sent +15550100");
    row("outbox", "X-IRMC-BOX:OUTBOX", "", "+15550100", "outbox +15550100");
    row("my-folders", "X-IRMC-BOX:MYFOLDERS", "+15550100", "", "my +15550100");
    row("deliver", "X-MESSAGE-TYPE:DELIVER", "+15550100", "", "inbox +15550100");
    row("submit", "X-MESSAGE-TYPE:SUBMIT", "+15550100", "", "sent +15550100");
    row("type-1", "X-MESSAGE-TYPE: 1", "+15550100", "", "inbox +15550100");
    row("type-2", "X-MESSAGE-TYPE: 2", "+15550100", "", "sent +15550100");
    row("box-before-type", "X-IRMC-BOX:INBOX\r\nX-MESSAGE-TYPE:SUBMIT", "+15550100", "",
        "inbox +15550100");
    row("status-sent", "X-IRMC-STATUS:SENT", "+15550100", "", "sent +15550100");
    row("word", "X-IRMC-BOX:INBOX", "InfoPost", "", "inbox InfoPost");
    row("word-not-ascii", "X-IRMC-BOX:INBOX", "B\xC3\xA4nk", "", "inbox B\xC3\xA4nk");
    row("draft", "X-IRMC-BOX:DRAFT", "+15550100", "", "sms-draft");
    row("drafts", "X-IRMC-BOX:DRAFTS", "+15550100", "", "sms-draft");
    row("status-draft", "X-IRMC-STATUS:DRAFT", "+15550100", "", "sms-draft");
    row("no-box", "X-IRMC-STATUS:READ", "+15550100", "", "sms-no-folder");
    row("empty-box", "X-IRMC-BOX:", "+15550100", "", "sms-no-folder");
    row("unknown-box", "X-IRMC-BOX:ARCHIVE", "+15550100", "", "sms-no-folder");
    row("no-number", "X-IRMC-BOX:INBOX", "", "", "sms-no-number");
    row("mail", "X-IRMC-BOX:INBOX\r\nX-IRMC-TYPE:INET", "+15550100", "", "foreign-object");
    row("mms", "X-IRMC-BOX:INBOX\r\nX-IRMC-TYPE:MMS", "+15550100", "", "mms-not-supported");
    row("two-recipients", "X-IRMC-BOX:SENT", "",
        "+15550100\r\nEND:VCARD\r\nBEGIN:VCARD\r\nVERSION:2.1\r\nTEL:+15550101",
        "too-many-recipients");
}

void TestMessageFiles::settlesFolderAndNumber()
{
    QFETCH(QByteArray, header);
    QFETCH(QByteArray, originator);
    QFETCH(QByteArray, recipient);
    QFETCH(QByteArray, result);
    const auto card = [](const QByteArray &number) {
        return "BEGIN:VCARD\r\nVERSION:2.1\r\nTEL:" + number + "\r\nEND:VCARD\r\n";
    };
    const QByteArray message = "BEGIN:VMSG\r\nVERSION:1.1\r\n" + header
        + "\r\nX-ABC-DT:20101103T142530Z\r\n" + card(originator) + "BEGIN:VENV\r\n"
        + (recipient.isEmpty() ? QByteArray() : card(recipient))
        + "BEGIN:VENV\r\nBEGIN:VBODY\r\nHello\r\nEND:VBODY\r\nEND:VENV\r\nEND:VENV\r\nEND:VMSG\r\n";
    ClientProcess client;
    const auto outcome = client.run({text("add"), text("-o"), text("ndjson"), text("-q")}, message);
    if (!result.contains(' ')) {
        QCOMPARE(outcome.exitCode, 1);
        QVERIFY2(
            outcome.output.startsWith(
                "{\"ref\":0,\"src\":\"-:1\",\"status\":\"refused\",\"code\":\"" + result + "\","),
            outcome.output);
        return;
    }
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output,
             QByteArray("{\"ref\":0,\"src\":\"-:1\",\"status\":\"added\",\"id\":1}\n"));
    const QList<QByteArray> words = result.split(' ');
    QVERIFY2(client.listed().startsWith("{\"id\":1,\"folder\":\"" + words.at(0) + "\",\"number\":\""
                                        + words.at(1) + "\","),
             client.listed());
}

void TestMessageFiles::settlesTheReadStatus_data()
{
    QTest::addColumn<QByteArray>("box");
    QTest::addColumn<QByteArray>("status");
    QTest::addColumn<bool>("read");
    QTest::newRow("inbox-read") << QByteArray("INBOX") << QByteArray("READ") << true;
    QTest::newRow("inbox-unread") << QByteArray("INBOX") << QByteArray("UNREAD") << false;
    QTest::newRow("inbox-1") << QByteArray("INBOX") << QByteArray("1") << true;
    QTest::newRow("inbox-0") << QByteArray("INBOX") << QByteArray("0") << false;
    QTest::newRow("inbox-none") << QByteArray("INBOX") << QByteArray() << false;
    QTest::newRow("sent-none") << QByteArray("SENT") << QByteArray() << true;
    QTest::newRow("sent-sent") << QByteArray("SENT") << QByteArray("SENT") << true;
    QTest::newRow("sent-unread") << QByteArray("SENT") << QByteArray("UNREAD") << false;
}

void TestMessageFiles::settlesTheReadStatus()
{
    QFETCH(QByteArray, box);
    QFETCH(QByteArray, status);
    QFETCH(bool, read);
    ClientProcess client;
    client.fill(vMessage(box, "20101103T142530Z", "+15550100", "Hello", status));
    QVERIFY2(client.listed().contains(read ? "\"read\":true" : "\"read\":false"), client.listed());
}

void TestMessageFiles::takesTheFirstBelievableTime_data()
{
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<QByteArray>("date");
    QTest::addColumn<QByteArray>("time"); // empty = bad-time
    const auto row = [](const char *name, const char *header, const char *date, const char *time) {
        QTest::newRow(name) << QByteArray(header) << QByteArray(date) << QByteArray(time);
    };
    row("header", "20101103T142530Z", "04.11.2010 14:25:30", "2010-11-03T14:25:30Z");
    row("date-line", "", "03.11.2010 14:25:30", "2010-11-03T12:25:30Z");
    row("header-none", "19700000T000000Z", "03.11.2010 14:25:30", "2010-11-03T12:25:30Z");
    row("header-too-old", "19800106T000000Z", "03.11.2010 14:25:30", "2010-11-03T12:25:30Z");
    row("header-to-come", "29991231T000000Z", "03.11.2010 14:25:30", "2010-11-03T12:25:30Z");
    row("neither", "", "", "");
    row("both-none", "19700000T000000Z", "01.01.1970 00:00:00", "");
    row("unreadable", "soon", "later", "");
    row("before-1990", "19891231T235959Z", "", "");
    row("since-1990", "19900101T000000Z", "", "1990-01-01T00:00:00Z");
    row("to-come", "29991231T000000Z", "", "");
}

void TestMessageFiles::takesTheFirstBelievableTime()
{
    QFETCH(QByteArray, header);
    QFETCH(QByteArray, date);
    QFETCH(QByteArray, time);
    QByteArray message = vMessage("INBOX", header, "+15550100", "Hello");
    if (!date.isEmpty())
        message.replace("BEGIN:VBODY\r\n", "BEGIN:VBODY\r\nDate: " + date + "\r\n");
    ClientProcess client;
    const auto outcome = client.run({text("add"), text("-o"), text("ndjson")}, message);
    if (time.isEmpty()) {
        QCOMPARE(outcome.exitCode, 1);
        QVERIFY2(outcome.output.contains("\"code\":\"bad-time\""), outcome.output);
        QVERIFY(!QFile::exists(client.store()));
    } else {
        QCOMPARE(outcome.exitCode, 0);
        QVERIFY2(client.listed().contains("\"time\":\"" + time + '"'), client.listed());
    }
}

void TestMessageFiles::takesTimesInTheZoneThatIsSaid_data()
{
    QTest::addColumn<QByteArray>("date");
    QTest::addColumn<QString>("zone"); // empty = none is said
    QTest::addColumn<QByteArray>("time");
    const auto row = [](const char *name, const char *date, const char *zone, const char *time) {
        QTest::newRow(name) << QByteArray(date) << text(zone) << QByteArray(time);
    };
    row("own", "03.11.2010 14:25:30", "", "2010-11-03T12:25:30Z");
    row("winter", "03.11.2010 14:25:30", "America/New_York", "2010-11-03T18:25:30Z");
    row("summer", "03.07.2010 14:25:30", "Europe/Berlin", "2010-07-03T12:25:30Z");
    row("utc", "03.11.2010 14:25:30", "UTC", "2010-11-03T14:25:30Z");
    row("with-a-zone", "2010/11/03 14:25:30 GMT", "Asia/Kathmandu", "2010-11-03T14:25:30Z");
    row("count", "1288794330000", "Asia/Kathmandu", "2010-11-03T14:25:30Z");
    row("unknown", "03.11.2010 14:25:30", "Mars/Olympus", "");
}

void TestMessageFiles::takesTimesInTheZoneThatIsSaid()
{
    QFETCH(QByteArray, date);
    QFETCH(QString, zone);
    QFETCH(QByteArray, time);
    QByteArray message = vMessage("INBOX", "", "+15550100", "Hello");
    message.replace("BEGIN:VBODY\r\n", "BEGIN:VBODY\r\nDate: " + date + "\r\n");
    QStringList arguments{text("add")};
    if (!zone.isEmpty())
        arguments += QStringList{text("--assume-tz"), zone};
    ClientProcess client;
    const auto outcome = client.run(arguments, message);
    QCOMPARE(outcome.exitCode, time.isEmpty() ? 2 : 0);
    if (time.isEmpty()) {
        QCOMPARE(outcome.errors,
                 "korvasync: --assume-tz names no time zone: " + zone.toUtf8()
                     + "; name one such as Europe/Helsinki\n");
        QVERIFY(!QFile::exists(client.store()));
    } else {
        QVERIFY2(client.listed().contains("\"time\":\"" + time + '"'), client.listed());
    }
}

static QList<QPair<const char *, QByteArray>> nastyTexts()
{
    return {
        {"empty", ""},
        {"blank", " "},
        {"line-feed-alone", "\n"},
        {"line-feeds-around", "\n\nmiddle\n\n"},
        {"tab-and-controls", "a\tb\x01\x1B[31mred\x7F"},
        {"end-of-body", "END:VBODY"},
        {"end-of-all", "x\nEND:VBODY\nEND:VENV\nEND:VMSG"},
        {"whole-message",
         "x\nEND:VBODY\nEND:VENV\nEND:VMSG\nBEGIN:VMSG\nX-IRMC-BOX:INBOX\nBEGIN:VENV\nBEGIN:"
         "VBODY\nforged\n"
         "END:VBODY\nEND:VENV\nEND:VMSG\nrest"},
        {"date-line", "Date: 01.02.2003 04:05:06\ntext"},
        {"quoted-printable", "=41=42=\n=C3=A4"},
        {"property", "TEL:+15550199\nX-IRMC-BOX:SENT"},
        {"quotes", "\"quoted\" 'n \\ back\\slash"},
        {"umlauts", "\xC3\xA4\xC3\xB6\xC3\xBC\xC3\x9F"},
        {"emoji", "\xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x91\xA7\xF0\x9F\x91\x8D\xF0\x9F\x8F\xBD"},
        {"arabic", "\xD9\x85\xD8\xB1\xD8\xAD\xD8\xA8\xD8\xA7"},
        {"separators",
         "a\xE2\x80\xA8"
         "b\xC2\x85"
         "c\xE2\x80\xAE"
         "d"},
        {"not-a-character", "\xEF\xBF\xBE\xEF\xBF\xBD"},
        {"long", QByteArray(100000, 'x')},
    };
}

void TestMessageFiles::givesEveryTextBack_data()
{
    QTest::addColumn<QByteArray>("body");
    for (const auto &nasty : nastyTexts())
        QTest::newRow(nasty.first) << nasty.second;
}

void TestMessageFiles::givesEveryTextBack()
{
    QFETCH(QByteArray, body);
    ClientProcess client;
    client.fill(vMessage("INBOX", "20101103T142530Z", "+15550100", body));
    const auto shown = client.run({text("show"), text("1")});
    QCOMPARE(shown.exitCode, 0);
    QCOMPARE(shown.output,
             QByteArray("BEGIN:VMSG\r\nVERSION:1.1\r\nX-IRMC-STATUS:READ\r\nX-IRMC-BOX:INBOX\r\n"
                        "X-IRMC-TYPE:SMS\r\nX-MDO-TIMESTAMP:20101103T142530Z\r\n"
                        "X-QLT-DT:20101103T142530Z\r\nBEGIN:VCARD\r\nVERSION:2.1\r\n"
                        "TEL:+15550100\r\nEND:VCARD\r\nBEGIN:VENV\r\nBEGIN:VBODY\r\n"
                        "X-SMS;TYPE=TEXT;CHARSET=UTF-8:")
                 + body + "\r\nEND:VBODY\r\nEND:VENV\r\nEND:VMSG\r\n");
}

void TestMessageFiles::givesAWholeStoreBackByteForByte()
{
    QByteArray messages;
    int minute = 0;
    for (const auto &nasty : nastyTexts()) {
        const QByteArray stamp = "20101103T14" + QByteArray::number(10 + minute++) + "00Z";
        messages += vMessage("INBOX", stamp, "+15550100", nasty.second);
        messages += vMessage("SENT", stamp, "B\xC3\xA4nk", nasty.second, "UNREAD");
        messages += vMessage("MYFOLDERS", stamp, "+15550101", nasty.second);
        messages += vMessage("OUTBOX", stamp, "+15550101", nasty.second);
        messages += vMessage("OUTBOX", stamp, "+15550101", nasty.second); // a true repeat
    }
    ClientProcess first;
    first.fill(messages);
    const QStringList listAll{text("list"), text("-o"), text("vmsg")};
    const QByteArray all = first.run(listAll).output;
    QCOMPARE(all.count("X-MDO-TIMESTAMP:"), messages.count("X-ABC-DT:"));

    ClientProcess second;
    second.fill(all);
    QCOMPARE(second.run(listAll).output, all);
}

QTEST_GUILESS_MAIN(TestMessageFiles)
#include "tst_messagefiles.moc"
