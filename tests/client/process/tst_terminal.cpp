// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "clientprocess.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

// A terminal acts on nothing that a message, a name or a path holds.
class TestTerminal : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void getsNothingRaw_data();
    void getsNothingRaw();
    void getsNothingRawFromPaths_data();
    void getsNothingRawFromPaths();
    void getsNothingRawFromTheTrace();
    void getsTextFromShow();
    void seesTheControlCharactersOfVMessages();
    void keepsTheLinesOfEachForm();
    void leavesPipesTheBytes();
    void escapesInJsonWhatTerminalsActOn();
    void keepsTheProgressOnOneRow_data();
    void keepsTheProgressOnOneRow();

private:
    ClientProcess filled; //!< for what can be read in any order
};

//! A title, a colour, both forms of an escape, bells, a step back, marks that turn the writing.
static const QByteArray evil("a\x1B]0;title\x07\x1B[31m\xC2\x9B"
                             "2J\x08\x0B\x7F\u202E\u2066\u200F\u061C\u2028z");

static const QByteArray message = vMessage("INBOX", "20101103T142530Z", "Info\u202E\u2066", evil)
    + vMessage("SENT", "20101103T142531Z", "+15550100", evil);

//! Everything but line ends that a terminal acts on.
static QByteArray foundRaw(const QByteArray &output)
{
    static const QRegularExpression raw(
        text("[\\x{00}-\\x{09}\\x{0B}-\\x{1F}\\x{7F}-\\x{9F}\\x{061C}\\x{200E}\\x{200F}"
             "\\x{2028}-\\x{202E}\\x{2066}-\\x{2069}]"));
    const QRegularExpressionMatch match = raw.match(QString::fromUtf8(output));
    return match.hasMatch() ? QByteArray::number(match.captured().at(0).unicode(), 16) + " in "
            + output.toPercentEncoding(" \n")
                            : QByteArray();
}

void TestTerminal::initTestCase()
{
    filled.workingDirectory = filled.filePath(QString());
    filled.environment.insert(text("TERM"), text("dumb"));      // our own colours are none of these
    filled.environment.insert(text("LC_ALL"), text("C.UTF-8")); // of the shell, for \u
    filled.environment.insert(text("SHELL"), text("/bin/bash"));
    filled.fill(message);
    QCOMPARE(filled
                 .run({text("calls"), text("add"), text("-")},
                      callEntry("missed", "Info\u202E\u2066", 0, "20240101T000000Z"))
                 .exitCode,
             0);
    filled.write(text("a\x1B]0;x\u202E.vmg"), "garbage");
}

void TestTerminal::getsNothingRaw_data()
{
    QTest::addColumn<QString>("arguments");
    for (const char *line : {"list",
                             "list -o ndjson",
                             "list -o vmsg",
                             "list -o csv",
                             "list -o mbox",
                             "list -o android-xml",
                             "show 1 2",
                             "show -o ndjson 1 2",
                             "show -o vmsg 1 2",
                             "show -o csv 1 2",
                             "show -o mbox 1 2",
                             "show -o android-xml 1 2",
                             "stats",
                             "stats -o ndjson",
                             "numbers",
                             "numbers -o ndjson",
                             "dups",
                             "dups -o ndjson",
                             "calls",
                             "calls -o ndjson",
                             "calls -o entries",
                             "calls -o android-xml",
                             "add *.vmg",
                             "add -o ndjson *.vmg",
                             "add nothing$'\\e[31m'",
                             "add --rejects no$'\\e[31m'/x *.vmg",
                             "verify *.vmg",
                             "verify -o ndjson *.vmg",
                             "modify 1 *.vmg",
                             "calls add *.vmg",
                             "send --dry-run +15550100 a$'\\e[31m'$'\\u202e'",
                             "send --dry-run -o ndjson +15550100 a$'\\u009b'$'\\u202e'",
                             "show $'\\e[31m'",
                             "delete --yes $'\\e[31m'",
                             "$'\\e[31m'",
                             "list --$'\\e[31m'",
                             "list -$'\\e'",
                             "list --folder $'\\e[31m'",
                             "list --since $'\\e[31m'",
                             "list --grep \\($'\\e[31m'",
                             "list --limit $'\\e[31m'",
                             "list -o $'\\e[31m'",
                             "list --ids=$'\\e[31m'",
                             "list --progress $'\\e[31m'",
                             "calls $'\\e[31m'",
                             "calls --type $'\\e[31m'",
                             "add --assume-tz $'\\e[31m' *.vmg",
                             "add --from $'\\e[31m' *.vmg",
                             "--timeout $'\\e[31m' list"})
        QTest::newRow(line) << text(line);
}

void TestTerminal::getsNothingRaw()
{
    QFETCH(QString, arguments);
    const QByteArray output = filled.onTerminal(text("--progress never ") + arguments);
    QVERIFY(!output.isEmpty());
    QCOMPARE(foundRaw(output), QByteArray());
}

void TestTerminal::getsNothingRawFromPaths_data()
{
    QTest::addColumn<QString>("preparation");
    const auto row = [](const char *name, const char *preparation) {
        QTest::newRow(name) << text(preparation);
    };
    row("absent", "true");
    row("foreign", "mkdir \"$store\"; touch \"$store/x\"");
    row("without its database", "cp -r store \"$store\"; rm \"$store/db/meta.db\"");
    row("of an unknown format", "cp -r store \"$store\"; echo 99 > \"$store/korvasync-store\"");
    row("damaged", "cp -r store \"$store\"; head -c 9999 /dev/zero > \"$store/db/meta.db\"");
}

