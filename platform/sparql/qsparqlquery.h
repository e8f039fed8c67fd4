// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <platformexport.h>

#include <QtCore/QString>

//! The text of a SPARQL 1.1 query and what kind it is.
class KORVAPLATFORM_EXPORT QSparqlQuery
{
public:
    //! Only queries that read are offered.
    enum StatementType { SelectStatement };

    explicit QSparqlQuery(const QString &query, StatementType type = SelectStatement)
        : m_query(query)
        , m_type(type)
    {
    }

    QString query() const { return m_query; }
    StatementType type() const { return m_type; }

private:
    QString m_query;
    StatementType m_type;
};
