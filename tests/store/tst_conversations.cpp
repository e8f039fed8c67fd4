// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "oddnames.h"
#include "storetesting.h"

#include <sparql/qsparqlconnection.h>
#include <sparql/qsparqlresult.h>

using namespace CommHistory;
using namespace StoreTesting;

//! Conversations, and the query by which clients find them. Each function uses parties of
//! its own.
class TestConversations : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QVERIFY(makeStore()); }
    void aNewConversationIsFoundByTheEndOfItsNumber();
    void anExistingOneIsHandedBack();
    void twinsInOneRequestAreOne();
    void partiesAreComparedAsTexts();
    void namesThatLookAlikeAreNotOne_data();
    void namesThatLookAlikeAreNotOne();
    void aConversationOfManyIsNotThatOfItsLast();
    void reportsKeepTheOrderOfTheRequest();
    void anEmptyRequestIsReportedOnce();
    void aReceiverMayDeleteTheModel();

    void resultsAreSteppedThrough();
    void anExpressionIsTakenAsTheQueryHasIt_data();
    void anExpressionIsTakenAsTheQueryHasIt();
    void aPartysOwnConversationComesFirst();
    void everyNameHasAConversation_data();
    void everyNameHasAConversation();
    void aPartyNoNumberIsLikeIsNotMatched();
    void textsThatAreNoConversationQueryAreRefused_data();
    void textsThatAreNoConversationQueryAreRefused();
    void anUnknownDriverAnswersNothing();
};

namespace {

const QString Driver = QStringLiteral("QTRACKER_DIRECT");

Group group(const QString &localUid, const QStringList &remoteUids)
{
    Group group;
    group.setLocalUid(localUid);
    group.setRemoteUids(remoteUids);
    return group;
}

QList<int> addGroups(QList<Group> groups)
{
    GroupModel model;
    QSignalSpy committed(&model, &GroupModel::groupsCommitted);
    model.addGroups(groups);
    QList<int> ids;
    while (ids.size() < groups.size()) {
        if (committed.isEmpty() && !committed.wait(Patience))
            return {};
        const QList<QVariant> report = committed.takeFirst();
        if (!report.at(1).toBool())
            return {};
        ids += report.at(0).value<QList<int>>();
    }
    return ids;
}

//! What the clients ask, word for word.
QStringList find(const QString &localUid, const QString &tail)
{
    QSparqlConnection connection(Driver, QSparqlConnectionOptions());
    const QString text =
        QStringLiteral("SELECT ?comm WHERE{?comm a nmo:CommunicationChannel; nie:subject '%1'; "
                       "nie:generator ?remoteId. FILTER REGEX(?remoteId, '%2$')}")
            .arg(localUid, tail);
    const QScopedPointer<QSparqlResult> result(connection.exec(QSparqlQuery(text)));
    if (!result)
        return {QStringLiteral("no result")};
    result->waitForFinished();
    QStringList found;
    if (result->hasError())
        found.append(QStringLiteral("error"));
    while (result->next())
        found.append(result->binding(0).value());
    return found;
}

QString uri(int id) { return QStringLiteral("conversation:%1").arg(id); }

} // namespace

void TestConversations::aNewConversationIsFoundByTheEndOfItsNumber()
{
    const QString account = QStringLiteral("/account/ring/tel");
    const QList<int> ids = addGroups({group(account, {QStringLiteral("5550100")})});
    QCOMPARE(ids.size(), 1);
    QVERIFY(ids.first() > 0);
    QCOMPARE(find(account, QStringLiteral("5550100")), QStringList{uri(ids.first())});
    QCOMPARE(find(account, QStringLiteral("0100")), QStringList{uri(ids.first())});
    QCOMPARE(find(account, QStringLiteral("55501")), QStringList());
    QCOMPARE(find(QStringLiteral("/account/ring"), QStringLiteral("5550100")), QStringList());
}

