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

//! A connection to an RDF store. The only driver is "QTRACKER_DIRECT", the embedded store. All
//! connections of the process share one underlying connection, so making one costs nothing.
class KORVAPLATFORM_EXPORT QSparqlConnection : public QObject
{
    Q_OBJECT
public:
    explicit QSparqlConnection(const QString &driver,
                               const QSparqlConnectionOptions &options = QSparqlConnectionOptions(),
                               QObject *parent = nullptr);
    ~QSparqlConnection() override;

    //! Runs the only query that there is, for the conversations of a party:
    //!
    //!     SELECT ?comm WHERE{?comm a nmo:CommunicationChannel; nie:subject 'ACCOUNT';
    //!     nie:generator ?remoteId. FILTER REGEX(?remoteId, 'PARTY$')}
    //!
    //! in one line. It finds the party's own conversation, whatever signs its name has. If there is
    //! none, it finds those whose party the expression PARTY$ matches. For that, the query has to
    //! be well-formed with PARTY, PARTY no longer than a name, and free of signs that group, choose
    //! or repeat.
    //!
    //! Blocks until the store has answered.
    //! \return owned by the caller; null if the driver is unknown or there is no store. Any other
    //!         query, and one that the store fails to answer, gives a result with hasError().
    QSparqlResult *exec(const QSparqlQuery &query);

private:
    QString m_driver;
};
