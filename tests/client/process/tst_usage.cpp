// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "clientprocess.h"

#include <QtCore/QFile>
#include <QtCore/QMap>
#include <QtTest/QTest>

// The command line itself, and what goes to which stream.
class TestUsage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void refusesWhatItDoesNotUnderstand_data();
    void refusesWhatItDoesNotUnderstand();
    void saysWhatItDoesNotUnderstand_data();
    void saysWhatItDoesNotUnderstand();
    void repeatsNamesAsTheyAre();
    void helps_data();
    void helps();
    void helpsWithWhatAVerbTakes_data();
    void helpsWithWhatAVerbTakes();
    void takesGlobalOptionsBeforeAndAfterTheCommand();
    void takesTheFirstOperandForTheAction_data();
    void takesTheFirstOperandForTheAction();
    void takesTheStoreOfTheEnvironment();
    void leavesTheSummaryOutWhenQuiet();
    void keepsNumbersAndTextsOffStderr();
    void showsTheTraceWhenVerbose();
    void printsTimesInUtcInAnyZone();
};

static const QByteArray hello = vMessage("INBOX", "20101103T142530Z", "+15550100", "Hello");

void TestUsage::refusesWhatItDoesNotUnderstand_data()
{
    QTest::addColumn<QStringList>("arguments");
    for (const char *line : {"frob",
                             "mirror",
                             "status",
                             "changes 1 2",
                             "conversations extra",
                             "conversations -o vmsg",
                             "conversations --since never",
                             "conversations --number=",
                             "conversations --limit 1",
                             "changes -o text",
                             "undo",
                             "log",
                             "lis",
                             "list --frob",
                             "stats extra",
                             "verify",
                             "verify -o vmsg -",
                             "verify --folder spam -",
                             "verify --from paper -",
                             "verify --rejects x -",
                             "dups extra",
                             "dups -o vmsg",
                             "dups --delete",
                             "dups --yes",
                             "dups --keep oldest",
                             "dups --delete --yes --keep longest",
                             "numbers extra",
                             "numbers -o vmsg",
                             "stats -o vmsg",
                             "stats --since tomorrow",
                             "stats --limit many",
                             "--frob list",
                             "list extra",
                             "list --folder spam",
                             "list --folder",
                             "list --since tomorrow",
                             "list --since",
                             "list --since -7d",
                             "list --until 99999999999w",
                             "list --since today --assume-tz Nowhere",
                             "stats --assume-tz Nowhere",
                             "list --modified-since 1.1.2024",
                             "list --limit many",
                             "list --limit -1",
                             "list --grep (",
                             "list -o xml",
                             "list -o entries",
                             "list --ids --count",
                             "list --ids -o vmsg",
                             "list --local -o ndjson",
                             "list --local -o vmsg",
                             "list --local --ids",
                             "list --local --count",
                             "list --local --assume-tz Nowhere",
                             "list --timeout 0",
                             "list --timeout soon",
                             "list --timeout 1e9",
                             "list --timeout inf",
                             "list --progress often",
                             "list --store=",
                             "show",
                             "show x",
                             "show 1.5",
                             "show 99999999999",
                             "show -o entries 1",
                             "add --folder all -",
                             "add --folder spam -",
                             "add --chunk 0 -",
                             "add --chunk 1001 -",
                             "add --on-duplicate maybe -",
                             "add --on-bad-time later -",
                             "add -o vmsg -",
                             "add --rejects /nonexistent/rejects.vmsg -",
                             "modify",
                             "modify 1",
                             "modify 1 2 3",
                             "modify x -",
                             "modify --read",
                             "modify --read x",
                             "modify --read --unread 1",
                             "modify --folder drafts 1",
                             "modify --folder spam 1",
                             "modify --folder all 1",
                             "modify - -",
                             "delete",
                             "delete --yes",
                             "delete --yes x",
                             "delete --yes -o vmsg 1",
                             "calls frob",
                             "calls extra list",
                             "calls list extra",
                             "calls wipe --yes extra",
                             "calls --type sideways",
                             "calls --type",
                             "calls --since tomorrow",
                             "calls -o vmsg",
                             "calls --count -o entries",
                             "calls --count --ids",
                             "calls --limit -1",
                             "calls --until never",
                             "calls --assume-tz Nowhere",
                             "calls --number=",
                             "calls --number 1 --number-tail 1",
                             "calls wipe --yes --limit 1",
                             "calls --yes",
                             "calls --on-duplicate add",
                             "calls add -o entries -",
                             "calls add --on-duplicate maybe -",
                             "calls add --type in -",
                             "calls wipe",
                             "calls wipe --yes -o entries",
                             "calls wipe --yes --since 2024-01-01"})
        QTest::newRow(line) << QString::fromLatin1(line).split(QLatin1Char(' '));
    QTest::newRow("nothing") << QStringList();
}

