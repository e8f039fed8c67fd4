// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "qsparqlconnection.h"
#include "qsparqlresult.h"

#include "conversationquery_p.h"
#include "qsparqlresult_p.h"

#include <store/store.h>
#include <store/storeconnection.h>
#include <store/storedtext.h>

#include <functional>
#include <memory>

using CommHistory::Store;
using CommHistory::StoreConnection;

namespace {

// No text of a query reaches the database: these are all that it is asked. They name the graph,
// since to look through all graphs takes half as long again.
constexpr char ByParty[] =
    "SELECT ?comm ?remoteId FROM <" KORVASYNC_GRAPH "> WHERE { ?comm a nmo:CommunicationChannel ;"
    " nie:subject ~account ; nie:generator ?remoteId . FILTER (?remoteId = ~party) }";

// No number is as long as the parties that are passed over, and those take long to match.
constexpr char ByExpression[] =
    "SELECT ?comm ?remoteId FROM <" KORVASYNC_GRAPH "> WHERE { ?comm a nmo:CommunicationChannel ;"
    " nie:subject ~account ; nie:generator ?remoteId ."
    " FILTER (STRLEN(?remoteId) <= 1000 && REGEX(?remoteId, ~party)) }";

//! Hands out the conversation and the party of each row; false when the store cannot be read.
bool find(StoreConnection &connection, const char *text, const QString &account,
          const QByteArray &party,
          const std::function<void(const char *conversation, const char *remoteId)> &take)
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

//! The conversation of the party itself comes before those that the expression finds. It is there
//! for every name, whatever its signs mean to the query's language or in an expression, and found
//! by an index, where the expression is matched with the party of each conversation.
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
        result->hasError = !find(connection, ByExpression, query.account,
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
