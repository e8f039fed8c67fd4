// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "clientprocess.h"

#include <QtCore/QMap>
#include <QtTest/QTest>

// The forms of other programs: csv, mbox and android-xml.
class TestExport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void printsCsv();
    void quotesInCsvWhatMustBe_data();
    void quotesInCsvWhatMustBe();
    void leavesFormulasInCsvTrue();
    void printsAMailbox();
    void namesPartiesOfAnyScriptInMail_data();
    void namesPartiesOfAnyScriptInMail();
    void tellsPartiesOfMailApart();
    void namesTheOtherInTheSubject_data();
    void namesTheOtherInTheSubject();
    void encodesBodiesOfMail_data();
    void encodesBodiesOfMail();
    void keepsMailIdsOfAnyStore();
    void printsAndroidXml();
    void escapesInXml_data();
    void escapesInXml();
    void tellsOfCharactersThatXmlCannotHold();
    void printsCallsAsAndroidXml();
    void comesBackFromAndroidXml();
    void comesBackFromAndroidXmlWithCalls();
    void showsMessagesInEachForm();
    void printsFormsOfNothing_data();
    void printsFormsOfNothing();
    void printsNoIdsInForms_data();
    void printsNoIdsInForms();

private:
    ClientProcess client;
};

static const QByteArray inbox =
    vMessage("INBOX", "20101103T142530Z", "+15550100", "Tea at four?", "UNREAD");
static const QByteArray sent =
    vMessage("SENT", "20101103T142531Z", "555 01 00", "Yes, \"gladly\"\nFrom Ada");
static const QByteArray my =
    vMessage("MYFOLDERS", "20091103T142530Z", "B\xC3\xA4nk", "Your parcel \xF0\x9F\x8E\x81");
static const QByteArray outbox = vMessage("OUTBOX", "20111103T142530Z", "+15550101", "tea?");

void TestExport::initTestCase() { client.fill(inbox + sent + my + outbox + outbox); }

static QStringList list(const char *format) { return {text("list"), text("-o"), text(format)}; }

static const QByteArray csvHead = "id,folder,number,time,read,body\r\n";

void TestExport::printsCsv()
{
    const auto outcome = client.run(list("csv"));
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output,
             csvHead
                 + "3,my,B\xC3\xA4nk,2009-11-03T14:25:30Z,true,Your parcel \xF0\x9F\x8E\x81\r\n"
                   "1,inbox,+15550100,2010-11-03T14:25:30Z,false,Tea at four?\r\n"
                   "2,sent,555 01 00,2010-11-03T14:25:31Z,true,\"Yes, \"\"gladly\"\"\n"
                   "From Ada\"\r\n"
                   "4,outbox,+15550101,2011-11-03T14:25:30Z,true,tea?\r\n"
                   "5,outbox,+15550101,2011-11-03T14:25:30Z,true,tea?\r\n");
    QCOMPARE(outcome.errors, QByteArray());
}

void TestExport::quotesInCsvWhatMustBe_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QByteArray>("field");
    QTest::newRow("plain") << QByteArray(" a; b\tc' ") << QByteArray(" a; b\tc' ");
    QTest::newRow("comma") << QByteArray("a,b") << QByteArray("\"a,b\"");
    QTest::newRow("quotes") << QByteArray("\"") << QByteArray("\"\"\"\"");
    QTest::newRow("line-end") << QByteArray("a\n") << QByteArray("\"a\n\"");
    QTest::newRow("empty") << QByteArray() << QByteArray();
}

void TestExport::quotesInCsvWhatMustBe()
{
    QFETCH(QByteArray, body);
    QFETCH(QByteArray, field);
    ClientProcess other;
    other.fill(vMessage("INBOX", "20101103T142530Z", "+15550100", body));
    QCOMPARE(other.run(list("csv")).output,
             csvHead + "1,inbox,+15550100,2010-11-03T14:25:30Z,true," + field + "\r\n");
}