void TestUsage::refusesWhatItDoesNotUnderstand()
{
    QFETCH(QStringList, arguments);
    ClientProcess client;
    const auto outcome = client.run(arguments, hello);
    QCOMPARE(outcome.exitCode, 2);
    QCOMPARE(outcome.output, QByteArray());
    QVERIFY(outcome.errors.startsWith("korvasync: "));
    QCOMPARE(outcome.errors.count('\n'), 1);
    QVERIFY(!QFile::exists(client.store()));
}

void TestUsage::saysWhatItDoesNotUnderstand_data()
{
    QTest::addColumn<QByteArray>("sentence");
    const auto row = [](const char *line, const char *sentence) {
        QTest::newRow(line) << QByteArray(sentence);
    };
    row("frob", "there is no command frob; see korvasync --help");
    row("list --frob", "Unknown option 'frob'; see korvasync list --help");
    row("list --folder", "Missing value after '--folder'; see korvasync list --help");
    row("list --ids=3", "Unexpected value after '--ids'; see korvasync list --help");
    row("show x", "x is no database id; \"korvasync list\" shows them");
    row("show", "show needs an id; \"korvasync list\" shows them");
    row("show -x", "Unknown option 'x'; see korvasync show --help");
    row("list extra", "list takes no arguments; --number and --grep look for messages");
    row("list --ids --count", "--ids and --count exclude each other");
    row("list --number 1 --number-tail 1", "--number and --number-tail exclude each other");
    row("list --number=", "--number needs a number or a name");
    row("list --number-tail=", "--number-tail needs a number or a name");
    row("list --ids -o vmsg", "--ids and -o vmsg exclude each other");
    row("list --timeout inf",
        "--timeout is a number of seconds above 0 and up to 1000000; see korvasync list --help");
    row("list -o xml",
        "list prints text, ndjson, vmsg, csv, mbox, android-xml; see korvasync list --help");
    row("lis", "there is no command lis (did you mean list?); see korvasync --help");
    row("SHWO 1", "there is no command SHWO (did you mean show?); see korvasync --help");
    row("--stroe x list", "Unknown option 'stroe' (did you mean store?); see korvasync --help");
    row("list --sinse 1",
        "Unknown option 'sinse' (did you mean since?); see korvasync list --help");
    row("calls add --rejcts x",
        "Unknown option 'rejcts' (did you mean rejects?); see korvasync calls add --help");
    row("calls wpie",
        "calls has no action wpie (did you mean wipe?); it takes [list] | add [FILE|-]... | wipe; "
        "see korvasync calls --help");
    row("calls frob wipe",
        "calls has no action frob; it takes [list] | add [FILE|-]... | wipe; "
        "see korvasync calls --help");
}

void TestUsage::saysWhatItDoesNotUnderstand()
{
    QFETCH(QByteArray, sentence);
    const QStringList arguments =
        QString::fromLatin1(QTest::currentDataTag()).split(QLatin1Char(' '));
    QCOMPARE(ClientProcess().run(arguments).errors, "korvasync: " + sentence + '\n');
}

void TestUsage::repeatsNamesAsTheyAre()
{
    ClientProcess client;
    client.workingDirectory = client.filePath(QString());
    const auto none = client.run({text("modify"), text("1"), text("%1%2 %n.vmg")});
    QCOMPARE(none.errors,
             QByteArray("korvasync: %1%2 %n.vmg cannot be read: No such file or directory; name a "
                        "file that you may read\n"));
    client.write(text("%1%2.vmg"), hello + hello);
    const auto two = client.run({text("modify"), text("1"), text("%1%2.vmg")});
    QCOMPARE(two.errors,
             QByteArray("korvasync: modify takes exactly one message, and %1%2.vmg has more\n"));
    const auto outcome = client.run({text("add"), text("-"), text("--rejects"), text("%1/%2")});
    QCOMPARE(outcome.errors,
             QByteArray("korvasync: %1/%2 cannot be written: No such file or directory; name "
                        "another with --rejects\n"));
}

