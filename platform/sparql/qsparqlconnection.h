// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <platformexport.h>
#include <sparql/qsparqlquery.h>

#include <QtCore/QObject>
#include <QtCore/QString>

class QSparqlResult;

//! Options of a connection; the embedded store needs none.
class KORVAPLATFORM_EXPORT QSparqlConnectionOptions
{
};

//! A connection to an RDF store. The one driver is "QTRACKER_DIRECT", the process's
//! embedded store; all its connections share one underlying connection, so making one
//! costs nothing.
class KORVAPLATFORM_EXPORT QSparqlConnection : public QObject
{
    Q_OBJECT
public:
    explicit QSparqlConnection(const QString &driver,
                               const QSparqlConnectionOptions &options = QSparqlConnectionOptions(),
                               QObject *parent = nullptr);
    ~QSparqlConnection() override;

    //! Runs the one query that there is, for the conversations of a party:
    //!
    //!     SELECT ?comm WHERE{?comm a nmo:CommunicationChannel; nie:subject 'ACCOUNT';
    //!     nie:generator ?remoteId. FILTER REGEX(?remoteId, 'PARTY$')}
    //!
    //! in one line. It finds the party's own conversation, whatever signs its name has; without
    //! one, those whose party PARTY$ matches, if the query is well-formed with it, PARTY is no
    //! longer than a name and nothing in it groups, chooses or repeats. Null when the driver is
    //! unknown or there is no store to ask; the caller owns the result. Any other query, and one
    //! that the store fails to answer, gives a result with hasError().
    QSparqlResult *exec(const QSparqlQuery &query);

private:
    QString m_driver;
};
