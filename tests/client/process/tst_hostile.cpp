// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "clientprocess.h"

#include "oddnames.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

//! Senders and texts that mean something to the query language, to regular expressions or to a
//! terminal: through add, list, show, modify and delete each stays what it is, and so does what
//! lies beside it.
class TestHostile : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void sendersAndTexts_data();
    void sendersAndTexts();
    void sendersWithSignsOfTheirOwn();
    void sendersAmongOthers();
    void numbersOfSignsThatNobodySees_data();
    void numbersOfSignsThatNobodySees();
    void recipientsWithoutEnd_data();
    void recipientsWithoutEnd();
    void sendersThatOnlyAFileCanCarry_data();
    void sendersThatOnlyAFileCanCarry();
    void patterns_data();
    void patterns();
    void textsOfAnyBytes();
};

namespace {

const QByteArray Bystander = vMessage("INBOX", "20240501T090000Z", "+15550100", "untouched");

QJsonObject objectOf(const QByteArray &ndjson)
{
    return QJsonDocument::fromJson(ndjson.trimmed()).object();
}

QString valueOf(const QJsonObject &object, const char *key)
{
    return object.value(QLatin1String(key)).toVariant().toString();
}

//! The status of each item and why it was refused.
QByteArrayList resultsOf(const QByteArray &ndjson)
{
    QByteArrayList results;
    for (const QByteArray &line : ndjson.trimmed().split('\n')) {
        const QJsonObject result = objectOf(line);
        if (result.contains(QLatin1String("status")))
            results += (valueOf(result, "status") + valueOf(result, "code")).toUtf8();
    }
    return results;
}

//! Every code point that is a blank, a format or a control character but for line ends and zero.
QStringList unseenSigns()
{
    QStringList signs;
    for (char32_t c = 1; c <= QChar::LastValidCodePoint; ++c) {
        const bool isUnseen = QChar::isSpace(c) || QChar::category(c) == QChar::Other_Control
            || QChar::category(c) == QChar::Other_Format;
        if (isUnseen && c != '\n' && c != '\r')
            signs += QString::fromUcs4(&c, 1);
    }
    return signs;
}

} // namespace

void TestHostile::sendersAndTexts_data()
{
    QTest::addColumn<QString>("word");
    QTest::newRow("quote") << text("O'Neill");
    QTest::newRow("double quote") << text("say \"hi\"");
    QTest::newRow("backslash") << text("back\\slash\\");
    QTest::newRow("escaped quote") << text("\\' . ?s ?p ?o");
    QTest::newRow("code point escape") << text("\\u0027 } DELETE { ?s ?p ?o }");
    QTest::newRow("brace") << text("} ; { ?s ?p ?o } #");
    QTest::newRow("second statement") << text("x'} ; DELETE { ?s ?p ?o } WHERE { ?s ?p ?o } #");
    QTest::newRow("other service") << text("x') SERVICE <http://127.0.0.1:9/> { ?a ?b ?c } #");
    QTest::newRow("everything") << text(".*");
    QTest::newRow("end") << text("$");
    QTest::newRow("open bracket") << text("([a-");
    QTest::newRow("repetitions within repetitions") << text("(a+)+(a+)+(a+)+b");
    QTest::newRow("format marks") << text("%1 %s %n {} ${HOME} $(id)");
    QTest::newRow("terminal escapes") << text("\x1B]0;title\x07\x1B[2J");
    QTest::newRow("right to left") << text("\u202Egnp.exe");
    QTest::newRow("10,000 characters") << QString(10000, QLatin1Char('x'));
    QTest::newRow("10,000 quotes") << QString(10000, QLatin1Char('\''));
}

