// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "qsparqlconnection.h"
#include "qsparqlresult.h"

#include "qsparqlresult_p.h"
#include "querytext_p.h"

#include <commhistory/store_p.h>
#include <commhistory/storeconnection_p.h>

using CommHistory::Store;
using CommHistory::StoreConnection;

namespace {

// The conversation query holds what a message file gives for a number. Nothing in it may
// make the database ask another machine, nor may letters be hidden by an escape.
bool leavesTheStore(const QString &query)
{
    return query.contains(QLatin1String("SERVICE"), Qt::CaseInsensitive)
        || query.contains(QLatin1String("\\u"), Qt::CaseInsensitive);
}

//! A query on its way to the store's thread.
struct Question
{
    QByteArray text;
    ParameterQuery parameters;
    GCancellable *cancellable;
};

CommHistory::GPointer<TrackerSparqlCursor> run(StoreConnection &connection,
                                               const Question &question)
{
    // The conversation query comes for every number of an import: preparing it anew takes ten
    // times as long as running it in a store with few conversations.
    const ParameterQuery &parameters = question.parameters;
    TrackerSparqlStatement *statement = nullptr;
    // Everything is in one graph, and over all graphs at once the database takes half as long
    // again.
    if (!parameters.values.isEmpty())
        statement = connection.statement(withGraph(parameters.text, KORVASYNC_GRAPH).toStdString());
    if (!statement) // also where the language allows no parameter
        return connection.query(question.text, question.cancellable);
    for (int i = 0; i < parameters.values.size(); ++i) {
        tracker_sparql_statement_bind_string(statement,
                                             ("text" + QByteArray::number(i)).constData(),
                                             parameters.values.at(i).constData());
    }
    return connection.execute(statement, question.cancellable);
}

QSparqlAnswer answer(StoreConnection *connection, const Question &question)
{
    QSparqlAnswer answer;
    if (!connection)
        return answer;
    const auto cursor = run(*connection, question);
    const auto next = [&] { return connection->next(cursor.get(), question.cancellable); };
    auto step = next();
    for (; step == StoreConnection::Step::Row; step = next()) {
        QVector<QSparqlBinding> row;
        const int columns = tracker_sparql_cursor_get_n_columns(cursor.get());
        for (int column = 0; column < columns; ++column) {
            const char *name = tracker_sparql_cursor_get_variable_name(cursor.get(), column);
            const char *value = tracker_sparql_cursor_get_string(cursor.get(), column, nullptr);
            row.append(QSparqlBinding(QString::fromUtf8(name), QString::fromUtf8(value)));
        }
        answer.rows.append(row);
    }
    answer.hasError = step == StoreConnection::Step::Failed;
    return answer;
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
    const auto run = std::make_shared<QSparqlRun>();
    if (leavesTheStore(query.query())) {
        run->answered.set_value(QSparqlAnswer());
        return new QSparqlResult(new QSparqlResultPrivate(run));
    }
    const QByteArray text = query.query().toUtf8();
    const Question question{text, withParameters(text), run->cancellable.get()};
    const auto ask = [run, question](StoreConnection *connection) {
        run->started = std::chrono::steady_clock::now();
        run->answered.set_value(answer(connection, question));
    };
    // What may take for ever is not for the caller's thread, which ends it after a while.
    if (hasPlainTexts(question.parameters))
        Store::instance().run(Store::Access::LookUp, ask);
    else
        Store::instance().post(Store::Access::LookUp, ask);
    return new QSparqlResult(new QSparqlResultPrivate(run));
}

#include "moc_qsparqlconnection.cpp"