// A mark that keeps spreadsheets from calculating would be in the data for every other reader.
void TestExport::leavesFormulasInCsvTrue()
{
    ClientProcess other;
    other.fill(vMessage("INBOX", "20101103T142530Z", "+15550100", "=1+1")
               + vMessage("INBOX", "20101103T142531Z", "-15550100", "@SUM(A1)"));
    QCOMPARE(other.run(list("csv")).output,
             csvHead
                 + "1,inbox,+15550100,2010-11-03T14:25:30Z,true,=1+1\r\n"
                   "2,inbox,-15550100,2010-11-03T14:25:31Z,true,@SUM(A1)\r\n");
}

static const QByteArray mailEncoding = "MIME-Version: 1.0\n"
                                       "Content-Type: text/plain; charset=utf-8\n"
                                       "Content-Transfer-Encoding: quoted-printable\n"
                                       "\n";

static const QByteArray inboxMail = "From +15550100@number.invalid Wed Nov  3 14:25:30 2010\n"
                                    "From: \"+15550100\" <+15550100@number.invalid>\n"
                                    "To: me <me@phone.invalid>\n"
                                    "Subject: SMS with +15550100\n"
                                    "Date: Wed, 03 Nov 2010 14:25:30 +0000\n"
                                    "Message-ID: <411ccaae222a281ae2f03e22e3de4b9f@korvasync."
                                    "invalid>\n"
                                    "Keywords: inbox\n"
                                    "Status: O\n"
    + mailEncoding + "Tea at four?\n\n";

void TestExport::printsAMailbox()
{
    const auto outcome =
        client.run({text("list"), text("-o"), text("mbox"), text("--since"), text("2010-01-01")});
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output,
             inboxMail
                 + "From me@phone.invalid Wed Nov  3 14:25:31 2010\n"
                   "From: me <me@phone.invalid>\n"
                   "To: \"555 01 00\" <+15550100@number.invalid>\n"
                   "Subject: SMS with +15550100\n"
                   "Date: Wed, 03 Nov 2010 14:25:31 +0000\n"
                   "Message-ID: <f096dcc7592f1af26818421ce19a7d3e@korvasync.invalid>\n"
                   "In-Reply-To: <411ccaae222a281ae2f03e22e3de4b9f@korvasync.invalid>\n"
                   "References: <411ccaae222a281ae2f03e22e3de4b9f@korvasync.invalid>\n"
                   "Keywords: sent\n"
                   "Status: RO\n"
                 + mailEncoding
                 + "Yes, \"gladly\"\n"
                   "=46rom Ada\n\n"
                   "From me@phone.invalid Thu Nov  3 14:25:30 2011\n"
                   "From: me <me@phone.invalid>\n"
                   "To: \"+15550101\" <+15550101@number.invalid>\n"
                   "Subject: SMS with +15550101\n"
                   "Date: Thu, 03 Nov 2011 14:25:30 +0000\n"
                   "Message-ID: <3e751ef39c1acce2fe68aba27e5546ca@korvasync.invalid>\n"
                   "Keywords: outbox\n"
                   "Status: RO\n"
                 + mailEncoding
                 + "tea?\n\n"
                   "From me@phone.invalid Thu Nov  3 14:25:30 2011\n"
                   "From: me <me@phone.invalid>\n"
                   "To: \"+15550101\" <+15550101@number.invalid>\n"
                   "Subject: SMS with +15550101\n"
                   "Date: Thu, 03 Nov 2011 14:25:30 +0000\n"
                   "Message-ID: <3e751ef39c1acce2fe68aba27e5546ca.2@korvasync.invalid>\n"
                   "In-Reply-To: <3e751ef39c1acce2fe68aba27e5546ca@korvasync.invalid>\n"
                   "References: <3e751ef39c1acce2fe68aba27e5546ca@korvasync.invalid>\n"
                   "Keywords: outbox\n"
                   "Status: RO\n"
                 + mailEncoding + "tea?\n\n");
}