void TestUsage::helps_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("start");
    const auto row = [](const char *line, const char *start) {
        QTest::newRow(line) << QString::fromLatin1(line).split(QLatin1Char(' '))
                            << QByteArray(start);
    };
    row("--help", "Usage: korvasync [OPTIONS] COMMAND [ARGUMENTS]\n");
    row("-h", "Usage: korvasync [OPTIONS] COMMAND [ARGUMENTS]\n");
    row("list --help", "Usage: korvasync [OPTIONS] list\n");
    row("-h list", "Usage: korvasync [OPTIONS] list\n");
    row("show -h", "Usage: korvasync [OPTIONS] show ID...\n");
    row("add -h", "Usage: korvasync [OPTIONS] add [FILE|DIR|-]...\n");
    row("modify -h", "Usage: korvasync [OPTIONS] modify ID FILE|- | ID...\n");
    row("delete -h", "Usage: korvasync [OPTIONS] delete ID...\n");
    row("calls -h", "Usage: korvasync [OPTIONS] calls list\n");
    row("calls list -h", "Usage: korvasync [OPTIONS] calls list\n");
    row("calls wipe -h", "Usage: korvasync [OPTIONS] calls wipe\n");
    row("dups -h", "Usage: korvasync [OPTIONS] dups\n");
    row("send -h", "Usage: korvasync [OPTIONS] send [-] | NUMBER -|TEXT\n");
    row("stats -h", "Usage: korvasync [OPTIONS] stats\n");
    row("numbers -h", "Usage: korvasync [OPTIONS] numbers\n");
    row("dups -h", "Usage: korvasync [OPTIONS] dups\n");
    row("verify -h", "Usage: korvasync [OPTIONS] verify FILE|DIR|-...\n");
    row("conversations -h", "Usage: korvasync [OPTIONS] conversations\n");
    row("changes -h", "Usage: korvasync [OPTIONS] changes [CURSOR]\n");
    row("--version", "korvasync ");
    row("list --version", "korvasync ");
    row("calls add --version", "korvasync ");
    row("calls add --help", "Usage: korvasync [OPTIONS] calls add [FILE|-]...\n");
}

void TestUsage::helps()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, start);
    const auto outcome = ClientProcess().run(arguments);
    QCOMPARE(outcome.exitCode, 0);
    QVERIFY2(outcome.output.startsWith(start), outcome.output);
    QVERIFY(outcome.output.endsWith('\n'));
    QCOMPARE(outcome.errors, QByteArray());
    for (const QByteArray &line : outcome.output.split('\n'))
        QVERIFY2(line.size() <= 80, line);
}

void TestUsage::helpsWithWhatAVerbTakes_data()
{
    QTest::addColumn<QByteArray>("taken");
    QTest::addColumn<QByteArray>("foreign");
    const auto row = [](const char *line, const char *taken, const char *foreign) {
        QTest::newRow(line) << QByteArray(taken) << QByteArray(foreign);
    };
    row("list", "vmsg, csv", "--dry-run");
    row("list", "Exit codes: ", "--progress");
    row("add", "--dry-run", "csv");
    row("add", "drafts are refused", "entries");
    row("add", "auto (default: on a", "mbox");
    row("modify", "--dry-run", "--progress");
    row("delete", "--progress", "csv");
    row("calls list", "entries", "--rejects");
    row("calls add", "--rejects", "--type");
    row("calls wipe", "--yes", "--rejects");
}

void TestUsage::helpsWithWhatAVerbTakes()
{
    QFETCH(QByteArray, taken);
    QFETCH(QByteArray, foreign);
    const QStringList verb = QString::fromLatin1(QTest::currentDataTag()).split(QLatin1Char(' '));
    const QByteArray help = ClientProcess().run(verb + QStringList{text("--help")}).output;
    QVERIFY2(help.contains(taken), help);
    QVERIFY2(!help.contains(foreign), help);
    QVERIFY2(help.contains("Example"), help);
    QVERIFY2(help.contains("Exit codes: 0 "), help);
}

void TestUsage::takesGlobalOptionsBeforeAndAfterTheCommand()
{
    ClientProcess client;
    client.fill(hello);
    const QString program = QStringLiteral(KORVASYNC_CLIENT);
    const QByteArray ndjson = client.listed();
    QVERIFY(ndjson.startsWith("{\"id\":1,"));
    for (const QStringList &arguments :
         {QStringList{text("--store"), client.store(), text("-o"), text("ndjson"), text("list")},
          QStringList{text("list"), text("-ondjson"), text("--store"), client.store()},
          QStringList{text("-o"), text("ndjson"), text("list"), text("--store=") + client.store()}})
        QCOMPARE(client.runProgram(program, arguments).output, ndjson);
}

