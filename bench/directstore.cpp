// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "directstore.h"

#include "harness.h"

namespace Bench {

namespace {

constexpr char Graph[] = "urn:korvasync:history";
//! An error that ends the program.
class Fatal
{
public:
    ~Fatal()
    {
        if (m_error)
            std::fprintf(stderr, "bench: %s\n", m_error->message);
        check(!m_error, "the database failed");
    }
    operator GError **() { return &m_error; }

private:
    GError *m_error = nullptr;
};

Pointer<TrackerSparqlConnection> openDatabase(const std::string &folder)
{
    const Pointer<GFile> place(g_file_new_for_path((folder + "/db").c_str()));
    const Pointer<GFile> ontology(g_file_new_for_uri("resource:///org/korvasync/ontology"));
    return Pointer<TrackerSparqlConnection>(tracker_sparql_connection_new(
        TRACKER_SPARQL_CONNECTION_FLAGS_NONE, place.get(), ontology.get(), nullptr, Fatal()));
}

//! The columns that the platform reads, in its order.
std::string selectEvents(const std::string &subject, const std::string &rest,
                         const std::string &order)
{
    std::string text = "SELECT";
    std::string pattern;
    for (const char *name :
         {"id", "type", "direction", "status", "isRead", "isMissedCall", "folder", "conversationId",
          "startTime", "endTime", "lastModified", "localUid", "remoteUid", "text", "token",
          "encoding", "characterSet", "language"}) {
        text += std::string(" ?") + name;
        pattern += std::string(pattern.empty() ? " kv:" : " ; kv:") + name + " ?" + name;
    }
    return text + " FROM <" + Graph + "> { " + subject + pattern + " . " + rest + " } " + order;
}

//! What tells the parties of conversations apart.
std::string partyOf(const std::string &number) { return number.substr(number.size() - 7); }

std::string eventUri(int id) { return "event:" + std::to_string(id); }

Pointer<TrackerResource> newResource(const std::string &uri, const char *type)
{
    Pointer<TrackerResource> resource(tracker_resource_new(uri.c_str()));
    tracker_resource_add_uri(resource.get(), "rdf:type", type);
    return resource;
}

} // namespace

DirectStore::DirectStore(const std::string &folder, int records, int numbers)
    : m_connection(openDatabase(folder))
    , m_lastId(records)
{
    for (const Record &record : makeRecords(records, numbers))
        m_conversations.emplace(record.number, int(m_conversations.size()) + 1);
}

int DirectStore::conversation(TrackerBatch *batch, const std::string &number)
{
    const auto [entry, isNew] = m_conversations.emplace(number, int(m_conversations.size()) + 1);
    if (isNew) {
        const auto channel = newResource("conversation:" + std::to_string(entry->second),
                                         "nmo:CommunicationChannel");
        tracker_resource_set_string(channel.get(), "nie:subject", Account);
        tracker_resource_set_string(channel.get(), "nie:generator", partyOf(number).c_str());
        tracker_resource_set_int64(channel.get(), "kv:endKey", entry->second);
        tracker_batch_add_resource(batch, Graph, channel.get());
    }
    return entry->second;
}

Pointer<TrackerResource> DirectStore::newEvent(const Record &record)
{
    const int id = ++m_lastId;
    auto event = newResource(eventUri(id), "kv:Event");
    TrackerResource *const r = event.get();
    tracker_resource_set_int64(r, "kv:id", id);
    tracker_resource_set_int64(r, "kv:startTime", record.time * 1000);
    tracker_resource_set_int64(r, "kv:endTime", record.time * 1000);
    tracker_resource_set_int64(r, "kv:lastModified", record.time * 1000);
    tracker_resource_set_int64(r, "kv:time", record.time * 1000);
    tracker_resource_set_int64(r, "kv:change", id);
    tracker_resource_set_int64(r, "kv:partyKey", std::stoll("1" + partyOf(record.number)));
    tracker_resource_set_int64(r, "kv:direction", record.isSent() ? 2 : 1);
    tracker_resource_set_boolean(r, "kv:isMissedCall", FALSE);
    tracker_resource_set_string(r, "kv:localUid", Account);
    tracker_resource_set_string(r, "kv:remoteUid", record.number.c_str());
    tracker_resource_set_string(r, "kv:token", "");
    tracker_resource_set_string(r, "kv:encoding", "");
    tracker_resource_set_string(r, "kv:characterSet", "");
    tracker_resource_set_string(r, "kv:language", "");
    return event;
}

void DirectStore::write(TrackerBatch *batch)
{
    const auto counter = newResource("urn:korvasync:ids", "kv:IdCounter");
    tracker_resource_set_int64(counter.get(), "kv:lastEventId", m_lastId);
    tracker_resource_set_int64(counter.get(), "kv:lastChange", m_lastId);
    tracker_batch_add_resource(batch, Graph, counter.get());
    tracker_batch_execute(batch, nullptr, Fatal());
}

void DirectStore::addMessages(const std::vector<Record> &records, int first, int end)
{
    const Pointer<TrackerBatch> batch(tracker_sparql_connection_create_batch(m_connection.get()));
    for (int i = first; i < end; ++i) {
        const Record &record = records[std::size_t(i)];
        const int conversationId = conversation(batch.get(), record.number);
        const auto event = newEvent(record);
        TrackerResource *const r = event.get();
        tracker_resource_set_int64(r, "kv:type", 2);
        tracker_resource_set_int64(r, "kv:status", record.isSent() ? 2 : 0);
        tracker_resource_set_int64(r, "kv:folder", record.folder);
        tracker_resource_set_boolean(r, "kv:isRead", TRUE);
        tracker_resource_set_int64(r, "kv:conversationId", conversationId);
        tracker_resource_set_uri(r, "kv:channel",
                                 ("conversation:" + std::to_string(conversationId)).c_str());
        tracker_resource_set_string(r, "kv:text", record.body.c_str());
        tracker_batch_add_resource(batch.get(), Graph, r);
    }
    write(batch.get());
}

void DirectStore::addCalls(const std::vector<Record> &records, int first, int end)
{
    const Pointer<TrackerBatch> batch(tracker_sparql_connection_create_batch(m_connection.get()));
    for (int i = first; i < end; ++i) {
        const auto event = newEvent(records[std::size_t(i)]);
        TrackerResource *const r = event.get();
        tracker_resource_set_int64(r, "kv:type", 3);
        tracker_resource_set_int64(r, "kv:status", 0);
        tracker_resource_set_int64(r, "kv:folder", 0);
        tracker_resource_set_boolean(r, "kv:isRead", FALSE);
        tracker_resource_set_int64(r, "kv:conversationId", -1);
        tracker_resource_set_string(r, "kv:text", "");
        tracker_batch_add_resource(batch.get(), Graph, r);
    }
    write(batch.get());
}

void DirectStore::remove(const std::vector<int> &ids)
{
    for (std::size_t first = 0; first < ids.size(); first += TransactionSize) {
        std::string text = std::string("DELETE DATA { GRAPH <") + Graph + "> { ";
        for (std::size_t i = first; i < std::min(ids.size(), first + TransactionSize); ++i)
            text += "<" + eventUri(ids[i]) + "> a rdfs:Resource . ";
        text += "} } ; INSERT DATA { GRAPH <" + std::string(Graph) + "> { ";
        for (std::size_t i = first; i < std::min(ids.size(), first + TransactionSize); ++i) {
            const std::string id = std::to_string(ids[i]);
            text += "<deleted:" + id + "> a kv:Tombstone ; kv:deletedId " + id
                + " ; kv:deletedType 2 ; kv:deletedChange " + id + " . ";
        }
        text += "} }";
        tracker_sparql_connection_update(m_connection.get(), text.c_str(), nullptr, Fatal());
    }
}

TrackerSparqlStatement *DirectStore::statement(const std::string &text)
{
    auto &statement = m_statements[text];
    if (!statement)
        statement.reset(tracker_sparql_connection_query_statement(m_connection.get(), text.c_str(),
                                                                  nullptr, Fatal()));
    return statement.get();
}

int DirectStore::countRows(TrackerSparqlStatement *statement)
{
    const Pointer<TrackerSparqlCursor> cursor(
        tracker_sparql_statement_execute(statement, nullptr, Fatal()));
    const int columns = tracker_sparql_cursor_get_n_columns(cursor.get());
    int rows = 0;
    for (; tracker_sparql_cursor_next(cursor.get(), nullptr, Fatal()); ++rows) {
        for (int i = 0; i < columns; ++i) // a row is there when its values are
            tracker_sparql_cursor_get_string(cursor.get(), i, nullptr);
    }
    return rows;
}

int DirectStore::readFolder(int folder)
{
    TrackerSparqlStatement *const reading = statement(
        selectEvents("?event",
                     "?event kv:time ?time . BIND (xsd:integer(~folder) AS ?wanted) BIND"
                     " (xsd:integer(~since) AS ?since) FILTER (?type + 0 = 2 && ?folder = ?wanted"
                     " && ?time >= ?since)",
                     "ORDER BY ?time ?id"));
    tracker_sparql_statement_bind_int(reading, "folder", folder);
    tracker_sparql_statement_bind_int(reading, "since", G_MININT64);
    return countRows(reading);
}

int DirectStore::readCalls()
{
    TrackerSparqlStatement *const reading =
        statement(selectEvents("?event",
                               "?event kv:time ?time . BIND (xsd:integer(~since) AS ?since)"
                               " FILTER (?type = 3 && ?time >= ?since)",
                               "ORDER BY DESC(?time) DESC(?id)"));
    tracker_sparql_statement_bind_int(reading, "since", G_MININT64);
    return countRows(reading);
}

bool DirectStore::readOne(int id)
{
    TrackerSparqlStatement *const reading = statement(selectEvents("~event", "", ""));
    tracker_sparql_statement_bind_string(reading, "event", eventUri(id).c_str());
    return countRows(reading) == 1;
}

bool DirectStore::findConversation(const std::string &number)
{
    const std::string text = std::string("SELECT ?comm WHERE{?comm a nmo:CommunicationChannel; "
                                         "nie:subject '")
        + Account + "'; nie:generator ?remoteId. FILTER REGEX(?remoteId, '" + partyOf(number)
        + "$')}";
    const Pointer<TrackerSparqlCursor> cursor(
        tracker_sparql_connection_query(m_connection.get(), text.c_str(), nullptr, Fatal()));
    return tracker_sparql_cursor_next(cursor.get(), nullptr, Fatal());
}

} // namespace Bench