void TestExport::namesPartiesOfAnyScriptInMail_data()
{
    QTest::addColumn<QByteArray>("number");
    QTest::addColumn<QByteArray>("header");
    QTest::newRow("word") << QByteArray("Info.Post")
                          << QByteArray("\"Info.Post\" <Info%2EPost@number.invalid>");
    QTest::newRow("quotes") << QByteArray("a\"b\\c")
                            << QByteArray("\"a\\\"b\\\\c\" <a%22b%5Cc@number.invalid>");
    QTest::newRow("accents") << QByteArray("B\xC3\xA4nk")
                             << QByteArray("=?utf-8?B?QsOkbms=?= <B%C3%A4nk@number.invalid>");
    QTest::newRow("looks-encoded")
        << QByteArray("=?utf-8?Q?A?=")
        << QByteArray("=?utf-8?B?PT91dGYtOD9RP0E/PQ==?= <%3D%3Futf-8%3FQ%3FA%3F%3D@number."
                      "invalid>");
    // 46 bytes, the 45th of which is the first of a character.
    QTest::newRow("long") << QByteArray(44, 'a') + "\xC3\xA4"
                          << QByteArray(
                                 "=?utf-8?B?"
                                 "YWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWE"
                                 "=?=\n =?utf-8?B?w6Q=?= <"
                                 + QByteArray(44, 'a') + "%C3%A4@number.invalid>");
    QTest::newRow("very-long")
        << QByteArray(70, 'a')
        << QByteArray("=?utf-8?B?YWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFh?=\n "
                      "=?utf-8?B?YWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYQ==?= <"
                      + QByteArray(47, 'a') + ".6bd5e5034855a112@number.invalid>");
}

void TestExport::namesPartiesOfAnyScriptInMail()
{
    QFETCH(QByteArray, number);
    QFETCH(QByteArray, header);
    ClientProcess other;
    other.fill(vMessage("INBOX", "20101103T142530Z", number, "Hello"));
    const QByteArray mail = other.run(list("mbox")).output;
    const auto start = mail.indexOf("From: ") + 6;
    QCOMPARE(mail.mid(start, mail.indexOf("\nTo: ") - start), header);
}

// A number may be spelled in several ways, and different ones may end alike.
void TestExport::tellsPartiesOfMailApart()
{
    const QList<QByteArray> numbers{"+15550100", "+445550100",     "0155 501-00",
                                    "5550100",   "+1 (555) 01.00", "Info5550100",
                                    "+15550101", "555 01 01",      "+15550100"};
    const QList<QByteArray> parties{"+15550100", "+445550100", "+15550100",
                                    "5550100",   "+15550100",  "Info5550100",
                                    "+15550101", "+15550101",  "+15550100"};
    ClientProcess other;
    QByteArray messages;
    for (int i = 0; i < numbers.size(); ++i)
        messages += vMessage("INBOX", "20101103T14253" + QByteArray::number(i) + "Z", numbers.at(i),
                             "Hello");
    other.fill(messages);
    QMap<QByteArray, QByteArray> firstIds;
    QByteArray output = other.run(list("mbox")).output;
    const QList<QByteArray> mails = output.replace("\n\nFrom ", "\f").split('\f');
    QCOMPARE(mails.size(), parties.size());
    for (int i = 0; i < mails.size(); ++i) {
        const auto value = [&](const char *header) {
            const auto at = mails.at(i).indexOf(QByteArray("\n") + header + ": ");
            const auto start = at + static_cast<int>(qstrlen(header)) + 3;
            return at < 0 ? QByteArray()
                          : mails.at(i).mid(start, mails.at(i).indexOf('\n', start) - start);
        };
        const QByteArray party = parties.at(i);
        QCOMPARE(value("From"), '"' + numbers.at(i) + "\" <" + party + "@number.invalid>");
        QCOMPARE(value("Subject"), "SMS with " + party);
        QCOMPARE(value("In-Reply-To"), firstIds.value(party));
        QCOMPARE(value("References"), firstIds.value(party));
        if (!firstIds.contains(party))
            firstIds.insert(party, value("Message-ID"));
    }
}