void TestHostile::sendersAndTexts()
{
    QFETCH(QString, word);
    const ClientProcess client;
    client.fill(Bystander);

    // Control characters would break out of a number's line, so such a sender is none.
    const bool canSend = std::none_of(word.cbegin(), word.cend(),
                                      [](QChar c) { return c.category() == QChar::Other_Control; });
    const QByteArray sender = canSend ? word.toUtf8() : QByteArray("+15550177");
    const auto written = [&](const char *more) {
        return vMessage("INBOX", "20240501T100000Z", sender, word.toUtf8() + more);
    };
    const QByteArray added =
        client.run({text("-o"), text("ndjson"), text("add"), text("-")}, written("")).output;
    QCOMPARE(valueOf(objectOf(added.left(added.indexOf('\n'))), "status"), text("added"));
    const QString id = valueOf(objectOf(added.left(added.indexOf('\n'))), "id");

    const QStringList show{text("-o"), text("ndjson"), text("show"), id};
    QCOMPARE(valueOf(objectOf(client.run(show).output), "number"), QString::fromUtf8(sender));
    QCOMPARE(valueOf(objectOf(client.run(show).output), "body"), word);
    QCOMPARE(objectOf(client.listed({text("--number"), QString::fromUtf8(sender)})),
             objectOf(client.run(show).output));
    QCOMPARE(client.listed({text("--grep"), QRegularExpression::escape(word)}),
             client.run(show).output);
    const QByteArray page = client.run({text("show"), id, text("-o"), text("text")}).output;
    QVERIFY(!page.contains('\x1B'));

    QCOMPARE(client.run({text("modify"), id, text("-")}, written(" changed")).exitCode, 0);
    QCOMPARE(valueOf(objectOf(client.run(show).output), "body"), word + text(" changed"));
    QCOMPARE(client.run({text("delete"), text("--yes"), id}).exitCode, 0);
    QCOMPARE(client.run(show).exitCode, 4);

    const QJsonObject bystander = objectOf(client.listed());
    QCOMPARE(valueOf(bystander, "number"), text("+15550100"));
    QCOMPARE(valueOf(bystander, "body"), text("untouched"));
}

// All in one store, where one could be taken for another.
void TestHostile::sendersWithSignsOfTheirOwn()
{
    const QByteArrayList senders = oddNames()
        + QByteArrayList{"Service-24",
                         "AT&T",
                         "Yahoo!",
                         "\xC3\xBC"
                         "ber",
                         "A;B",
                         "A:B",
                         "A,B",
                         "-Info",
                         "Tele\xE2\x80\x8B"
                         "com",
                         "Telecom",
                         "A%2",
                         "e=mc2"};
    QByteArray file;
    for (const QByteArray &sender : senders)
        file += vMessage("INBOX", "20240501T100000Z", sender, "text");
    const ClientProcess client;
    client.fill(file);
    for (int i = 0; i < senders.size(); ++i) {
        const QStringList modify{text("modify"), text("-q"), QString::number(i + 1), text("-")};
        const QByteArray changed = vMessage("INBOX", "20240501T100000Z", senders.at(i), "changed");
        const QByteArray outcome = "changed  " + QByteArray::number(i + 1) + "  -:1\n";
        QCOMPARE(client.run(modify + QStringList{text("-n")}, changed).output, outcome);
        QCOMPARE(client.run(modify, changed).output, outcome);
        const QJsonObject stored =
            objectOf(client.listed({text("--number"), QString::fromUtf8(senders.at(i))}));
        QCOMPARE(valueOf(stored, "number").toUtf8(), senders.at(i));
        QCOMPARE(valueOf(stored, "body"), text("changed"));
    }
}

// Once each of them ended the import around it: those that would make a query too deep, too long or
// endless.
void TestHostile::sendersAmongOthers()
{
    QByteArrayList senders{
        "') FILTER(" + QByteArray("'a'='b' || ").repeated(500) + "true) FILTER('x' != 'y",
        "') FILTER(" + QByteArray(6000, '(') + '1' + QByteArray(6000, ')') + ") FILTER('x' != 'y",
        QByteArray(1 << 20, '\''),
        QByteArray(100000, '('),
        "(a|a)*b",
        "(?R)x"};
    for (char i = 'a'; i <= 'm'; ++i)
        senders += QByteArray("') ?a ?b ?c . ?d ?e ?f . ?g ?h ?i FILTER(str(?i) = 'zz") + i;
    QByteArray file;
    for (int i = 0; i < senders.size(); ++i) {
        file += vMessage("INBOX", "20240501T100000Z", senders.at(i), "hostile");
        file +=
            vMessage("INBOX", "20240501T100000Z", "+155501" + QByteArray::number(10 + i), "good");
    }
    const ClientProcess client;
    client.fill(Bystander);
    const QStringList add{text("add"), text("-")};
    QCOMPARE(client.run(add, file).output.split('\n').value(38),
             QByteArray("38 read, 38 added, 0 present, 0 refused, 0 failed"));
    QCOMPARE(client.run(add, file).output.split('\n').value(38),
             QByteArray("38 read, 0 added, 38 present, 0 refused, 0 failed"));
    QCOMPARE(client.run({text("list"), text("--count")}).output, QByteArray("39\n"));
}

