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

    //! Returns at once: the store has answered before the result exists.
    void waitForFinished();
    bool hasError() const;

    //! Steps to the next row. Before the first call there is no current row.
    //! \return false after the last row, and after an error
    bool next();
    //! The column's value in the current row; empty outside rows and columns.
    QSparqlBinding binding(int column) const;
    QString value(int column) const { return binding(column).value(); }

private:
    Q_DISABLE_COPY(QSparqlResult)
    QScopedPointer<QSparqlResultPrivate> d;
};