void TestExport::namesTheOtherInTheSubject_data()
{
    QTest::addColumn<QByteArray>("number");
    QTest::addColumn<QByteArray>("subject");
    QTest::newRow("word") << QByteArray("Info Post") << QByteArray("SMS with Info Post");
    QTest::newRow("accents") << QByteArray("B\xC3\xA4nk")
                             << QByteArray("SMS with =?utf-8?B?QsOkbms=?=");
    QTest::newRow("short-code") << QByteArray("*100#") << QByteArray("SMS with *100#");
}

void TestExport::namesTheOtherInTheSubject()
{
    QFETCH(QByteArray, number);
    QFETCH(QByteArray, subject);
    ClientProcess other;
    other.fill(vMessage("INBOX", "20101103T142530Z", number, "Hello"));
    const QByteArray mail = other.run(list("mbox")).output;
    QVERIFY2(mail.contains("\nSubject: " + subject + "\nDate: "), mail);
}

void TestExport::encodesBodiesOfMail_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QByteArray>("encoded");
    const auto x = [](int count) { return QByteArray(count, 'x'); };
    QTest::newRow("equals-sign") << QByteArray("1=2") << QByteArray("1=3D2");
    QTest::newRow("emoji") << QByteArray("\xF0\x9F\x98\x80") << QByteArray("=F0=9F=98=80");
    QTest::newRow("control") << QByteArray("a\x01\x7F") << QByteArray("a=01=7F");
    QTest::newRow("blank-ends-line") << QByteArray("a \nb\t") << QByteArray("a=20\nb=09");
    QTest::newRow("lines-at-end") << QByteArray("a\n\n") << QByteArray("a\n\n");
    QTest::newRow("separator") << QByteArray("From a\nFrom b From c")
                               << QByteArray("=46rom a\n=46rom b =46rom c");
    QTest::newRow("no-separator") << QByteArray("From: a") << QByteArray("From: a");
    QTest::newRow("full-line") << x(76) << x(76);
    QTest::newRow("over-full-line") << x(77) << x(75) + "=\nxx";
    QTest::newRow("escape-at-break") << x(73) + "\xC3\xA4" << x(73) + "=\n=C3=A4";
    QTest::newRow("two-full-lines") << x(76) + "\n" + x(76) << x(76) + "\n" + x(76);
}

void TestExport::encodesBodiesOfMail()
{
    QFETCH(QByteArray, body);
    QFETCH(QByteArray, encoded);
    ClientProcess other;
    other.fill(vMessage("INBOX", "20101103T142530Z", "+15550100", body));
    const QByteArray mail = other.run(list("mbox")).output;
    QCOMPARE(mail.mid(mail.indexOf("\n\n") + 2), encoded + "\n\n");
}

// A mail program that gets the mailbox of a second backup finds what it has already.
void TestExport::keepsMailIdsOfAnyStore()
{
    ClientProcess other;
    other.fill(outbox + inbox); // with other database ids, and national
    other.run({text("delete"), text("--yes"), text("2")});
    other.fill(vMessage("INBOX", "20101103T142530Z", "0155 501-00", "Tea at four?", "UNREAD"));
    const QByteArray mail = other.run(list("mbox")).output;
    QVERIFY2(mail.contains("\nMessage-ID: <411ccaae222a281ae2f03e22e3de4b9f@korvasync.invalid>\n"),
             mail.constData());
}

static const QByteArray xmlHead = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
static const QByteArray xmlUnknown =
    "\" toa=\"null\" sc_toa=\"null\" service_center=\"null\" read=\"1\" status=\"-1\" "
    "locked=\"0\" date_sent=\"0\"/>\n";

void TestExport::printsAndroidXml()
{
    const auto outcome = client.run(list("android-xml"));
    QCOMPARE(outcome.exitCode, 0);
    const QByteArray outboxLine =
        "  <sms protocol=\"0\" address=\"+15550101\" date=\"1320330330000\" type=\"4\" "
        "subject=\"null\" body=\"tea?"
        + xmlUnknown;
    QCOMPARE(outcome.output,
             xmlHead + "<smses count=\"5\">\n"
                 + "  <sms protocol=\"0\" address=\"B\xC3\xA4nk\" date=\"1257258330000\" "
                   "type=\"1\" subject=\"null\" body=\"Your parcel \xF0\x9F\x8E\x81"
                 + xmlUnknown
                 + "  <sms protocol=\"0\" address=\"+15550100\" date=\"1288794330000\" "
                   "type=\"1\" subject=\"null\" body=\"Tea at four?"
                 + QByteArray(xmlUnknown).replace("read=\"1\"", "read=\"0\"")
                 + "  <sms protocol=\"0\" address=\"555 01 00\" date=\"1288794331000\" "
                   "type=\"2\" subject=\"null\" body=\"Yes, &quot;gladly&quot;&#10;From Ada"
                 + xmlUnknown + outboxLine + outboxLine + "</smses>\n");
    QCOMPARE(outcome.errors, QByteArray());
}

