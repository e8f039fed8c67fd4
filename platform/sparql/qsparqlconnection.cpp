// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "qsparqlconnection.h"
#include "qsparqlresult.h"

#include "conversationquery_p.h"
#include "qsparqlresult_p.h"

#include <store/endkey.h>
#include <store/store.h>
#include <store/storeconnection.h>
#include <store/storedtext.h>

#include <algorithm>
#include <functional>
#include <memory>

using CommHistory::Store;
using CommHistory::StoreConnection;

namespace {

// No text of a query reaches the database: these are all that it is asked. They name the graph,
// since to look through all graphs takes half as long again. COALESCE keeps the database from its
// index of accounts, of which there is one.
constexpr char ByParty[] =
    "SELECT ?comm ?remoteId FROM <" KORVASYNC_GRAPH "> WHERE { ?comm a nmo:CommunicationChannel ;"
    " nie:subject ?subject ; nie:generator ?remoteId ."
    " FILTER (?remoteId = ~party && COALESCE(?subject, '') = ~account) }";

// No number is as long as the parties that are passed over, and those take long to match.
constexpr char ByExpression[] =
    "SELECT ?comm ?remoteId FROM <" KORVASYNC_GRAPH "> WHERE { ?comm a nmo:CommunicationChannel ;"
    " nie:subject ~account ; nie:generator ?remoteId ."
    " FILTER (STRLEN(?remoteId) <= 1000 && REGEX(?remoteId, ~party)) }";

// The same rows in the same order, by an index of the ends of the parties.
constexpr char ByEnd[] =
    "SELECT ?comm ?remoteId FROM <" KORVASYNC_GRAPH "> WHERE { ?comm a nmo:CommunicationChannel ;"
    " nie:subject ?subject ; nie:generator ?remoteId ; kv:endKey ?key ."
    " BIND (xsd:integer(~first) AS ?first) BIND (xsd:integer(~last) AS ?last)"
    " FILTER (?key >= ?first && ?key <= ?last && COALESCE(?subject, '') = ~account"
    " && STRLEN(?remoteId) <= 1000 && REGEX(?remoteId, ~party)) } ORDER BY tracker:id(?comm)";

using Take = std::function<void(const char *conversation, const char *remoteId)>;

//! Hands out the conversation and the party of each row; false when the store cannot be read.
bool find(StoreConnection &connection, const char *text, const QString &account,
          const QByteArray &party, const Take &take)
{
    TrackerSparqlStatement *statement = connection.statement(text);
    if (!statement)
        return false;
    tracker_sparql_statement_bind_string(statement, "account",
                                         CommHistory::toStoredText(account).constData());
    tracker_sparql_statement_bind_string(statement, "party", party.constData());
    const auto cursor = connection.execute(statement);
    auto step = connection.next(cursor.get());
    for (; step == StoreConnection::Step::Row; step = connection.next(cursor.get())) {
        take(tracker_sparql_cursor_get_string(cursor.get(), 0, nullptr),
             tracker_sparql_cursor_get_string(cursor.get(), 1, nullptr));
    }
    return step == StoreConnection::Step::End;
}

//! What a text must end with to match an expression; empty when the expression does not tell. Of
//! the signs that mean something to it, a conversation query's has only these.
QByteArray endOf(const QByteArray &expression)
{
    const QByteArray end = expression.chopped(1); // the sign for the end
    const bool isPlain = std::none_of(end.cbegin(), end.cend(),
                                      [](char c) { return c == '.' || c == '^' || c == '$'; });
    return isPlain && !CommHistory::hasLineEnd(end) ? end : QByteArray();
}

bool findByExpression(StoreConnection &connection, const QString &account,
                      const QByteArray &expression, const Take &take)
{
    constexpr int formatWithEnds = 2;
    const QByteArray end = connection.format() < formatWithEnds ? QByteArray() : endOf(expression);
    if (end.isEmpty())
        return find(connection, ByExpression, account, expression, take);
    if (TrackerSparqlStatement *statement = connection.statement(ByEnd)) {
        const auto [first, last] = CommHistory::endKeys(end);
        tracker_sparql_statement_bind_int(statement, "first", first);
        tracker_sparql_statement_bind_int(statement, "last", last);
    }
    return find(connection, ByEnd, account, expression, take);
}

//! The conversation of the party itself comes before those that the expression finds. It is there
//! for every name, whatever its signs mean to the query's language or in an expression.
void answer(StoreConnection &connection, const ConversationQuery &query,
            QSparqlResultPrivate *result)
{
    const QByteArray party = CommHistory::toStoredText(query.party);
    // Texts are equal to the database that differ in signs which nobody sees.
    const auto takeOwn = [&](const char *conversation, const char *remoteId) {
        if (party == remoteId)
            result->rows.append(QString::fromUtf8(conversation));
    };
    const auto takeAny = [&](const char *conversation, const char *) {
        result->rows.append(QString::fromUtf8(conversation));
    };
    result->hasError = !find(connection, ByParty, query.account, party, takeOwn);
    if (!result->hasError && result->rows.isEmpty() && !query.expression.isNull())
        result->hasError = !findByExpression(connection, query.account,
                                             CommHistory::toStoredText(query.expression), takeAny);
}

} // namespace

QSparqlConnection::QSparqlConnection(const QString &driver, const QSparqlConnectionOptions &,
                                     QObject *parent)
    : QObject(parent)
    , m_driver(driver)
{
}

QSparqlConnection::~QSparqlConnection() = default;

QSparqlResult *QSparqlConnection::exec(const QSparqlQuery &query)
{
    if (m_driver != QLatin1String("QTRACKER_DIRECT")
        || !Store::instance().isReadable(Store::Access::LookUp))
        return nullptr;
    auto result = std::make_unique<QSparqlResultPrivate>();
    if (const auto conversations = readConversationQuery(query.query())) {
        Store::instance().run(Store::Access::LookUp, [&](StoreConnection *connection) {
            if (connection)
                answer(*connection, *conversations, result.get());
        });
    }
    return new QSparqlResult(result.release());
}

#include "moc_qsparqlconnection.cpp"