void TestHostile::numbersOfSignsThatNobodySees_data()
{
    QTest::addColumn<QString>("number"); // with each sign in the place of the mark
    QTest::addColumn<bool>("isRefused"); // whatever the sign
    QTest::newRow("alone") << text("%1") << true;
    QTest::newRow("twice behind a blank") << text(" %1%1") << true;
    QTest::newRow("before a letter") << text("%1x") << false;
    QTest::newRow("behind a letter") << text("x%1") << false;
    QTest::newRow("within a number") << text("+155501%100") << false;
}

// The dry run says what is done, and once more finds all that was.
void TestHostile::numbersOfSignsThatNobodySees()
{
    QFETCH(QString, number);
    QFETCH(bool, isRefused);
    const QStringList signs = unseenSigns();
    QVERIFY(signs.size() > 200);
    QByteArray file;
    for (int i = 0; i < signs.size(); ++i) {
        file += vMessage("INBOX", "20240501T100000Z",
                         QString(number).replace(text("%1"), signs.at(i)).toUtf8(),
                         "text " + QByteArray::number(i));
    }
    const ClientProcess client;
    client.fill(Bystander);
    const QStringList add{text("-o"), text("ndjson"), text("add"), text("-")};
    const QByteArrayList expected =
        resultsOf(client.run(add + QStringList{text("-n")}, file).output);
    QCOMPARE(expected.size(), signs.size());
    QCOMPARE(expected.count("refusedsms-no-number") == signs.size(), isRefused);
    QCOMPARE(expected.count("refusedsms-no-number") + expected.count("added"), signs.size());
    QCOMPARE(resultsOf(client.run(add, file).output), expected);
    const QByteArrayList again = resultsOf(client.run(add, file).output);
    QCOMPARE(again.count("present"), expected.count("added"));
    QCOMPARE(again.count("refusedsms-no-number"), expected.count("refusedsms-no-number"));
}

void TestHostile::recipientsWithoutEnd_data()
{
    QTest::addColumn<QByteArray>("separator");
    QTest::newRow("tildes") << QByteArray("~");
    QTest::newRow("semicolons") << QByteArray("; ");
    QTest::newRow("commas") << QByteArray(",");
}

void TestHostile::recipientsWithoutEnd()
{
    QFETCH(QByteArray, separator);
    QByteArray numbers = "+15550100";
    for (int i = 0; i < 50000; ++i)
        numbers += separator + "+1555" + QByteArray::number(1000000 + i);
    const ClientProcess client;
    const QByteArray output = client
                                  .run({text("-o"), text("ndjson"), text("add"), text("-")},
                                       vMessage("SENT", "20240501T100000Z", numbers, "to all"))
                                  .output;
    QCOMPARE(resultsOf(output), QByteArrayList{"refusedtoo-many-recipients"});
}

