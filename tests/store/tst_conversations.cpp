// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "storetesting.h"

#include <sparql/qsparqlconnection.h>
#include <sparql/qsparqlresult.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

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
    void aConversationOfManyIsNotThatOfItsLast();
    void reportsKeepTheOrderOfTheRequest();
    void anEmptyRequestIsReportedOnce();
    void aReceiverMayDeleteTheModel();

    void resultsAreSteppedThrough();
    void aQueryMayNameItsGraph();
    void anUnboundVariableHasNoValue();
    void textsInAQueryAreTakenAsTheyStand_data();
    void textsInAQueryAreTakenAsTheyStand();
    void manyKindsOfQueriesAreAnswered();
    void aBadQueryHasAnError();
    void anUnknownDriverAnswersNothing();
    void aNumberCannotAskAnotherMachine_data();
    void aNumberCannotAskAnotherMachine();
    void anEndlessQueryEndsWithoutAnAnswer();
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
    while (result->next())
        found.append(result->binding(0).value());
    return found;
}

//! A port of this machine on which nobody is answered.
class SilentServer
{
public:
    SilentServer()
        : m_socket(::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0))
    {
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof(address);
        auto *const any = reinterpret_cast<sockaddr *>(&address);
        if (::bind(m_socket, any, length) == 0 && ::listen(m_socket, 5) == 0
            && ::getsockname(m_socket, any, &length) == 0)
            m_port = ntohs(address.sin_port);
    }
    ~SilentServer() { ::close(m_socket); }
    int port() const { return m_port; } //!< 0 when there is no server
    bool wasCalled() const
    {
        const int caller = ::accept(m_socket, nullptr, nullptr);
        if (caller >= 0)
            ::close(caller);
        return caller >= 0;
    }

private:
    Q_DISABLE_COPY(SilentServer)
    int m_socket;
    int m_port = 0;
};

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
    QSparqlConnection connection(Driver, QSparqlConnectionOptions());
    const QScopedPointer<QSparqlResult> result(connection.exec(QSparqlQuery(
        QStringLiteral("SELECT ?a ?b { VALUES (?a ?b) { ('one' 1) ('two' 2) } } ORDER BY ?a"))));
    QVERIFY(result);
    result->waitForFinished();
    QVERIFY(!result->hasError());
    QCOMPARE(result->value(0), QString()); // before the first row
    QVERIFY(result->next());
    QCOMPARE(result->binding(0).name(), QStringLiteral("a"));
    QCOMPARE(result->value(0), QStringLiteral("one"));
    QCOMPARE(result->value(1), QStringLiteral("1"));
    QVERIFY(result->value(2).isNull());
    QVERIFY(result->value(-1).isNull());
    QVERIFY(result->next());
    QCOMPARE(result->value(0), QStringLiteral("two"));
    QVERIFY(!result->next());
    QVERIFY(!result->next());
    QVERIFY(result->value(0).isNull());
}

void TestConversations::aQueryMayNameItsGraph()
{
    QCOMPARE(int(addGroups({group(QStringLiteral("account"), {QStringLiteral("5550117")})}).size()),
             1);
    QSparqlConnection connection(Driver, QSparqlConnectionOptions());
    const QScopedPointer<QSparqlResult> result(connection.exec(QSparqlQuery(
        QStringLiteral("SELECT ?graph WHERE { GRAPH ?graph { ?comm nie:generator '5550117' } }"))));
    QVERIFY(result && result->next());
    QCOMPARE(result->value(0), QStringLiteral("urn:korvasync:history"));
}

void TestConversations::anUnboundVariableHasNoValue()
{
    QSparqlConnection connection(Driver, QSparqlConnectionOptions());
    const QScopedPointer<QSparqlResult> result(connection.exec(
        QSparqlQuery(QStringLiteral("SELECT ?a ?b { VALUES (?a ?b) { ('one' UNDEF) } }"))));
    QVERIFY(result && result->next());
    QVERIFY(result->value(1).isNull());
    QCOMPARE(result->binding(1).name(), QStringLiteral("b"));
}