void TestExport::escapesInXml_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QByteArray>("attribute");
    QTest::newRow("markup") << QByteArray("<a href='b'>\"c\" & &#10;")
                            << QByteArray("&lt;a href='b'&gt;&quot;c&quot; &amp; &amp;#10;");
    QTest::newRow("blanks") << QByteArray("a\tb\n \nc ") << QByteArray("a&#9;b&#10; &#10;c ");
    QTest::newRow("scripts") << QByteArray("\xD0\x96\xE2\x80\xA8\xC2\x85\xF0\x9F\x98\x80")
                             << QByteArray("\xD0\x96\xE2\x80\xA8\xC2\x85\xF0\x9F\x98\x80");
    QTest::newRow("empty") << QByteArray() << QByteArray();
}

void TestExport::escapesInXml()
{
    QFETCH(QByteArray, body);
    QFETCH(QByteArray, attribute);
    ClientProcess other;
    other.fill(vMessage("INBOX", "20101103T142530Z", "+15550100", body));
    QCOMPARE(other.run(list("android-xml")).output,
             xmlHead
                 + "<smses count=\"1\">\n"
                   "  <sms protocol=\"0\" address=\"+15550100\" date=\"1288794330000\" "
                   "type=\"1\" subject=\"null\" body=\""
                 + attribute + xmlUnknown + "</smses>\n");
}

void TestExport::tellsOfCharactersThatXmlCannotHold()
{
    ClientProcess other;
    other.fill(vMessage("INBOX", "20101103T142530Z", "+15550100", "a\x07z\xEF\xBF\xBF"));
    const auto outcome = other.run(list("android-xml"));
    QVERIFY2(outcome.output.contains(" body=\"a\xEF\xBF\xBDz\xEF\xBF\xBD\" "), outcome.output);
    QCOMPARE(outcome.errors,
             QByteArray("korvasync: 2 character(s) that XML cannot hold are replaced by U+FFFD; "
                        "-o vmsg keeps them\n"));
    QCOMPARE(outcome.exitCode, 0);
}

void TestExport::printsCallsAsAndroidXml()
{
    ClientProcess other;
    other.run({text("calls"), text("add"), text("-")},
              callEntry("incoming", "+15550100", 30, "20101103T142530Z")
                  + callEntry("outgoing", "InfoPost", 3725, "20101103T142501Z")
                  + callEntry("missed", "", 0, "20101103T142530Z"));
    const auto outcome = other.run({text("calls"), text("list"), text("-o"), text("android-xml")});
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output,
             xmlHead
                 + "<calls count=\"3\">\n"
                   "  <call number=\"+15550100\" duration=\"30\" date=\"1288794300000\" "
                   "type=\"1\" presentation=\"1\"/>\n"
                   "  <call number=\"InfoPost\" duration=\"3725\" date=\"1288794301000\" "
                   "type=\"2\" presentation=\"1\"/>\n"
                   "  <call number=\"\" duration=\"0\" date=\"1288794330000\" type=\"3\" "
                   "presentation=\"3\"/>\n"
                   "</calls>\n");
}