void TestConversations::anExistingOneIsHandedBack()
{
    const QString account = QStringLiteral("existing");
    const QList<int> first = addGroups({group(account, {QStringLiteral("5550101")})});
    const QList<int> again = addGroups(
        {group(account, {QStringLiteral("5550102")}), group(account, {QStringLiteral("5550101")})});
    QCOMPARE(again.size(), 2);
    QCOMPARE(again.at(1), first.first());
    QVERIFY(again.at(0) != first.first());
    QCOMPARE(find(account, QStringLiteral("5550101")).size(), 1);
}

void TestConversations::twinsInOneRequestAreOne()
{
    const QString account = QStringLiteral("twins");
    const QList<int> ids = addGroups({group(account, {QStringLiteral("5550103")}),
                                      group(account, {QStringLiteral("5550104")}),
                                      group(account, {QStringLiteral("5550103")})});
    QCOMPARE(ids.size(), 3);
    QCOMPARE(ids.at(2), ids.at(0));
    QVERIFY(ids.at(1) != ids.at(0));
    QCOMPARE(find(account, QStringLiteral("5550103")).size(), 1);
}

void TestConversations::partiesAreComparedAsTexts()
{
    const QString account = QStringLiteral("it's \"one\" \\ ?x ~y");
    const QString remote = QStringLiteral("Bank'; $ \xc3\xa4") + QChar(0) + QChar(0xd83d);
    const QList<int> ids =
        addGroups({group(account, {remote}), group(account, {remote.toUpper()})});
    QCOMPARE(ids.size(), 2);
    QVERIFY(ids.at(0) != ids.at(1));
    QCOMPARE(addGroups({group(account, {remote})}), QList<int>{ids.at(0)});
}

void TestConversations::namesThatLookAlikeAreNotOne_data()
{
    QTest::addColumn<QString>("other");
    QTest::newRow("control character") << QStringLiteral("Caf\u0012\u00e9");
    QTest::newRow("blank of no width") << QStringLiteral("Caf\u200b\u00e9");
    QTest::newRow("direction") << QStringLiteral("\u202dCaf\u00e9");
    QTest::newRow("accent of its own") << QStringLiteral("Cafe\u0301");
}

void TestConversations::namesThatLookAlikeAreNotOne()
{
    QFETCH(QString, other);
    const QString account = QString::fromLatin1(QTest::currentDataTag());
    const QString name = QStringLiteral("Caf\u00e9");
    const QList<int> ids = addGroups({group(account, {name})});
    QCOMPARE(ids.size(), 1);
    QCOMPARE(find(account, other), QStringList());
    const QList<int> others = addGroups({group(account, {other})});
    QCOMPARE(others.size(), 1);
    QVERIFY(others != ids);
    QCOMPARE(find(account, other), QStringList{uri(others.first())});
    QCOMPARE(find(account, name), QStringList{uri(ids.first())});
    QCOMPARE(addGroups({group(account, {name}), group(account, {other})}), ids + others);
}

void TestConversations::aConversationOfManyIsNotThatOfItsLast()
{
    const QString account = QStringLiteral("many");
    const QStringList both{QStringLiteral("5550105"), QStringLiteral("5550106")};
    const QList<int> ids = addGroups({group(account, both)});
    QCOMPARE(find(account, QStringLiteral("5550106")), QStringList());
    QCOMPARE(addGroups({group(account, both)}), ids);
    QVERIFY(addGroups({group(account, {both.last()})}) != ids);
}

void TestConversations::reportsKeepTheOrderOfTheRequest()
{
    const QString account = QStringLiteral("order");
    QList<Group> groups;
    for (int i = 0; i < 2200; ++i)
        groups.append(group(account, {QString::number(7000000 + i)}));
    GroupModel model;
    QSignalSpy committed(&model, &GroupModel::groupsCommitted);
    QVERIFY(model.addGroups(groups));
    while (committed.count() < 3 && committed.wait(Patience)) { }
    QCOMPARE(committed.count(), 3);
    QList<int> ids;
    for (const QList<QVariant> &report : committed) {
        QVERIFY(report.at(1).toBool());
        QVERIFY(report.at(0).value<QList<int>>().size() <= 1000);
        ids += report.at(0).value<QList<int>>();
    }
    QCOMPARE(ids.size(), 2200);
    for (const int i : {0, 999, 1000, 2199})
        QCOMPARE(find(account, QString::number(7000000 + i)), QStringList{uri(ids.at(i))});
}

