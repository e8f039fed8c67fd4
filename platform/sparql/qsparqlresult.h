// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <platformexport.h>
#include <sparql/qsparqlbinding.h>

#include <QtCore/QScopedPointer>
#include <QtCore/QString>

class QSparqlResultPrivate;

//! The rows of a query, read one after the other.
class KORVAPLATFORM_EXPORT QSparqlResult
{
public:
    explicit QSparqlResult(QSparqlResultPrivate *d);
    ~QSparqlResult();

    //! Blocks until the query has been answered. It has been: the store answers before the
    //! result is there.
    void waitForFinished();
    bool hasError() const;

    //! Steps to the next row; before the first call there is no current row. False
    //! after the last row and on error.
    bool next();
    //! The column's value in the current row; empty outside rows and columns.
    QSparqlBinding binding(int column) const;
    QString value(int column) const { return binding(column).value(); }

private:
    Q_DISABLE_COPY(QSparqlResult)
    QScopedPointer<QSparqlResultPrivate> d;
};