void TestUsage::takesTheFirstOperandForTheAction_data()
{
    QTest::addColumn<QByteArray>("page");
    const auto row = [](const char *line, const char *page) {
        QTest::newRow(line) << "Usage: korvasync [OPTIONS] " + QByteArray(page) + '\n';
    };
    row("calls --store wipe", "calls list");
    row("calls --store wipe list", "calls list");
    row("calls --store list wipe", "calls wipe");
    row("calls --store=add wipe", "calls wipe");
    row("calls -o wipe add", "calls add [FILE|-]...");
    row("calls --rejects wipe add", "calls add [FILE|-]...");
    row("calls --type add", "calls list");
    row("--store calls calls -q wipe add", "calls wipe");
    row("calls add wipe", "calls add [FILE|-]...");
    row("calls -- wipe", "calls wipe");
    row("show --store x 1 -o text 2", "show ID...");
}

void TestUsage::takesTheFirstOperandForTheAction()
{
    QFETCH(QByteArray, page);
    const QStringList words = QString::fromLatin1(QTest::currentDataTag()).split(QLatin1Char(' '));
    const auto outcome = ClientProcess().run(QStringList{text("--help")} + words);
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(outcome.output.left(outcome.output.indexOf('\n') + 1), page);
}

void TestUsage::takesTheStoreOfTheEnvironment()
{
    ClientProcess client;
    const QString program = QStringLiteral(KORVASYNC_CLIENT);
    QCOMPARE(client.runProgram(program, {text("add"), text("-q")}, hello).exitCode, 0);
    QVERIFY(QFile::exists(client.filePath(text("data/korvasync/korvasync-store"))));
    client.environment.insert(text("KORVASYNC_STORE"), client.filePath(text("elsewhere")));
    QCOMPARE(client.runProgram(program, {text("list")}).exitCode, 3);
    QCOMPARE(client.runProgram(program, {text("add"), text("-q")}, hello).exitCode, 0);
    QVERIFY(QFile::exists(client.filePath(text("elsewhere/korvasync-store"))));
    QCOMPARE(client.run({text("list")}).exitCode, 3); // --store goes first
}

void TestUsage::leavesTheSummaryOutWhenQuiet()
{
    const QByteArray draft = vMessage("DRAFTS", "20101103T142530Z", "+15550100", "Hello");
    const QByteArray result("refused  -:1  sms-draft: a draft, and drafts cannot be written\n");
    const QByteArray warning(
        "korvasync: 1 not done (sms-draft): a draft, and drafts cannot be written\n");
    ClientProcess client;
    const auto normal = client.run({text("add")}, draft);
    QCOMPARE(normal.output, result + "1 read, 0 added, 0 present, 1 refused, 0 failed\n");
    QCOMPARE(normal.errors, warning);
    const auto quiet = client.run({text("add"), text("-q")}, draft);
    QCOMPARE(quiet.output, result);
    QCOMPARE(quiet.errors, warning);
    const auto quieter = client.run({text("-qq"), text("add")}, draft);
    QCOMPARE(quieter.output, result);
    QCOMPARE(quieter.errors, QByteArray());
    QCOMPARE(quieter.exitCode, 1);
}

void TestUsage::keepsNumbersAndTextsOffStderr()
{
    ClientProcess client;
    client.environment.insert(text("QT_LOGGING_RULES"), text("*=true"));
    QCOMPARE(client.run({text("add")}, hello).errors, QByteArray());
    QCOMPARE(client.run({text("list")}).errors, QByteArray());
    QCOMPARE(client.run({text("delete"), text("--yes"), text("1")}).errors, QByteArray());
}

void TestUsage::showsTheTraceWhenVerbose()
{
    ClientProcess client;
    const auto added = client.run({text("add"), text("-v")}, hello);
    QVERIFY(added.errors.contains("Time taken by PendingStatus to write/modify"));
    QVERIFY(added.errors.contains("+15550100"));
    QVERIFY(!added.output.contains("+15550100"));
}

void TestUsage::printsTimesInUtcInAnyZone()
{
    const QByteArray local =
        vMessage("INBOX", "", "+15550100", "Hello")
            .replace("BEGIN:VBODY\r\n", "BEGIN:VBODY\r\nDate: 03.07.2010 14:25:30\r\n");
    const QMap<QString, QByteArray> times{{text("Asia/Kathmandu"), "2010-07-03T08:40:30Z"},
                                          {text("America/New_York"), "2010-07-03T18:25:30Z"},
                                          {text("UTC"), "2010-07-03T14:25:30Z"}};
    for (auto time = times.cbegin(); time != times.cend(); ++time) {
        ClientProcess client;
        client.environment.insert(text("TZ"), time.key());
        client.fill(local);
        QVERIFY2(client.listed().contains(time.value()), client.listed());
        client.environment.insert(text("TZ"), text("Europe/Helsinki"));
        QVERIFY2(client.listed().contains(time.value()), client.listed());
    }
}

QTEST_GUILESS_MAIN(TestUsage)
#include "tst_usage.moc"