void TestConversations::anEmptyRequestIsReportedOnce()
{
    GroupModel model;
    QSignalSpy committed(&model, &GroupModel::groupsCommitted);
    QList<Group> none;
    QVERIFY(model.addGroups(none));
    QVERIFY(committed.wait(Patience));
    QVERIFY(committed.first().at(0).value<QList<int>>().isEmpty());
    QVERIFY(committed.first().at(1).toBool());
    read(1);
    QCOMPARE(committed.count(), 1);
}

void TestConversations::aReceiverMayDeleteTheModel()
{
    auto *model = new GroupModel;
    int reports = 0;
    connect(model, &GroupModel::groupsCommitted, this, [&] {
        ++reports;
        delete model;
    });
    QList<Group> groups{group(QStringLiteral("deleted"), {QStringLiteral("5550107")})};
    model->addGroups(groups);
    model->addGroups(groups);
    QTRY_COMPARE_WITH_TIMEOUT(reports, 1, Patience);
    read(1);
    QCOMPARE(reports, 1);
}

void TestConversations::resultsAreSteppedThrough()
{
    const QString account = QStringLiteral("stepped");
    const QList<int> ids = addGroups(
        {group(account, {QStringLiteral("5550110")}), group(account, {QStringLiteral("5550111")})});
    QSparqlConnection connection(Driver, QSparqlConnectionOptions());
    const QScopedPointer<QSparqlResult> result(connection.exec(QSparqlQuery(
        QStringLiteral("SELECT ?comm WHERE{?comm a nmo:CommunicationChannel; nie:subject "
                       "'stepped'; nie:generator ?remoteId. FILTER REGEX(?remoteId, '$')}"))));
    QVERIFY(result);
    result->waitForFinished();
    QVERIFY(!result->hasError());
    QVERIFY(result->value(0).isNull()); // before the first row
    QVERIFY(result->next());
    QCOMPARE(result->binding(0).name(), QStringLiteral("comm"));
    QStringList found{result->value(0)};
    QVERIFY(result->value(1).isNull());
    QVERIFY(result->value(-1).isNull());
    QVERIFY(result->next());
    found.append(result->binding(0).value());
    found.sort();
    QStringList expected{uri(ids.at(0)), uri(ids.at(1))};
    expected.sort();
    QCOMPARE(found, expected);
    QVERIFY(!result->next());
    QVERIFY(!result->next());
    QVERIFY(result->value(0).isNull());
}

void TestConversations::anExpressionIsTakenAsTheQueryHasIt_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("asked");
    QTest::addColumn<bool>("isFound");
    const auto row = [](const char *name, const QString &stored, const char *asked, bool isFound) {
        QTest::newRow(name) << stored << QString::fromUtf8(asked) << isFound;
    };
    row("the end", QStringLiteral("InfoPost"), "Post", true);
    row("the beginning", QStringLiteral("InfoPost"), "Info", false);
    row("other letters", QStringLiteral("InfoPost"), "post", false);
    row("nothing", QStringLiteral("InfoPost"), "", true);
    row("any character", QStringLiteral("InfoPost"), "P.st", true);
    row("any character beyond ASCII", QString::fromUtf8("B\xc3\xa4nk"), "B.nk", true);
    row("from the beginning", QStringLiteral("top"), "^top", true);
    row("not from the beginning", QStringLiteral("stop"), "^top", false);
    row("an end in between", QStringLiteral("top"), "t$op", false);
    row("an end twice", QStringLiteral("top"), "op$", true);
    row("a double quote", QStringLiteral("a \"b\""), "\"b\"", true);
    row("an escaped quote", QStringLiteral("O'Neill"), "O\\'Neill", true);
    row("an escaped double quote", QStringLiteral("a\"b"), "a\\\"b", true);
    row("escaped blanks", QStringLiteral("a\t\b\n\r\fb"), "a\\t\\b\\n\\r\\fb", true);
    row("a code point", QStringLiteral("Abc"), "\\u0041bc", true);
    row("a long code point", QString::fromUtf8("\xf0\x9f\x98\x80"), "\\U0001f600", true);
    row("a code point that ends the text", QStringLiteral("x'y"), "x\\u0027y", false);
    row("a code point that is an escape", QStringLiteral("x\\y"), "x\\u005Cy", false);
    row("a code point that is a line end", QStringLiteral("x\ny"), "x\\u000Ay", false);
    row("half a code point", QStringLiteral("x"), "\\uD83D", false);
    row("no code point", QStringLiteral("x"), "\\U00110000", false);
    row("digits that are missing", QStringLiteral("A"), "\\u041", false);
    row("digits that are none", QStringLiteral("A"), "\\u+041", false);
    row("a letter that is no escape", QStringLiteral("a1"), "a\\d", false);
    row("an escape of the end", QStringLiteral("a$"), "a\\", false);
    row("an escaped backslash", QStringLiteral("a1"), "a\\\\d", false);
    row("a choice", QStringLiteral("b"), "a|b", false);
    row("a group", QStringLiteral("Info1"), "Info(1)", false);
    row("a class", QStringLiteral("x"), "[x]", false);
    row("a repetition", QStringLiteral("aab"), "a+b", false);
    row("a counted repetition", QStringLiteral("xx"), "x{2}", false);
    row("as long as a name", QString(200, QLatin1Char('x')), QByteArray(63, 'x').constData(), true);
    row("longer than a name", QString(200, QLatin1Char('x')), QByteArray(64, 'x').constData(),
        false);
}