// On a pipe too: what reads it shows it on a terminal.
void TestTerminal::getsNothingRawFromPaths()
{
    QFETCH(QString, preparation);
    ClientProcess client;
    client.workingDirectory = client.filePath(QString());
    client.fill(message);
    const QString script =
        text("store=a$'\\e[31m'; ") + preparation + text("; exec " KORVASYNC_CLIENT " ");
    for (const char *arguments :
         {"--store \"$store\" list", "--store \"$store\" calls wipe --yes"}) {
        const auto outcome =
            client.runProgram(text("bash"), {text("-c"), script + text(arguments)});
        QCOMPARE(outcome.exitCode, 3);
        QVERIFY2(outcome.errors.contains("a␛[31m"), outcome.errors);
        QCOMPARE(foundRaw(outcome.errors), QByteArray());
    }
}

void TestTerminal::getsNothingRawFromTheTrace()
{
    ClientProcess client;
    const auto added = client.run({text("add"), text("-v")}, message);
    QVERIFY(added.errors.contains("fromVCard"));
    QCOMPARE(foundRaw(added.errors), QByteArray());
}

void TestTerminal::getsTextFromShow()
{
    ClientProcess client;
    client.environment.insert(text("TERM"), text("xterm"));
    client.fill(message);
    QCOMPARE(client.onTerminal(text("show 2")),
             QByteArray("id:     2\n"
                        "folder: sent\n"
                        "number: +15550100\n"
                        "time:   2010-11-03T14:25:31Z\n"
                        "read:   yes\n"
                        "\n"
                        "a␛]0;title␇␛[31m\uFFFD2J␈␋\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD↵z\n\n"));
    QVERIFY(client.run({text("show"), text("2")}).output.startsWith("BEGIN:VMSG\r\n"));
}

void TestTerminal::seesTheControlCharactersOfVMessages()
{
    ClientProcess client;
    client.fill(message);
    const QByteArray shown = client.onTerminal(text("show -o vmsg 2"));
    QVERIFY2(shown.startsWith("BEGIN:VMSG\nVERSION:1.1\n"), shown);
    QVERIFY2(shown.contains("a␛]0;title␇␛[31m\uFFFD2J␈␋\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD↵z\n"), shown);
}

void TestTerminal::keepsTheLinesOfEachForm()
{
    ClientProcess client;
    client.fill(vMessage("SENT", "20101103T142531Z", "+15550100", "one\ntwo\tthree"));
    QCOMPARE(client.onTerminal(text("list -o csv")),
             QByteArray("id,folder,number,time,read,body\n"
                        "1,sent,+15550100,2010-11-03T14:25:31Z,true,\"one\ntwo␉three\"\n"));
    QCOMPARE(client.onTerminal(text("list")),
             QByteArray("1  2010-11-03T14:25:31Z  sent       +15550100  one↵two␉three\n"));
}

void TestTerminal::leavesPipesTheBytes()
{
    ClientProcess client;
    client.fill(message);
    QVERIFY(client.run({text("show"), text("2")}).output.contains(evil));
    QVERIFY(client.run({text("list"), text("-o"), text("csv")}).output.contains(evil));
}

// They are the same text to programs, on a terminal too.
void TestTerminal::escapesInJsonWhatTerminalsActOn()
{
    ClientProcess client;
    client.fill(message);
    const QByteArray json("{\"id\":2,\"folder\":\"sent\",\"number\":\"+15550100\","
                          "\"time\":\"2010-11-03T14:25:31Z\",\"read\":true,"
                          "\"body\":\"a\\u001b]0;title\\u0007\\u001b[31m\\u009b2J\\u0008\\u000b"
                          "\\u007f\\u202e\\u2066\\u200f\\u061c\\u2028z\"}\n");
    const QStringList sent{text("--folder"), text("sent")};
    QCOMPARE(client.listed(sent), json);
    QCOMPARE(client.onTerminal(text("list -o ndjson --folder sent")), json);
}

void TestTerminal::keepsTheProgressOnOneRow_data()
{
    QTest::addColumn<int>("columns");
    QTest::addColumn<QByteArray>("rows"); // a regular expression
    const QByteArray done("[123] done of about [123]");
    QTest::newRow("80") << 80 << done + "(, [0-9]+/s)(, [0-9]+ s left)?";
    QTest::newRow("30") << 30 << done + "(, [0-9]+/s|, [0-9]+ s left)";
    QTest::newRow("20") << 20 << done;
    QTest::newRow("13") << 13 << QByteArray("[123] done of"); // not "1 done of ab"
    QTest::newRow("10") << 10 << QByteArray("[123] done of");
    QTest::newRow("1") << 1 << QByteArray();
}

void TestTerminal::keepsTheProgressOnOneRow()
{
    QFETCH(int, columns);
    QFETCH(QByteArray, rows);
    ClientProcess client;
    client.workingDirectory = client.filePath(QString());
    QByteArray messages;
    for (const char *minute : {"00", "01", "02"})
        messages += vMessage("INBOX", QByteArray("20101103T14") + minute + "30Z", "+15550100", "x");
    client.write(text("in.vmg"), messages);
    const QByteArray output =
        client.onTerminal(text("add --chunk 1 --progress always in.vmg >/dev/null"), columns);
    const QRegularExpression shown(text("\\A(\r") + text(rows.constData())
                                   + text("\x1B\\[K)+\n\\z"));
    QVERIFY2(shown.match(QString::fromUtf8(output)).hasMatch(), output.toPercentEncoding(" "));
    for (const QByteArray &row : output.split('\r'))
        QVERIFY2(row.size() < columns + 5, row); // with the end of the escape behind it
}

QTEST_GUILESS_MAIN(TestTerminal)
#include "tst_terminal.moc"