void TestConversations::textsInAQueryAreTakenAsTheyStand_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<QString>("value");
    const auto row = [](const char *name, const char *expression, const char *value) {
        QTest::newRow(name) << QString::fromUtf8(expression) << QString::fromUtf8(value);
    };
    row("one", "STR('one')", "one");
    row("another", "STR('another')", "another");
    row("two", "CONCAT('one', 'two')", "onetwo");
    row("the other way round", "CONCAT('two', 'one')", "twoone");
    row("empty", "CONCAT('', '')", "");
    row("beyond ASCII", "STR('\xc3\xa4\xe2\x82\xac')", "\xc3\xa4\xe2\x82\xac");
    row("the name of a parameter", "CONCAT('~text1', 'x')", "~text1x");
    row("with a type", "'41'^^xsd:integer + 1", "42");
    row("with another type", "'1'^^xsd:integer + '1'^^xsd:integer", "2");
    row("in long quotes", "STR('''it''s''')", "it''s");
    row("in other quotes", "CONCAT(\"it's\", 'so')", "it'sso");
    row("with an escape", "STR('it\\'s')", "it's");
    row("as a pattern", "REPLACE('5550100', '.*(.)$', 'x')", "x");
    row("behind a remark", "STR( # it's\n'so')", "so");
}

void TestConversations::textsInAQueryAreTakenAsTheyStand()
{
    QFETCH(QString, expression);
    QSparqlConnection connection(Driver, QSparqlConnectionOptions());
    const QScopedPointer<QSparqlResult> result(
        connection.exec(QSparqlQuery(QStringLiteral("SELECT (%1 AS ?a) { }").arg(expression))));
    QVERIFY(result && result->next());
    QTEST(result->value(0), "value");
}

// More kinds than are kept prepared, between queries of a kind that is.
void TestConversations::manyKindsOfQueriesAreAnswered()
{
    const QString account = QStringLiteral("kinds");
    QCOMPARE(addGroups({group(account, {QStringLiteral("5550108")})}).size(), 1);
    QSparqlConnection connection(Driver, QSparqlConnectionOptions());
    for (int i = 0; i < 250; ++i) {
        const QScopedPointer<QSparqlResult> result(connection.exec(
            QSparqlQuery(QStringLiteral("SELECT ('value' AS ?kind%1) { }").arg(i))));
        QVERIFY(result && result->next());
        QCOMPARE(result->value(0), QStringLiteral("value"));
        QCOMPARE(find(account, QStringLiteral("5550108")).size(), 1);
    }
}

void TestConversations::aBadQueryHasAnError()
{
    QSparqlConnection connection(Driver, QSparqlConnectionOptions());
    for (const char *text : {"SELECT", "INSERT DATA { <a:b> a nmo:CommunicationChannel }", ""}) {
        const QScopedPointer<QSparqlResult> result(
            connection.exec(QSparqlQuery(QString::fromLatin1(text))));
        QVERIFY(result);
        result->waitForFinished();
        QVERIFY(result->hasError());
        QVERIFY(!result->next());
    }
}

void TestConversations::anUnknownDriverAnswersNothing()
{
    QSparqlConnection connection(QStringLiteral("QSPARQL_ENDPOINT"), QSparqlConnectionOptions());
    QVERIFY(!connection.exec(QSparqlQuery(QStringLiteral("SELECT ?a { VALUES ?a { 1 } }"))));
}

void TestConversations::aNumberCannotAskAnotherMachine_data()
{
    QTest::addColumn<QString>("word");
    QTest::newRow("upper case") << QStringLiteral("SERVICE");
    QTest::newRow("lower case") << QStringLiteral("service");
    QTest::newRow("escaped letter") << QStringLiteral("SERV\\u0049CE");
    QTest::newRow("long escaped letter") << QStringLiteral("\\U00000053ERVICE");
}

void TestConversations::aNumberCannotAskAnotherMachine()
{
    QFETCH(QString, word);
    const SilentServer server;
    QVERIFY(server.port() > 0);
    const QString number =
        QStringLiteral("x') . %1 <http://127.0.0.1:%2/> { ?comm a nmo:Message } } #")
            .arg(word)
            .arg(server.port());
    QCOMPARE(find(QStringLiteral("account"), number), QStringList());
    QVERIFY(!server.wasCalled());
}

void TestConversations::anEndlessQueryEndsWithoutAnAnswer()
{
    const QString account = QStringLiteral("endless");
    QList<Group> groups;
    for (int i = 0; i < 1000; ++i)
        groups.append(group(account, {QString::number(6000000 + i)}));
    QCOMPARE(addGroups(groups).size(), 1000);
    const QString number = QStringLiteral("x') . ?a nie:subject ?l . ?b nie:subject ?l . "
                                          "?c nie:subject ?l . ?d nie:subject ?l . "
                                          "FILTER REGEX(CONCAT(STR(?a), STR(?b)), 'x");
    QCOMPARE(find(account, number), QStringList());
    QCOMPARE(find(account, QStringLiteral("6000999")).size(), 1); // the next one is answered
}

STORE_TEST_MAIN(TestConversations)
#include "tst_conversations.moc"