void TestConversations::anExpressionIsTakenAsTheQueryHasIt()
{
    QFETCH(QString, stored);
    QFETCH(QString, asked);
    QFETCH(bool, isFound);
    const QString account =
        QStringLiteral("expression ") + QString::fromLatin1(QTest::currentDataTag());
    const QList<int> ids = addGroups({group(account, {stored})});
    QCOMPARE(ids.size(), 1);
    QCOMPARE(find(account, asked), isFound ? QStringList{uri(ids.first())} : QStringList());
}

void TestConversations::aPartysOwnConversationComesFirst()
{
    const QString account = QStringLiteral("own");
    const QStringList parties{QStringLiteral("5554567"), QStringLiteral("4567"),
                              QStringLiteral("ab"), QStringLiteral("a.")};
    QList<Group> groups;
    for (const QString &party : parties)
        groups.append(group(account, {party}));
    const QList<int> ids = addGroups(groups);
    QCOMPARE(ids.size(), 4);
    for (int i = 0; i < 4; ++i)
        QCOMPARE(find(account, parties.at(i)), QStringList{uri(ids.at(i))});
}

void TestConversations::everyNameHasAConversation_data()
{
    QTest::addColumn<QString>("name");
    const auto row = [](const char *name) { QTest::newRow(name) << QString::fromUtf8(name); };
    for (const QByteArray &name : oddNames())
        row(name.constData());
    for (const char *name : {"B~ank", "\\", "~party", "$", ".", "?comm", "$')}"})
        row(name);
    row("') FILTER('x' != 'y");
    row("') SERVICE <http://127.0.0.1:9/> { ?x ?y ?z } FILTER('x' != 'y");
    row("x'} ; DELETE { ?s ?p ?o } WHERE { ?s ?p ?o } #");
    row("'; nie:generator ?remoteId. FILTER REGEX(?remoteId, 'x");
    row("(a|a)*b|((x+x+)+)+y");
    row("(?:a{1,65535}){1,65535}x");
    row("(?R)x");
    const auto longRow = [](const char *name, const char *before, const char *again, int times,
                            const char *after) {
        QTest::newRow(name) << QLatin1String(before)
                + QString::fromLatin1(QByteArray(again).repeated(times)) + QLatin1String(after);
    };
    longRow("5.5 KB of choices", "') FILTER(", "'a'='b' || ", 500, "true) FILTER('x' != 'y");
    longRow("6,000 parentheses", "') FILTER(", "(", 6000, "1) FILTER('x' != 'y");
    longRow("100,000 parentheses", "a", "(", 100000, "");
    longRow("1 MiB of quotes", "", "'", 1 << 20, "");
    longRow("1 MiB of backslashes", "", "\\", 1 << 20, "");
    longRow("1 MiB of letters", "", "a", 1 << 20, "");
    QTest::newRow("zero") << QStringLiteral("a") + QChar(0) + QStringLiteral("b");
    QTest::newRow("line end") << QStringLiteral("a\nb\r");
    QTest::newRow("half a character") << QString(QChar(0xd83d)) + QStringLiteral("a");
    QTest::newRow("byte order mark") << QString(QChar(0xfeff)) + QStringLiteral("a");
}

