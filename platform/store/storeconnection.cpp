// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "storeconnection.h"

#include "logging.h"
#include "owndirectory.h"
#include "repeatedcalls.h"
#include "storefiles.h"
#include "storelock.h"

#include <QtCore/QFile>
#include <QtCore/QRandomGenerator>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

namespace CommHistory {

namespace {

constexpr int BusyMsecs = 10000;

constexpr char IdsQuery[] =
    "SELECT ?event ?conversation FROM <" KORVASYNC_GRAPH "> { <urn:korvasync:ids>"
    " kv:lastEventId ?event ; kv:lastConversationId ?conversation }";

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

GPointer<TrackerSparqlConnection> openDatabase(const QString &path, StoreConnection::Mode mode)
{
    // The library's own channel writes to stderr, where the client's user would see it.
    static const guint handler = g_log_set_handler(
        "Tracker", GLogLevelFlags(G_LOG_LEVEL_MASK | G_LOG_FLAG_RECURSION), logCritical, nullptr);
    Q_UNUSED(handler)

    const GPointer<GFile> store(g_file_new_for_path(QFile::encodeName(path).constData()));
    // Opened to be written, a store of another ontology would be changed to ours.
    const bool isReadOnly = mode == StoreConnection::Mode::ReadOnly;
    // Opened to be read, the library takes its cache of the ontology as it is, and crashes when it
    // is damaged. Without one, it is as fast with the database's own.
    const OwnDirectory files(QFile::encodeName(path));
    if (isReadOnly
        && (files.state() != OwnDirectory::State::Open || !files.remove(StoreFiles::OntologyCache)))
        return nullptr;
    const GPointer<GFile> ontology(isReadOnly ? nullptr : g_file_new_for_uri(OntologyUri));
    Error error;
    GPointer<TrackerSparqlConnection> connection(
        tracker_sparql_connection_new(isReadOnly ? TRACKER_SPARQL_CONNECTION_FLAGS_READONLY
                                                 : TRACKER_SPARQL_CONNECTION_FLAGS_NONE,
                                      store.get(), ontology.get(), nullptr, error));
    if (error.isSet())
        connection.reset();
    return connection;
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
    const auto connection = CommHistory::openDatabase(databasePath, Mode::ReadWrite);
    if (!connection)
        return false;
    const QByteArray id =
        QByteArray::number(QRandomGenerator::system()->generate64(), 16).rightJustified(16, '0');
    const QByteArray text = "CREATE GRAPH <" KORVASYNC_GRAPH "> ; INSERT DATA { GRAPH"
                            " <" KORVASYNC_GRAPH "> { <urn:korvasync:ids> a kv:IdCounter ;"
                            " kv:lastEventId 0 ; kv:lastConversationId 0 ; kv:lastChange 0 ;"
                            " kv:storeId '"
        + id + "' } }";
    Error error;
    tracker_sparql_connection_update(connection.get(), text.constData(), nullptr, error);
    if (error.isSet())
        return false;
    tracker_sparql_connection_close(connection.get());
    return true;
}

std::unique_ptr<StoreConnection> StoreConnection::open(const StoreDirectory &directory,
                                                       StoreLock &lock, Mode mode, int format)
{
    std::unique_ptr<StoreConnection> connection(
        new StoreConnection(directory, lock, directory.databasePath(), mode, format));
    return connection->openDatabase() ? std::move(connection) : nullptr;
}

std::unique_ptr<StoreConnection> StoreConnection::openNew(const StoreDirectory &directory,
                                                          StoreLock &lock)
{
    std::unique_ptr<StoreConnection> connection(new StoreConnection(
        directory, lock, directory.newDatabasePath(), Mode::ReadWrite, StoreFiles::Format));
    return connection->openDatabase() ? std::move(connection) : nullptr;
}

StoreConnection::StoreConnection(const StoreDirectory &directory, StoreLock &lock,
                                 const QString &databasePath, Mode mode, int format)
    : m_directory(directory)
    , m_lock(lock)
    , m_databasePath(databasePath)
    , m_mode(mode)
    , m_format(format)
{
    for (const char *name : StoreFiles::DatabaseFiles)
        m_files.emplace_back(QFile::encodeName(filePath(databasePath, name)));
}

bool StoreConnection::openDatabase()
{
    const RepeatedCalls calls;
    m_connection = CommHistory::openDatabase(m_databasePath, m_mode);
    if (m_connection)
        readIdentity(); // the first read opens the files once more
    return bool(m_connection);
}

void StoreConnection::readIdentity()
{
    if (m_format == 1) {
        std::array<qint64, 2> ids{};
        readNumbers(IdsQuery, &ids);
        return;
    }
    const auto cursor = execute(
        statement("SELECT ?id FROM <" KORVASYNC_GRAPH "> { <urn:korvasync:ids> kv:storeId ?id }"));
    if (next(cursor.get()) == Step::Row)
        m_identity = QByteArray(tracker_sparql_cursor_get_string(cursor.get(), 0, nullptr)) + '-'
            + QByteArray::number(m_files.front().inode(), 16);
}

//! Reads the one row of a query.
template <std::size_t Count>
bool StoreConnection::readNumbers(const char *text, std::array<qint64, Count> *numbers)
{
    const auto cursor = execute(statement(text));
    if (next(cursor.get()) != Step::Row)
        return false;
    for (std::size_t i = 0; i < Count; ++i)
        (*numbers)[i] = tracker_sparql_cursor_get_integer(cursor.get(), int(i));
    return true;
}

std::optional<StoreConnection::Contents> StoreConnection::contents()
{
    // The times are taken from a late one, so that the sum stays within the numbers.
    std::array<qint64, 3> events{};
    std::array<qint64, 1> conversations{};
    std::array<qint64, 2> ids{};
    const bool isRead =
        readNumbers("SELECT (COUNT(?id) AS ?count) (SUM(?id) AS ?ids)"
                    " (SUM(?modified - 1700000000000) AS ?times) FROM <" KORVASYNC_GRAPH
                    "> { ?event kv:id ?id ; kv:lastModified ?modified }",
                    &events)
        && readNumbers("SELECT (COUNT(?channel) AS ?count) FROM <" KORVASYNC_GRAPH
                       "> { ?channel a nmo:CommunicationChannel }",
                       &conversations)
        && readNumbers(IdsQuery, &ids);
    if (!isRead)
        return std::nullopt;
    return Contents{events[0], events[1], events[2], conversations[0], ids[0], ids[1]};
}

bool StoreConnection::Contents::operator==(const Contents &other) const
{
    return events == other.events && eventIds == other.eventIds
        && modifications == other.modifications && conversations == other.conversations
        && lastEventId == other.lastEventId && lastConversationId == other.lastConversationId;
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
    if (!error.isSet())
        return cursor;
    // The library frees the error of one that could not be translated twice when it is run again.
    const auto failed =
        std::find_if(m_statements.cbegin(), m_statements.cend(),
                     [=](const auto &entry) { return entry.second.get() == statement; });
    m_statements.erase(failed);
    return nullptr;
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
    if (!execute(batch.get()) || !syncToDisk()) {
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

bool StoreConnection::fill(const std::function<bool(TrackerBatch *)> &fill)
{
    const GPointer<TrackerBatch> batch(tracker_sparql_connection_create_batch(m_connection.get()));
    return fill(batch.get()) && execute(batch.get()) && syncToDisk();
}

bool StoreConnection::execute(TrackerBatch *batch)
{
    Error error;
    tracker_batch_execute(batch, nullptr, error);
    return !error.isSet();
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
        const QString path = filePath(m_databasePath, name) + QLatin1String("-wal");
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
