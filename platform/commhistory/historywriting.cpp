// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "historywriting_p.h"

#include "eventresource_p.h"

#include <store/storeconnection.h>
#include <store/storedtext.h>

#include <QtCore/QHash>
#include <QtCore/QSet>

#include <limits>
#include <optional>
#include <string>

namespace CommHistory {

namespace {

//! Runs a statement that gives at most one number. False when the store cannot be read.
bool readNumber(StoreConnection &connection, TrackerSparqlStatement *statement,
                std::optional<qint64> *number)
{
    const auto cursor = connection.execute(statement);
    const auto step = connection.next(cursor.get());
    if (step == StoreConnection::Step::Failed) {
        connection.warnAbout(StoreProblem::ReadFailed);
        return false;
    }
    number->reset();
    if (step == StoreConnection::Step::Row)
        *number = tracker_sparql_cursor_get_integer(cursor.get(), 0);
    return true;
}

//! The counters stand in the graph of what they count, so that a transaction keeps or loses
//! both together and no number is ever given twice.
class Counter
{
public:
    //! False when it cannot be read, and when it has no more numbers than these: what lies beyond
    //! the range would come back as another's.
    bool read(StoreConnection &connection, qint64 count)
    {
        const std::string text =
            std::string("SELECT ?last FROM <" KORVASYNC_GRAPH "> { <urn:korvasync:ids> ")
            + m_property + " ?last }";
        std::optional<qint64> last;
        if (!readNumber(connection, connection.statement(text), &last))
            return false;
        if (!last || *last < 0 || *last > m_most - count) {
            connection.warnAbout(StoreProblem::OutOfIds);
            return false;
        }
        m_last = *last;
        return true;
    }
    qint64 last() const { return m_last; }
    qint64 next() { return ++m_last; }
    void skip(qint64 count) { m_last += count; }
    void write(TrackerBatch *batch) const
    {
        const auto counter = newResource("urn:korvasync:ids", "kv:IdCounter");
        setNumber(counter.get(), m_property, m_last);
        addTo(batch, counter.get());
    }

protected:
    Counter(const char *property, qint64 most)
        : m_property(property)
        , m_most(most)
    {
    }

private:
    const char *m_property;
    qint64 m_most;
    qint64 m_last = 0;
};

struct EventIds : Counter
{
    EventIds()
        : Counter("kv:lastEventId", std::numeric_limits<int>::max())
    {
    }
};

struct ConversationIds : Counter
{
    ConversationIds()
        : Counter("kv:lastConversationId", std::numeric_limits<int>::max())
    {
    }
};

struct ChangeNumbers : Counter
{
    ChangeNumbers()
        : Counter("kv:lastChange", std::numeric_limits<qint64>::max())
    {
    }
};

//! What an event's own time is made from. Nothing when there is no such event.
bool readPlacing(StoreConnection &connection, int id, std::optional<EventRow> *placing)
{
    TrackerSparqlStatement *statement = connection.statement(
        "SELECT ?type ?folder ?start ?end FROM <" KORVASYNC_GRAPH "> { ~event kv:type ?type ;"
        " kv:folder ?folder ; kv:startTime ?start ; kv:endTime ?end }");
    if (statement)
        tracker_sparql_statement_bind_string(statement, "event", eventUri(id).constData());
    const auto cursor = connection.execute(statement);
    const auto step = connection.next(cursor.get());
    placing->reset();
    if (step == StoreConnection::Step::Failed) {
        connection.warnAbout(StoreProblem::ReadFailed);
        return false;
    }
    if (step == StoreConnection::Step::End)
        return true;
    EventRow row;
    row.type = quint8(tracker_sparql_cursor_get_integer(cursor.get(), 0));
    row.parentId = int(tracker_sparql_cursor_get_integer(cursor.get(), 1));
    row.startTime = tracker_sparql_cursor_get_integer(cursor.get(), 2);
    row.endTime = tracker_sparql_cursor_get_integer(cursor.get(), 3);
    *placing = row;
    return true;
}

//! Has \a row take from \a stored what places an event, unless it was set.
void fillPlacing(EventRow *row, const EventRow &stored, Event::Properties set)
{
    if (!(set & Event::Type))
        row->type = stored.type;
    if (!(set & Event::ParentId))
        row->parentId = stored.parentId;
    if (!(set & Event::StartTime))
        row->startTime = stored.startTime;
    if (!(set & Event::EndTime))
        row->endTime = stored.endTime;
}

//! The parties at the other end as one text. The mark after each of several keeps the
//! conversation query, which looks at the end of the text, from taking a conversation of
//! many for that with the last of them.
QByteArray remoteText(const Group &group)
{
    const QStringList uids = group.remoteUids();
    if (uids.size() == 1)
        return toStoredText(uids.first());
    QString text;
    for (const QString &uid : uids)
        text += uid + QChar(0x1e);
    return toStoredText(text);
}

//! The first conversation of a party. Texts are equal to the database that differ in signs which
//! nobody sees; those of a name that looks alike are none.
//! COALESCE keeps the database from its index of accounts, of which there is one.
//! \param id  of the conversation, 0 when there is none
bool findConversation(StoreConnection &connection, const QByteArray &local,
                      const QByteArray &remote, int *id)
{
    TrackerSparqlStatement *statement = connection.statement(
        "SELECT ?id ?remote FROM <" KORVASYNC_GRAPH "> { ?channel a nmo:CommunicationChannel ;"
        " nie:subject ?local ; nie:generator ?remote ."
        " FILTER (?remote = ~remote && COALESCE(?local, '') = ~local)"
        " BIND (xsd:integer(STRAFTER(STR(?channel), 'conversation:')) AS ?id) } ORDER BY ?id");
    if (statement) {
        tracker_sparql_statement_bind_string(statement, "local", local.constData());
        tracker_sparql_statement_bind_string(statement, "remote", remote.constData());
    }
    *id = 0;
    const auto cursor = connection.execute(statement);
    auto step = connection.next(cursor.get());
    for (; step == StoreConnection::Step::Row && *id == 0; step = connection.next(cursor.get())) {
        if (remote == tracker_sparql_cursor_get_string(cursor.get(), 1, nullptr))
            *id = int(tracker_sparql_cursor_get_integer(cursor.get(), 0));
    }
    if (step == StoreConnection::Step::Failed)
        connection.warnAbout(StoreProblem::ReadFailed);
    return step != StoreConnection::Step::Failed;
}

} // namespace

bool addEvents(StoreConnection &connection, QList<Event> &events)
{
    QList<Event> added = events;
    const bool written = connection.write([&](TrackerBatch *batch) {
        EventIds ids;
        ChangeNumbers changes;
        if (!ids.read(connection, added.size()) || !changes.read(connection, added.size()))
            return false;
        const QDateTime now = QDateTime::currentDateTimeUtc();
        for (Event &event : added) {
            event.setId(int(ids.next()));
            event.setLastModified(now);
            addTo(batch, eventResource(toRow(event), AllFields, changes.next()).get());
        }
        ids.write(batch);
        changes.write(batch);
        return true;
    });
    if (written)
        events.swap(added);
    return written;
}

bool modifyEvents(StoreConnection &connection, QList<Event> &events)
{
    QList<Event> modified = events;
    const bool written = connection.write([&](TrackerBatch *batch) {
        ChangeNumbers changes;
        if (!changes.read(connection, modified.size()))
            return false;
        const QDateTime now = QDateTime::currentDateTimeUtc();
        QHash<int, EventRow> placings; // in this batch
        for (Event &event : modified) {
            std::optional<EventRow> stored;
            if (const auto earlier = placings.constFind(event.id()); earlier != placings.cend())
                stored = *earlier;
            else if (!readPlacing(connection, event.id(), &stored) || !stored)
                return false;
            Event::Properties set = event.setProperties() & ~Event::Id;
            if (event.groupId() < 1)
                set &= ~Event::GroupId;
            event.setLastModified(now);
            EventRow row = toRow(event);
            fillPlacing(&row, *stored, set);
            placings.insert(event.id(), row);
            addTo(batch, eventResource(row, set | Event::LastModified, changes.next()).get());
        }
        changes.write(batch);
        return true;
    });
    if (written)
        events.swap(modified);
    return written;
}

bool removeEvents(StoreConnection &connection, const QVector<int> &ids, QVector<bool> *removed)
{
    QVector<bool> found;
    const bool written = connection.write([&](TrackerBatch *batch) {
        ChangeNumbers changes;
        if (!changes.read(connection, ids.size()))
            return false;
        QSet<int> seen;
        QByteArray text;
        for (const int id : ids) {
            std::optional<EventRow> stored;
            if (!seen.contains(id) && !readPlacing(connection, id, &stored))
                return false;
            seen.insert(id);
            found.append(stored.has_value());
            if (!stored)
                continue;
            text += "<" + eventUri(id) + "> a rdfs:Resource . ";
            addTo(batch, tombstoneResource(id, stored->type, changes.next()).get());
        }
        if (text.isEmpty())
            return true;
        text = "DELETE DATA { GRAPH <" KORVASYNC_GRAPH "> { " + text + "} }";
        tracker_batch_add_sparql(batch, text.constData());
        changes.write(batch);
        return true;
    });
    if (written)
        removed->swap(found);
    return written;
}

bool removeCalls(StoreConnection &connection)
{
    return connection.write([&](TrackerBatch *batch) {
        EventIds ids;
        ChangeNumbers changes;
        if (!ids.read(connection, 0) || !changes.read(connection, ids.last()))
            return false;
        // However many there are, none comes here: its number follows from its id.
        const std::string calls =
            "GRAPH <" KORVASYNC_GRAPH "> { ?call kv:type " + std::to_string(Event::CallEvent);
        const std::string text = "INSERT { GRAPH <" KORVASYNC_GRAPH "> { ?left a kv:Tombstone ;"
                                 " kv:deletedId ?id ; kv:deletedType "
            + std::to_string(Event::CallEvent) + " ; kv:deletedChange ?change } } WHERE { " + calls
            + " ; kv:id ?id } BIND (IRI(CONCAT('deleted:', STR(?id))) AS ?left) BIND (?id + "
            + std::to_string(changes.last()) + " AS ?change) } ;"
            + " DELETE { GRAPH <" KORVASYNC_GRAPH "> { ?call a rdfs:Resource } } WHERE { " + calls
            + " } }";
        tracker_batch_add_sparql(batch, text.c_str());
        changes.skip(ids.last());
        changes.write(batch);
        return true;
    });
}

bool addConversations(StoreConnection &connection, const QList<Group> &groups, QList<int> *ids)
{
    QList<int> given;
    const bool written = connection.write([&](TrackerBatch *batch) {
        ConversationIds counter;
        if (!counter.read(connection, groups.size()))
            return false;
        QHash<QPair<QByteArray, QByteArray>, int> added; // in this batch
        for (const Group &group : groups) {
            const QByteArray local = toStoredText(group.localUid());
            const QByteArray remote = remoteText(group);
            int id = added.value({local, remote});
            if (id == 0 && !findConversation(connection, local, remote, &id))
                return false;
            if (id == 0) {
                id = int(counter.next());
                added.insert({local, remote}, id);
                addTo(batch, conversationResource(id, local.constData(), remote).get());
            }
            given.append(id);
        }
        counter.write(batch);
        return true;
    });
    if (written)
        ids->swap(given);
    return written;
}

} // namespace CommHistory
