// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "clientprocess.h"

#include <QtTest/QTest>

// Emphasis on terminals that can show it, and nowhere else.
class TestColours : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsUnreadMessagesBold();
    void showsWhatIsNotDoneRed();
    void showsWhatIsMissingRed();
    void staysPlain_data();
    void staysPlain();
    void goesOnlyByWhatNoColorHolds();
    void leavesFormatsForProgramsAlone();
};

static const QByteArray messages = vMessage("INBOX", "20101103T142530Z", "+15550100", "a", "UNREAD")
    + vMessage("INBOX", "20101103T142531Z", "+15550100", "b");
static const QByteArray plainLines("1  2010-11-03T14:25:30Z  inbox   *  +15550100  a\n"
                                   "2  2010-11-03T14:25:31Z  inbox      +15550100  b\n");

static void setTerminal(ClientProcess &client, const char *name)
{
    client.environment.insert(text("TERM"), text(name));
    client.environment.remove(text("NO_COLOR"));
}

void TestColours::showsUnreadMessagesBold()
{
    ClientProcess client;
    client.fill(messages);
    setTerminal(client, "xterm");
    QCOMPARE(client.onTerminal(text("list")),
             QByteArray("\033[1m1  2010-11-03T14:25:30Z  inbox   *  +15550100  a\033[0m\n"
                        "2  2010-11-03T14:25:31Z  inbox      +15550100  b\n"));
}

void TestColours::showsWhatIsNotDoneRed()
{
    ClientProcess client;
    client.workingDirectory = client.filePath(QString());
    client.write(text("in.vmg"), messages + vMessage("DRAFTS", "", "+15550100", "c"));
    setTerminal(client, "xterm");
    QCOMPARE(client.onTerminal(text("add -qq --progress never in.vmg")),
             QByteArray("added  1  in.vmg:1\n"
                        "added  2  in.vmg:16\n"
                        "\033[31mrefused  in.vmg:31  sms-draft: a draft, and drafts cannot be "
                        "written\033[0m\n"));
}

void TestColours::showsWhatIsMissingRed()
{
    ClientProcess client;
    client.workingDirectory = client.filePath(QString());
    client.fill(messages);
    client.write(text("in.vmg"), vMessage("SENT", "20101103T142530Z", "+15550100", "c"));
    setTerminal(client, "xterm");
    QCOMPARE(client.onTerminal(text("verify -qq --progress never in.vmg")),
             QByteArray("\033[31mmissing  in.vmg:1\033[0m\n"));
}

void TestColours::staysPlain_data()
{
    QTest::addColumn<QByteArray>("terminal");
    QTest::addColumn<QByteArray>("noColor");
    QTest::newRow("NO_COLOR") << QByteArray("xterm") << QByteArray("1");
    QTest::newRow("dumb") << QByteArray("dumb") << QByteArray();
    QTest::newRow("no TERM") << QByteArray() << QByteArray();
}

void TestColours::staysPlain()
{
    QFETCH(QByteArray, terminal);
    QFETCH(QByteArray, noColor);
    ClientProcess client;
    client.fill(messages);
    setTerminal(client, terminal.constData());
    client.environment.insert(text("NO_COLOR"), text(noColor.constData()));
    QCOMPARE(client.onTerminal(text("list")), plainLines);
}

// By the convention an empty NO_COLOR is none.
void TestColours::goesOnlyByWhatNoColorHolds()
{
    ClientProcess client;
    client.fill(messages);
    setTerminal(client, "xterm");
    client.environment.insert(text("NO_COLOR"), QString());
    QVERIFY(client.onTerminal(text("list")).startsWith("\033[1m1  "));
    QCOMPARE(client.run({text("list")}).output, plainLines); // a pipe
}

void TestColours::leavesFormatsForProgramsAlone()
{
    ClientProcess client;
    client.fill(messages);
    setTerminal(client, "xterm");
    for (const char *arguments : {"list -o ndjson", "list -o vmsg", "list -o csv", "list --ids"}) {
        const QByteArray output = client.onTerminal(text(arguments));
        QVERIFY2(!output.isEmpty() && !output.contains('\033'), output);
    }
}

QTEST_GUILESS_MAIN(TestColours)
#include "tst_colours.moc"