// What no argument and no line of a vMessage can hold, but XML and quoted-printable can. A
// control character in a sender makes it none, XML's zero is no character at all, and numbers
// are taken as they stand, without decoding.
void TestHostile::sendersThatOnlyAFileCanCarry_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("sender"); // empty: refused
    const auto card = [](const QByteArray &telephone) {
        return vMessage("INBOX", "20240501T100000Z", "SENDER", "text")
            .replace("TEL:SENDER", "TEL" + telephone);
    };
    const auto xml = [](const QByteArray &address) {
        return "<?xml version='1.0' encoding='UTF-8'?><smses count=\"1\"><sms address=\"" + address
            + "\" date=\"1714557600000\" type=\"1\" body=\"text\" read=\"1\" /></smses>";
    };
    QTest::newRow("line ends in quoted-printable")
        << card(";ENCODING=QUOTED-PRINTABLE:a=0D=0AEND:VMSG=0D=0Ab")
        << text("a=0D=0AEND:VMSG=0D=0Ab");
    QTest::newRow("zero in quoted-printable")
        << card(";ENCODING=QUOTED-PRINTABLE:a=00b") << text("a=00b");
    QTest::newRow("zero in a vMessage") << card(QByteArray(":a\0b", 4)) << text("a");
    QTest::newRow("line ends in XML") << xml("a&#13;&#10;END:VMSG&#13;&#10;b") << QString();
    QTest::newRow("zero in XML") << xml("a&#0;b") << text("a\uFFFDb");
    QTest::newRow("quotes, braces and a line end in XML")
        << xml("x'} ; DELETE { ?s ?p ?o } #&#10;&quot;\\") << QString();
    QTest::newRow("10,000 line ends in XML")
        << xml(QByteArray("&#10;").repeated(10000) + "x") << text("x");
}

void TestHostile::sendersThatOnlyAFileCanCarry()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, sender);
    const ClientProcess client;
    client.fill(Bystander);
    QCOMPARE(client.run({text("add"), text("-")}, file).exitCode, sender.isEmpty() ? 1 : 0);
    const QByteArrayList stored = client.listed().split('\n');
    QCOMPARE(stored.size(), sender.isEmpty() ? 2 : 3); // the last is empty
    QCOMPARE(valueOf(objectOf(stored.value(0)), "number"), text("+15550100"));
    QCOMPARE(valueOf(objectOf(stored.value(0)), "body"), text("untouched"));
    QCOMPARE(valueOf(objectOf(stored.value(1)), "number"), sender);
}

void TestHostile::patterns_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QByteArray>("count");
    QTest::newRow("everything") << text(".*") << 0 << QByteArray("2\n");
    QTest::newRow("end") << text("$") << 0 << QByteArray("2\n");
    QTest::newRow("brace") << text("} ; { ?s ?p ?o } #") << 0 << QByteArray("0\n");
    QTest::newRow("quotes") << text("'\"'") << 0 << QByteArray("0\n");
    QTest::newRow("10,000 characters")
        << QString(10000, QLatin1Char('a')) << 0 << QByteArray("1\n");
    QTest::newRow("repetitions within repetitions")
        << text("(a+)+(a+)+(a+)+b") << 0 << QByteArray("0\n");
    QTest::newRow("backslash") << text("\\") << 2 << QByteArray();
    QTest::newRow("open bracket") << text("([a-") << 2 << QByteArray();
    QTest::newRow("10,000 open brackets") << QString(10000, QLatin1Char('(')) << 2 << QByteArray();
}

void TestHostile::patterns()
{
    QFETCH(QString, pattern);
    QFETCH(int, exitCode);
    QFETCH(QByteArray, count);
    const ClientProcess client;
    client.fill(
        Bystander
        + vMessage("INBOX", "20240501T100000Z", "+15550177", QByteArray("a").repeated(10000)));
    const ClientProcess::Outcome outcome =
        client.run({text("list"), text("--count"), text("--grep"), pattern});
    QCOMPARE(outcome.exitCode, exitCode);
    QCOMPARE(outcome.output, count);
}

// Every code point below 256 but CR, which no text keeps, and a sample of the rest.
void TestHostile::textsOfAnyBytes()
{
    QString body = text("start ");
    for (ushort c = 0; c < 256; ++c) {
        if (c != '\r')
            body += QChar(c);
    }
    body += text("\uFEFF \uFFFD \uFFFF \U0001F600 end");
    const ClientProcess client;
    client.fill(Bystander
                + vMessage("INBOX", "20240501T100000Z", "+15550177",
                           "\xEF\xBB\xBF" + body.toUtf8())); // at the beginning it is dropped
    const QJsonObject stored = objectOf(client.listed({text("--number"), text("+15550177")}));
    QCOMPARE(valueOf(stored, "body"), body);
}

QTEST_GUILESS_MAIN(TestHostile)
#include "tst_hostile.moc"