// Whatever it means to the language of queries or to an expression, it finds nothing that it has
// no part in, and once its conversation is there, that one.
void TestConversations::everyNameHasAConversation()
{
    QFETCH(QString, name);
    const QString account = QStringLiteral("name ")
        + QString::fromLatin1(QTest::currentDataTag()).remove(QLatin1Char('\''));
    QCOMPARE(addGroups({group(account, {QStringLiteral("<")})}).size(), 1);
    QCOMPARE(find(account, name).contains(QStringLiteral("error")), false);
    const QList<int> ids = addGroups({group(account, {name})});
    QCOMPARE(ids.size(), 1);
    QCOMPARE(find(account, name), QStringList{uri(ids.first())});
}

void TestConversations::aPartyNoNumberIsLikeIsNotMatched()
{
    const QString account = QStringLiteral("long");
    const QList<int> ids = addGroups({group(account, {QString(1000, QLatin1Char('1'))}),
                                      group(account, {QString(1001, QLatin1Char('1'))})});
    QCOMPARE(ids.size(), 2);
    QCOMPARE(find(account, QStringLiteral("1111111")), QStringList{uri(ids.first())});
}

void TestConversations::textsThatAreNoConversationQueryAreRefused_data()
{
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const char *text) {
        QTest::newRow(name) << QString::fromLatin1(text);
    };
    row("empty", "");
    row("half a query", "SELECT");
    row("an update", "INSERT DATA { <a:b> a nmo:CommunicationChannel }");
    row("another query", "SELECT ?comm WHERE{?comm a nmo:CommunicationChannel}");
    row("a value", "SELECT ('one' AS ?a) { }");
    row("the beginning alone",
        "SELECT ?comm WHERE{?comm a nmo:CommunicationChannel; nie:subject '$')}");
    row("another account's end",
        "SELECT ?comm WHERE{?comm a nmo:CommunicationChannel; nie:subject 'a' ; nie:generator "
        "?remoteId. FILTER REGEX(?remoteId, '1$')}");
    row("the halves overlapping",
        "SELECT ?comm WHERE{?comm a nmo:CommunicationChannel; nie:subject 'a'; nie:generator "
        "?remoteId. FILTER REGEX(?remoteId, $')}");
    row("without the end",
        "SELECT ?comm WHERE{?comm a nmo:CommunicationChannel; nie:subject 'a'; nie:generator "
        "?remoteId. FILTER REGEX(?remoteId, '1')}");
    row("more behind",
        "SELECT ?comm WHERE{?comm a nmo:CommunicationChannel; nie:subject 'a'; nie:generator "
        "?remoteId. FILTER REGEX(?remoteId, '1$')} LIMIT 1");
}

void TestConversations::textsThatAreNoConversationQueryAreRefused()
{
    QFETCH(QString, text);
    QSparqlConnection connection(Driver, QSparqlConnectionOptions());
    const QScopedPointer<QSparqlResult> result(connection.exec(QSparqlQuery(text)));
    QVERIFY(result);
    result->waitForFinished();
    QVERIFY(result->hasError());
    QVERIFY(!result->next());
}

void TestConversations::anUnknownDriverAnswersNothing()
{
    QSparqlConnection connection(QStringLiteral("QSPARQL_ENDPOINT"), QSparqlConnectionOptions());
    QVERIFY(!connection.exec(QSparqlQuery(QStringLiteral("SELECT ?a { VALUES ?a { 1 } }"))));
}

STORE_TEST_MAIN(TestConversations)
#include "tst_conversations.moc"
