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

// The query by which all programs on the phone look conversations up.
constexpr char Wanted[] = "SELECT ?comm ";
constexpr char Pattern[] = "WHERE{?comm a nmo:CommunicationChannel; nie:subject ~text0; "
                           "nie:generator ?remoteId. FILTER REGEX(?remoteId, ~text1)}";

//! A query on its way to the store's thread.
struct Question
{
    explicit Question(const QByteArray &query)
        : text(query)
        , parameters(withParameters(query))
        , isForConversations(parameters.text == QByteArray(Wanted) + Pattern)
    {
    }

    QByteArray text;
    ParameterQuery parameters;
    bool isForConversations;
};

CommHistory::GPointer<TrackerSparqlCursor> run(StoreConnection &connection,
                                               const Question &question, GCancellable *cancellable)
{
    const ParameterQuery &parameters = question.parameters;
    TrackerSparqlStatement *statement = nullptr;
    // It comes for every number of an import: preparing it anew takes ten times as long as running
    // it in a store with few conversations. They are in one graph; to look through all graphs takes
    // half as long again.
    if (question.isForConversations)
        statement =
            connection.statement(std::string(Wanted) + "FROM <" KORVASYNC_GRAPH "> " + Pattern);
    else if (!parameters.values.isEmpty())
        statement = connection.statement(parameters.text.toStdString());
    if (!statement) // also where the language allows no parameter
        return connection.query(question.text, cancellable);
    for (int i = 0; i < parameters.values.size(); ++i) {
        tracker_sparql_statement_bind_string(statement,
                                             ("text" + QByteArray::number(i)).constData(),
                                             parameters.values.at(i).constData());
    }
    return connection.execute(statement, cancellable);
}

QSparqlAnswer answer(StoreConnection *connection, const Question &question,
                     GCancellable *cancellable)
{
    QSparqlAnswer answer;
    if (!connection)
        return answer;
    const auto cursor = run(*connection, question, cancellable);
    const auto next = [&] { return connection->next(cursor.get(), cancellable); };
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
    const Question question(query.query().toUtf8());
    const auto ask = [run, question](StoreConnection *connection) {
        run->started = std::chrono::steady_clock::now();
        run->answered.set_value(answer(connection, question, run->cancellable.get()));
    };
    // The caller's thread ends what takes for ever, so that it must not be at it itself. A number
    // that a message file gives may be more than a number.
    if (question.isForConversations && hasPlainTexts(question.parameters))
        Store::instance().run(Store::Access::LookUp, ask);
    else if (leavesTheStore(query.query()))
        run->answered.set_value(QSparqlAnswer());
    else
        Store::instance().post(Store::Access::LookUp, ask);
    return new QSparqlResult(new QSparqlResultPrivate(run));
}

#include "moc_qsparqlconnection.cpp"
