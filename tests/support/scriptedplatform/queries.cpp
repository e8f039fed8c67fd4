// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// The SPARQL interface on the scripted store: knows the one query of the library by the
// number that ends it.

#include "scriptedstore.h"

#include <sparql/qsparqlconnection.h>
#include <sparql/qsparqlresult.h>

class QSparqlResultPrivate
{
public:
    QStringList rows;
    int row = -1;
};

QSparqlConnection::QSparqlConnection(const QString &driver, const QSparqlConnectionOptions &,
                                     QObject *parent)
    : QObject(parent)
    , m_driver(driver)
{
    ScriptedStore::record(QStringLiteral("QSparqlConnection(%1)").arg(m_driver));
}

QSparqlConnection::~QSparqlConnection()
{
    ScriptedStore::record(QStringLiteral("~QSparqlConnection"));
}

QSparqlResult *QSparqlConnection::exec(const QSparqlQuery &query)
{
    ScriptedStore *const store = ScriptedStore::current();
    store->record(QStringLiteral("QSparqlConnection::exec()"));
    store->queries.append(query.query());
    const auto asksFor = [&query](const QString &number) {
        return query.query().contains(QStringLiteral("'%1$'").arg(number));
    };
    for (const QString &number : qAsConst(store->unanswered)) {
        if (asksFor(number))
            return nullptr;
    }
    auto *const d = new QSparqlResultPrivate;
    for (auto it = store->conversations.cbegin(); it != store->conversations.cend(); ++it) {
        if (asksFor(it.key()))
            d->rows = it.value();
    }
    return new QSparqlResult(d);
}

QSparqlResult::QSparqlResult(QSparqlResultPrivate *d)
    : d(d)
{
}

QSparqlResult::~QSparqlResult() { ScriptedStore::record(QStringLiteral("~QSparqlResult")); }

void QSparqlResult::waitForFinished()
{
    ScriptedStore::record(QStringLiteral("QSparqlResult::waitForFinished()"));
}

bool QSparqlResult::hasError() const { return false; }

bool QSparqlResult::next()
{
    ScriptedStore::record(QStringLiteral("QSparqlResult::next()"));
    return ++d->row < d->rows.size();
}

QSparqlBinding QSparqlResult::binding(int column) const
{
    ScriptedStore::record(QStringLiteral("QSparqlResult::binding(%1)").arg(column));
    return QSparqlBinding(QStringLiteral("comm"), column == 0 ? d->rows.value(d->row) : QString());
}
