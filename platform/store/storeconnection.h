// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "fileplace.h"
#include "storedirectory.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <libtracker-sparql/tracker-sparql.h>

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace CommHistory {

class StoreLock;

struct GObjectDeleter
{
    void operator()(gpointer object) const { g_object_unref(object); }
};
template <typename T>
using GPointer = std::unique_ptr<T, GObjectDeleter>;

//! The one graph that holds all events, conversations and id counters. Reads name it: over
//! all graphs at once the database uses no index.
#define KORVASYNC_GRAPH "urn:korvasync:history"

//! The name of an event in the graph; it follows from the id, so that no query has to look
//! for it.
QByteArray eventUri(int id);

//! The open database. Used by one thread at a time.
class StoreConnection
{
public:
    enum class Step { Row, End, Failed };
    enum class Mode {
        ReadOnly, //!< changes no file of the database, also when it is of an older format
        ReadWrite
    };
    //! What a store holds, in numbers: whatever is written changes one of them.
    struct Contents
    {
        qint64 events = 0;
        qint64 eventIds = 0;      //!< their sum
        qint64 modifications = 0; //!< the sum of the times of modification
        qint64 conversations = 0;
        qint64 lastEventId = 0;
        qint64 lastConversationId = 0;
        bool operator==(const Contents &other) const;
    };

    //! Whether the files can be opened now. The lock must be held.
    static StoreProblem probeFiles(const QString &databasePath);
    [[nodiscard]] static bool createDatabase(const QString &databasePath);
    //! Null when the database cannot be opened. The lock must be held.
    //! \param format  of the database; one of an older format is only read
    static std::unique_ptr<StoreConnection> open(const StoreDirectory &directory, StoreLock &lock,
                                                 Mode mode, int format);
    //! The same, of the database that is being made.
    static std::unique_ptr<StoreConnection> openNew(const StoreDirectory &directory,
                                                    StoreLock &lock);

    Mode mode() const { return m_mode; }
    int format() const { return m_format; }
    //! Tells this database from every other, also from a copy of it; empty for a store of the first
    //! format.
    QByteArray identity() const { return m_identity; }

    //! The statement, prepared once; null when that fails. The text is a constant of ours: no
    //! text from outside comes before the database's parser, values are bound.
    TrackerSparqlStatement *statement(const std::string &text);
    //! Runs a statement with the values that are bound to it; null when that fails.
    GPointer<TrackerSparqlCursor> execute(TrackerSparqlStatement *statement);
    //! Steps to the first or next row.
    Step next(TrackerSparqlCursor *cursor);

    //! One transaction under the lock of all processes. \a fill adds to the batch what is
    //! to be written, after reading what it needs; it returns false to write nothing. True
    //! when everything is on disk.
    [[nodiscard]] bool write(const std::function<bool(TrackerBatch *)> &fill);
    //! One transaction in a database that nobody else knows of yet.
    [[nodiscard]] bool fill(const std::function<bool(TrackerBatch *)> &fill);
    //! Nothing when it cannot be read.
    std::optional<Contents> contents();

    //! False when other processes find another store, or none, under the path of this one.
    bool isInPlace() const;

    void warnAbout(StoreProblem problem) const;

private:
    StoreConnection(const StoreDirectory &directory, StoreLock &lock, const QString &databasePath,
                    Mode mode, int format);
    [[nodiscard]] bool openDatabase();
    [[nodiscard]] static bool execute(TrackerBatch *batch);
    template <std::size_t Count>
    bool readNumbers(const char *text, std::array<qint64, Count> *numbers);
    void readIdentity();
    [[nodiscard]] bool syncToDisk() const;

    StoreDirectory m_directory;
    StoreLock &m_lock;
    QString m_databasePath;
    Mode m_mode;
    int m_format;
    QByteArray m_identity;
    std::vector<FilePlace> m_files; // of the database
    GPointer<TrackerSparqlConnection> m_connection;
    std::map<std::string, GPointer<TrackerSparqlStatement>> m_statements;
};

} // namespace CommHistory
