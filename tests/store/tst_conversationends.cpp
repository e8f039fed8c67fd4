// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "storetesting.h"

#include <sparql/qsparqlconnection.h>
#include <sparql/qsparqlresult.h>

#include <QtCore/QRandomGenerator>

#include <libtracker-sparql/tracker-sparql.h>

#include <memory>

using namespace CommHistory;
using namespace StoreTesting;

//! The conversation query is answered by an index of the ends of the parties. It must find what the
//! query itself finds in the database, in its order. Five thousand random questions, and two
//! hundred thousand with KORVASYNC_TEST_LONG.
class TestConversationEnds : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void theIndexFindsWhatTheQueryFinds();
};

namespace {

constexpr int Accounts = 20;      // each as a store of its own
constexpr int Conversations = 25; // that come between two rounds of questions
constexpr int Rounds = 10;

struct Deleter
{
    void operator()(gpointer object) const { g_object_unref(object); }
};
template <typename T>
using Pointer = std::unique_ptr<T, Deleter>;

//! The database, open for a second time, and the query as it is but for the graph.
class Database
{
public:
    Database()
    {
        const QByteArray path = qgetenv("KORVASYNC_STORE") + "/db";
        const Pointer<GFile> folder(g_file_new_for_path(path.constData()));
        m_connection.reset(tracker_sparql_connection_new(TRACKER_SPARQL_CONNECTION_FLAGS_READONLY,
                                                         folder.get(), nullptr, nullptr, nullptr));
    }

    bool isOpen() const { return bool(m_connection); }

    QStringList find(const QString &account, const QString &expression) const
    {
        const Pointer<TrackerSparqlStatement> statement(tracker_sparql_connection_query_statement(
            m_connection.get(),
            "SELECT ?comm FROM <urn:korvasync:history> WHERE { ?comm a nmo:CommunicationChannel ;"
            " nie:subject ~account ; nie:generator ?remoteId . FILTER REGEX(?remoteId, ~party) }",
            nullptr, nullptr));
        tracker_sparql_statement_bind_string(statement.get(), "account",
                                             account.toUtf8().constData());
        tracker_sparql_statement_bind_string(statement.get(), "party",
                                             expression.toUtf8().constData());
        const Pointer<TrackerSparqlCursor> cursor(
            tracker_sparql_statement_execute(statement.get(), nullptr, nullptr));
        QStringList found;
        while (cursor && tracker_sparql_cursor_next(cursor.get(), nullptr, nullptr))
            found.append(
                QString::fromUtf8(tracker_sparql_cursor_get_string(cursor.get(), 0, nullptr)));
        return found;
    }

    QString partyOf(const QString &conversation) const
    {
        const Pointer<TrackerSparqlStatement> statement(tracker_sparql_connection_query_statement(
            m_connection.get(),
            "SELECT ?remoteId FROM <urn:korvasync:history> WHERE { ~comm nie:generator ?remoteId }",
            nullptr, nullptr));
        tracker_sparql_statement_bind_string(statement.get(), "comm",
                                             conversation.toUtf8().constData());
        const Pointer<TrackerSparqlCursor> cursor(
            tracker_sparql_statement_execute(statement.get(), nullptr, nullptr));
        const bool isFound = cursor && tracker_sparql_cursor_next(cursor.get(), nullptr, nullptr);
        return isFound
            ? QString::fromUtf8(tracker_sparql_cursor_get_string(cursor.get(), 0, nullptr))
            : QString();
    }

private:
    Pointer<TrackerSparqlConnection> m_connection;
};

int random(int end) { return QRandomGenerator::global()->bounded(end); }

//! Few signs, so that many end alike; with some that end a line, or mean something to an
//! expression.
QString randomText(const QStringList &signs, int longest)
{
    QString text;
    for (int length = random(longest + 1); length > 0; --length)
        text += signs.at(random(int(signs.size())));
    return text;
}

const QStringList Signs{QStringLiteral("1"),      QStringLiteral("2"), QStringLiteral("1"),
                        QStringLiteral("2"),      QStringLiteral("a"), QStringLiteral("\u00e9"),
                        QStringLiteral("\u20ac"), QStringLiteral("."), QStringLiteral("^")};

QString randomParty()
{
    static const QStringList lineEnds{
        QStringLiteral("\n"),     QStringLiteral("\r"),     QStringLiteral("\r\n"),
        QStringLiteral("\v"),     QStringLiteral("\f"),     QStringLiteral("\u0085"),
        QStringLiteral("\u2028"), QStringLiteral("\u2029"), QStringLiteral("\n\n")};
    const QString text = randomText(Signs, 10);
    return random(4) == 0 ? text + lineEnds.at(random(int(lineEnds.size()))) : text;
}

bool addConversations(const QString &account)
{
    QList<Group> groups;
    for (int i = 0; i < Conversations; ++i) {
        Group group;
        group.setLocalUid(account);
        group.setRemoteUids({randomParty()});
        groups.append(group);
    }
    GroupModel model;
    QSignalSpy committed(&model, &GroupModel::groupsCommitted);
    model.addGroups(groups);
    return committed.wait(Patience) && committed.first().at(1).toBool();
}

QStringList ask(const QString &account, const QString &party)
{
    QSparqlConnection connection(QStringLiteral("QTRACKER_DIRECT"));
    const QScopedPointer<QSparqlResult> result(connection.exec(QSparqlQuery(
        QStringLiteral("SELECT ?comm WHERE{?comm a nmo:CommunicationChannel; nie:subject '%1'; "
                       "nie:generator ?remoteId. FILTER REGEX(?remoteId, '%2$')}")
            .arg(account, party))));
    QStringList found;
    while (result && result->next())
        found.append(result->value(0));
    return found;
}

} // namespace

void TestConversationEnds::theIndexFindsWhatTheQueryFinds()
{
    const int questions =
        (qEnvironmentVariableIsSet("KORVASYNC_TEST_LONG") ? 200000 : 5000) / (Accounts * Rounds);
    int several = 0;
    int none = 0;
    int own = 0;
    for (int account = 0; account < Accounts; ++account) {
        const QString name = QStringLiteral("account%1").arg(account);
        for (int round = 0; round < Rounds; ++round) {
            QVERIFY(addConversations(name));
            const Database database;
            QVERIFY(database.isOpen());
            for (int i = 0; i < questions; ++i) {
                const QString party = randomText(Signs, random(2) == 0 ? 3 : 9);
                const QStringList expected = database.find(name, party + QLatin1Char('$'));
                const QStringList found = ask(name, party);
                several += expected.size() > 1 ? 1 : 0;
                none += expected.isEmpty() ? 1 : 0;
                // The party's own conversation goes before all others.
                const bool isOwn = found.size() == 1 && expected != found;
                own += isOwn ? 1 : 0;
                if (isOwn)
                    QCOMPARE(database.partyOf(found.first()), party);
                else
                    QCOMPARE(found, expected);
            }
        }
    }
    // There were questions of each kind.
    QVERIFY(several > 50);
    QVERIFY(none > 50);
    QVERIFY(own > 5);
}

STORE_TEST_MAIN(TestConversationEnds)
#include "tst_conversationends.moc"
