// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "qsparqlconnection.h"
#include "qsparqlresult.h"

#include "qsparqlresult_p.h"

#include <commhistory/store_p.h>
#include <commhistory/storeconnection_p.h>

using CommHistory::Store;
using CommHistory::StoreConnection;

namespace {

QSparqlAnswer answer(StoreConnection *connection, const QByteArray &query)
{
    QSparqlAnswer answer;
    if (!connection)
        return answer;
    const auto cursor = connection->query(query);
    auto step = connection->next(cursor.get());
    for (; step == StoreConnection::Step::Row; step = connection->next(cursor.get())) {
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
    const auto promise = std::make_shared<std::promise<QSparqlAnswer>>();
    Store::instance().post(Store::Access::LookUp,
                           [=, text = query.query().toUtf8()](StoreConnection *connection) {
                               promise->set_value(answer(connection, text));
                           });
    return new QSparqlResult(new QSparqlResultPrivate(promise->get_future()));
}

#include "moc_qsparqlconnection.cpp"