// Exported, added to an empty store and exported again: the same bytes.
void TestExport::comesBackFromAndroidXml()
{
    const QByteArray stamp("20101103T142530Z");
    ClientProcess from;
    from.fill(vMessage("INBOX", stamp, "InfoPost", "null") + inbox + sent + my + outbox + outbox
              + vMessage("SENT", stamp, "B\xC3\xA4nk", " \ttwo  blanks \n\n", "UNREAD")
              + vMessage("INBOX", stamp, "(555) 01-00", "")
              + vMessage("INBOX", stamp, "*#*", "<&#10;>\"' \xF0\x9F\x98\x80 \xE2\x80\xA8")
              + vMessage("MYFOLDERS", stamp, "+15550100", "Tea at four?"));
    const QByteArray exported = from.run(list("android-xml")).output;
    QVERIFY(exported.startsWith(xmlHead + "<smses count=\"10\">\n"));
    ClientProcess to;
    const auto outcome = to.run({text("add"), text("-")}, exported);
    QVERIFY2(outcome.output.endsWith("\n10 read, 10 added, 0 present, 0 refused, 0 failed\n"),
             outcome.output);
    QCOMPARE(to.run(list("android-xml")).output, exported);
}

void TestExport::comesBackFromAndroidXmlWithCalls()
{
    const QStringList listCalls{text("calls"), text("list"), text("-o"), text("android-xml")};
    ClientProcess from;
    from.run({text("calls"), text("add"), text("-")},
             callEntry("incoming", "+15550100", 30, "20101103T142530Z")
                 + callEntry("incoming", "", 1, "20101103T142530Z")
                 + callEntry("outgoing", "B\xC3\xA4nk", 3725, "20101103T142501Z")
                 + callEntry("missed", "", 0, "20101103T142530Z")
                 + callEntry("missed", "", 0, "20101103T142530Z"));
    const QByteArray exported = from.run(listCalls).output;
    QVERIFY(exported.startsWith(xmlHead + "<calls count=\"5\">\n"));
    ClientProcess to;
    const auto outcome = to.run({text("add"), text("-")}, exported);
    QVERIFY2(outcome.output.endsWith("\n5 read, 5 added, 0 present, 0 refused, 0 failed\n"),
             outcome.output);
    QCOMPARE(to.run(listCalls).output, exported);
}

void TestExport::showsMessagesInEachForm()
{
    const auto show = [this](const char *format) {
        return client.run({text("show"), text("-o"), text(format), text("99"), text("1")});
    };
    for (const char *format : {"csv", "mbox", "android-xml"})
        QCOMPARE(show(format).exitCode, 4);
    QCOMPARE(show("csv").output,
             csvHead + "1,inbox,+15550100,2010-11-03T14:25:30Z,false,Tea at four?\r\n");
    QCOMPARE(show("mbox").output, inboxMail);
    QVERIFY(show("android-xml").output.startsWith(xmlHead + "<smses count=\"1\">\n  <sms "));
}

void TestExport::printsFormsOfNothing_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QByteArray>("output");
    QTest::newRow("csv") << text("list --limit 0 -o csv") << csvHead;
    QTest::newRow("mbox") << text("list --limit 0 -o mbox") << QByteArray();
    QTest::newRow("messages") << text("list --limit 0 -o android-xml")
                              << xmlHead + "<smses count=\"0\">\n</smses>\n";
    QTest::newRow("calls") << text("calls list -o android-xml")
                           << xmlHead + "<calls count=\"0\">\n</calls>\n";
}

void TestExport::printsFormsOfNothing()
{
    QFETCH(QString, command);
    QFETCH(QByteArray, output);
    const auto outcome = client.run(command.split(QLatin1Char(' ')));
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output, output);
}

void TestExport::printsNoIdsInForms_data()
{
    QTest::addColumn<QString>("format");
    for (const char *format : {"vmsg", "csv", "mbox", "android-xml"})
        QTest::newRow(format) << text(format);
}

void TestExport::printsNoIdsInForms()
{
    QFETCH(QString, format);
    const auto outcome = client.run({text("list"), text("-o"), format, text("--ids")});
    QCOMPARE(outcome.exitCode, 2);
    QCOMPARE(outcome.output, QByteArray());
    QCOMPARE(outcome.errors,
             "korvasync: --ids and -o " + format.toUtf8() + " exclude each other\n");
}

QTEST_GUILESS_MAIN(TestExport)
#include "tst_export.moc"
