// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "historywriting_p.h"

#include "eventrow_p.h"

#include <store/storeconnection.h>
#include <store/storedtext.h>

#include <QtCore/QHash>
#include <QtCore/QSet>

#include <limits>
#include <optional>
#include <string>

namespace CommHistory {

namespace {

constexpr char EventCounter[] = "kv:lastEventId";
constexpr char ConversationCounter[] = "kv:lastConversationId";
constexpr int NoConversation = -1;

constexpr Event::Properties AllFields(QFlag(~0));

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

GPointer<TrackerResource> newResource(const QByteArray &uri, const char *type)
{
    GPointer<TrackerResource> resource(tracker_resource_new(uri.constData()));
    tracker_resource_add_uri(resource.get(), "rdf:type", type);
    return resource;
}

void addTo(TrackerBatch *batch, TrackerResource *resource)
{
    tracker_batch_add_resource(batch, KORVASYNC_GRAPH, resource);
}

//! The counters stand in the graph of what they count, so that a transaction keeps or loses
//! both together and no id is ever given twice.
class IdCounter
{
public:
    explicit IdCounter(const char *property)
        : m_property(property)
    {
    }

    //! False when it cannot be read, and when it has no more ids than these: what lies beyond
    //! the range would come back as the id of another.
    bool read(StoreConnection &connection, int count)
    {
        const std::string text =
            std::string("SELECT ?last FROM <" KORVASYNC_GRAPH "> { <urn:korvasync:ids> ")
            + m_property + " ?last }";
        std::optional<qint64> last;
        if (!readNumber(connection, connection.statement(text), &last))
            return false;
        if (!last || *last < 0 || *last > std::numeric_limits<int>::max() - count) {
            connection.warnAbout(StoreProblem::OutOfIds);
            return false;
        }
        m_last = int(*last);
        return true;
    }
    int next() { return ++m_last; }
    void write(TrackerBatch *batch) const
    {
        const auto counter = newResource("urn:korvasync:ids", "kv:IdCounter");
        tracker_resource_set_int64(counter.get(), m_property, m_last);
        addTo(batch, counter.get());
    }

private:
    const char *m_property;
    int m_last = 0;
};

QByteArray conversationUri(int id) { return "conversation:" + QByteArray::number(id); }

template <typename Number>
void setNumber(TrackerResource *resource, const char *name, Number number)
{
    if constexpr (std::is_same_v<Number, bool>)
        tracker_resource_set_boolean(resource, name, number);
    else
        tracker_resource_set_int64(resource, name, number);
}

//! The event as the database takes it, with the fields that \a set names.
GPointer<TrackerResource> toResource(const Event &event, Event::Properties set)
{
    auto resource = newResource(eventUri(event.id()), "kv:Event");
    TrackerResource *r = resource.get();
    const EventRow row = numbersOf(event);
    forEachNumber([&](const auto &field) {
        if (set & field.property)
            setNumber(r, field.name, row.*field.inRow);
    });
    if (set & Event::GroupId)
        tracker_resource_set_uri(r, "kv:channel", conversationUri(row.groupId).constData());
    forEachText([&](const TextField &field) {
        if (set & field.property)
            tracker_resource_set_string(r, field.name, toStoredText((event.*field.get)()));
    });
    return resource;
}

bool exists(StoreConnection &connection, int id, bool *found)
{
    TrackerSparqlStatement *statement =
        connection.statement("SELECT ?id FROM <" KORVASYNC_GRAPH "> { ~event kv:id ?id }");
    if (statement)
        tracker_sparql_statement_bind_string(statement, "event", eventUri(id).constData());
    std::optional<qint64> number;
    const bool isRead = readNumber(connection, statement, &number);
    *found = number.has_value();
    return isRead;
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
//! \param id  of the conversation, 0 when there is none
bool findConversation(StoreConnection &connection, const QByteArray &local,
                      const QByteArray &remote, int *id)
{
    TrackerSparqlStatement *statement = connection.statement(
        "SELECT ?id ?remote FROM <" KORVASYNC_GRAPH "> { ?channel a nmo:CommunicationChannel ;"
        " nie:subject ~local ; nie:generator ?remote . FILTER (?remote = ~remote)"
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
        IdCounter counter(EventCounter);
        if (!counter.read(connection, int(added.size())))
            return false;
        const QDateTime now = QDateTime::currentDateTimeUtc();
        for (Event &event : added) {
            event.setId(counter.next());
            event.setLastModified(now);
            const bool hasGroup = event.groupId() > 0;
            const auto resource =
                toResource(event, hasGroup ? AllFields : AllFields & ~Event::GroupId);
            if (!hasGroup)
                setNumber(resource.get(), "kv:conversationId", NoConversation);
            addTo(batch, resource.get());
        }
        counter.write(batch);
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
        const QDateTime now = QDateTime::currentDateTimeUtc();
        for (Event &event : modified) {
            bool found = false;
            if (!exists(connection, event.id(), &found) || !found)
                return false;
            Event::Properties set = event.setProperties() & ~Event::Id;
            if (event.groupId() < 1)
                set &= ~Event::GroupId;
            set |= Event::LastModified;
            event.setLastModified(now);
            addTo(batch, toResource(event, set).get());
        }
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
        QSet<int> seen;
        QByteArray text;
        for (const int id : ids) {
            bool isThere = false;
            if (!seen.contains(id) && !exists(connection, id, &isThere))
                return false;
            seen.insert(id);
            found.append(isThere);
            if (isThere)
                text += "<" + eventUri(id) + "> a rdfs:Resource . ";
        }
        if (!text.isEmpty()) {
            text = "DELETE DATA { GRAPH <" KORVASYNC_GRAPH "> { " + text + "} }";
            tracker_batch_add_sparql(batch, text.constData());
        }
        return true;
    });
    if (written)
        removed->swap(found);
    return written;
}

bool removeCalls(StoreConnection &connection)
{
    return connection.write([](TrackerBatch *batch) {
        const std::string text = "DELETE { GRAPH <" KORVASYNC_GRAPH "> { ?call a rdfs:Resource } }"
                                 " WHERE { GRAPH <" KORVASYNC_GRAPH "> { ?call kv:type "
            + std::to_string(Event::CallEvent) + " } }";
        tracker_batch_add_sparql(batch, text.c_str());
        return true;
    });
}

bool addConversations(StoreConnection &connection, const QList<Group> &groups, QList<int> *ids)
{
    QList<int> given;
    const bool written = connection.write([&](TrackerBatch *batch) {
        IdCounter counter(ConversationCounter);
        if (!counter.read(connection, int(groups.size())))
            return false;
        QHash<QPair<QByteArray, QByteArray>, int> added; // in this batch
        for (const Group &group : groups) {
            const QByteArray local = toStoredText(group.localUid());
            const QByteArray remote = remoteText(group);
            int id = added.value({local, remote});
            if (id == 0 && !findConversation(connection, local, remote, &id))
                return false;
            if (id == 0) {
                id = counter.next();
                added.insert({local, remote}, id);
                const auto channel = newResource(conversationUri(id), "nmo:CommunicationChannel");
                tracker_resource_set_string(channel.get(), "nie:subject", local.constData());
                tracker_resource_set_string(channel.get(), "nie:generator", remote.constData());
                addTo(batch, channel.get());
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
