// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "storeconnection.h"

#include "logging.h"
#include "repeatedcalls.h"
#include "storefiles.h"
#include "storelock.h"

#include <QtCore/QFile>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

namespace CommHistory {

namespace {

constexpr int BusyMsecs = 10000;

constexpr char OntologyUri[] = "resource:///org/korvasync/ontology";

//! An error that is out parameter and owner in one.
class Error
{
public:
    ~Error() { g_clear_error(&m_error); }
    operator GError **() { return &m_error; }
    //! True when a call failed; its reason goes to the log.
    bool isSet() const
    {
        if (m_error)
            qCDebug(lcStoreDatabase).noquote() << m_error->message;
        return m_error;
    }

private:
    GError *m_error = nullptr;
};

void logCritical(const gchar *, GLogLevelFlags, const gchar *message, gpointer)
{
    qCDebug(lcStoreDatabase).noquote() << message;
}

GPointer<TrackerSparqlConnection> openDatabase(const QString &path)
{
    // The library's own channel writes to stderr, where the client's user would see it.
    static const guint handler = g_log_set_handler(
        "Tracker", GLogLevelFlags(G_LOG_LEVEL_MASK | G_LOG_FLAG_RECURSION), logCritical, nullptr);
    Q_UNUSED(handler)

    const GPointer<GFile> store(g_file_new_for_path(QFile::encodeName(path).constData()));
    const GPointer<GFile> ontology(g_file_new_for_uri(OntologyUri));
    Error error;
    GPointer<TrackerSparqlConnection> connection(tracker_sparql_connection_new(
        TRACKER_SPARQL_CONNECTION_FLAGS_NONE, store.get(), ontology.get(), nullptr, error));
    if (error.isSet())
        connection.reset();
    return connection;
}

//! Whether the counters of ids can be read, which a new database gets last.
bool hasCounters(TrackerSparqlConnection *connection)
{
    Error error;
    const GPointer<TrackerSparqlCursor> cursor(tracker_sparql_connection_query(
        connection,
        "SELECT ?event ?conversation FROM <" KORVASYNC_GRAPH "> { <urn:korvasync:ids>"
        " kv:lastEventId ?event ; kv:lastConversationId ?conversation }",
        nullptr, error));
    const bool isRow = cursor && tracker_sparql_cursor_next(cursor.get(), nullptr, error);
    return !error.isSet() && isRow;
}

struct DatabaseCloser
{
    void operator()(sqlite3 *database) const { sqlite3_close(database); }
};

//! What SQLite, on which the database library stands, says of a file. The library itself
//! crashes at the first read of a file that cannot be opened, and waits for many minutes
//! when another program holds it.
StoreProblem probe(const QString &path)
{
    sqlite3 *opened = nullptr;
    int result = sqlite3_open_v2(QFile::encodeName(path).constData(), &opened,
                                 SQLITE_OPEN_READWRITE, nullptr);
    const std::unique_ptr<sqlite3, DatabaseCloser> database(opened);
    if (result == SQLITE_OK) {
        sqlite3_busy_timeout(opened, BusyMsecs);
        result =
            sqlite3_exec(opened, "BEGIN IMMEDIATE; SELECT count(*) FROM sqlite_master; ROLLBACK",
                         nullptr, nullptr, nullptr);
    }
    if (result == SQLITE_OK)
        return StoreProblem::None;
    return result == SQLITE_BUSY ? StoreProblem::Busy : StoreProblem::Damaged;
}

QString filePath(const QString &databasePath, const char *name)
{
    return databasePath + QLatin1Char('/') + QLatin1String(name);
}

} // namespace

QByteArray eventUri(int id) { return "event:" + QByteArray::number(id); }

StoreProblem StoreConnection::probeFiles(const QString &databasePath)
{
    StoreProblem problem = StoreProblem::None;
    for (const char *name : StoreFiles::DatabaseFiles) {
        if (problem == StoreProblem::None)
            problem = probe(filePath(databasePath, name));
    }
    return problem;
}

bool StoreConnection::createDatabase(const QString &databasePath)
{
    const RepeatedCalls calls;
    const auto connection = openDatabase(databasePath);
    if (!connection)
        return false;
    Error error;
    tracker_sparql_connection_update(connection.get(),
                                     "CREATE GRAPH <" KORVASYNC_GRAPH "> ;"
                                     "INSERT DATA { GRAPH <" KORVASYNC_GRAPH
                                     "> { <urn:korvasync:ids> a kv:IdCounter ;"
                                     " kv:lastEventId 0 ; kv:lastConversationId 0 } }",
                                     nullptr, error);
    if (error.isSet())
        return false;
    tracker_sparql_connection_close(connection.get());
    return true;
}

bool StoreConnection::isWhole(const QString &databasePath)
{
    const RepeatedCalls calls;
    const auto connection = openDatabase(databasePath);
    return connection && hasCounters(connection.get());
}

std::unique_ptr<StoreConnection> StoreConnection::open(const StoreDirectory &directory,
                                                       StoreLock &lock)
{
    std::unique_ptr<StoreConnection> connection(new StoreConnection(directory, lock));
    const RepeatedCalls calls;
    connection->m_connection = openDatabase(directory.databasePath());
    if (!connection->m_connection)
        return nullptr;
    hasCounters(connection->m_connection.get()); // the first read opens the files once more
    return connection;
}

StoreConnection::StoreConnection(const StoreDirectory &directory, StoreLock &lock)
    : m_directory(directory)
    , m_lock(lock)
{
    for (const char *name : StoreFiles::DatabaseFiles)
        m_files.emplace_back(QFile::encodeName(filePath(directory.databasePath(), name)));
}

TrackerSparqlStatement *StoreConnection::statement(const std::string &text)
{
    auto &statement = m_statements[text];
    if (!statement) {
        Error error;
        statement.reset(tracker_sparql_connection_query_statement(m_connection.get(), text.c_str(),
                                                                  nullptr, error));
        if (error.isSet())
            return nullptr;
    }
    return statement.get();
}

GPointer<TrackerSparqlCursor> StoreConnection::execute(TrackerSparqlStatement *statement)
{
    if (!statement)
        return nullptr;
    Error error;
    GPointer<TrackerSparqlCursor> cursor(
        tracker_sparql_statement_execute(statement, nullptr, error));
    if (error.isSet())
        return nullptr;
    return cursor;
}

StoreConnection::Step StoreConnection::next(TrackerSparqlCursor *cursor)
{
    if (!cursor)
        return Step::Failed;
    Error error;
    const bool isRow = tracker_sparql_cursor_next(cursor, nullptr, error);
    if (error.isSet())
        return Step::Failed;
    return isRow ? Step::Row : Step::End;
}

bool StoreConnection::write(const std::function<bool(TrackerBatch *)> &fill)
{
    const StoreLockHolder holder(m_lock);
    if (!holder.isHeld()) {
        warnAbout(StoreProblem::Busy);
        return false;
    }
    if (!isInPlace()) {
        warnAbout(StoreProblem::Replaced);
        return false;
    }
    const GPointer<TrackerBatch> batch(tracker_sparql_connection_create_batch(m_connection.get()));
    if (!fill(batch.get()))
        return false;
    Error error;
    tracker_batch_execute(batch.get(), nullptr, error);
    if (error.isSet() || !syncToDisk()) {
        warnAbout(StoreProblem::WriteFailed);
        return false;
    }
    // What is reported must be where everyone looks for it.
    if (!isInPlace()) {
        warnAbout(StoreProblem::Replaced);
        return false;
    }
    return true;
}

bool StoreConnection::isInPlace() const
{
    return m_lock.isInPlace()
        && std::all_of(m_files.cbegin(), m_files.cend(),
                       [](const FilePlace &file) { return file.isStillThere(); });
}

void StoreConnection::warnAbout(StoreProblem problem) const
{
    m_directory.place().warnAbout(problem);
}

//! The database library leaves a committed transaction to the system's caches, where a
//! power cut takes it. It stands in the write-ahead logs until they are moved to the main
//! files, which the library does with care.
bool StoreConnection::syncToDisk() const
{
    for (const char *name : StoreFiles::DatabaseFiles) {
        const QString path = filePath(m_directory.databasePath(), name) + QLatin1String("-wal");
        const int file =
            ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC);
        if (file < 0 && errno == ENOENT)
            continue;
        const bool synced = file >= 0 && ::fdatasync(file) == 0;
        if (file >= 0)
            ::close(file);
        if (!synced)
            return false;
    }
    return true;
}

} // namespace CommHistory
