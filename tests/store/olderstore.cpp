// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// olderstore FOLDER COUNT: makes a store of the first format with so many messages, of any size. It
// has the ontology of that time and writes as the program did then.

#include <libtracker-sparql/tracker-sparql.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>

namespace {

constexpr char Graph[] = "urn:korvasync:history";
constexpr int Portion = 1000;
constexpr long long Begin = 1400000000000; // milliseconds since 1970

GError *error = nullptr;

void check()
{
    if (error) {
        std::fprintf(stderr, "%s\n", error->message);
        std::exit(1);
    }
}

void add(TrackerBatch *batch, TrackerResource *resource)
{
    tracker_batch_add_resource(batch, Graph, resource);
    g_object_unref(resource);
}

TrackerResource *resource(const std::string &uri, const char *type)
{
    TrackerResource *const made = tracker_resource_new(uri.c_str());
    tracker_resource_add_uri(made, "rdf:type", type);
    return made;
}

TrackerResource *message(int id)
{
    TrackerResource *const event = resource("event:" + std::to_string(id), "kv:Event");
    const long long time = Begin + id * 60000LL;
    const std::pair<const char *, long long> numbers[] = {
        {"kv:id", id},
        {"kv:type", 2},
        {"kv:direction", 1 + id % 2},
        {"kv:status", 0},
        {"kv:startTime", time},
        {"kv:endTime", time + 1000},
        {"kv:lastModified", time + 2000},
        {"kv:conversationId", -1},
        {"kv:folder", id % 2 == 0 ? 4098 : 4101},
    };
    for (const auto &[name, number] : numbers)
        tracker_resource_set_int64(event, name, number);
    const std::pair<const char *, std::string> texts[] = {
        {"kv:localUid", "account"},
        {"kv:remoteUid", "+1555" + std::to_string(100 + id % 300)},
        {"kv:text", "Text of message " + std::to_string(id)},
        {"kv:token", ""},
        {"kv:encoding", ""},
        {"kv:characterSet", ""},
        {"kv:language", ""},
    };
    for (const auto &[name, text] : texts)
        tracker_resource_set_string(event, name, text.c_str());
    tracker_resource_set_boolean(event, "kv:isRead", TRUE);
    tracker_resource_set_boolean(event, "kv:isMissedCall", FALSE);
    return event;
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc != 3)
        return 2;
    const std::filesystem::path folder = argv[1];
    const int count = std::atoi(argv[2]);
    std::filesystem::create_directory(folder);
    std::filesystem::permissions(folder, std::filesystem::perms::owner_all);
    std::ofstream(folder / "lock").close();
    GFile *const place = g_file_new_for_path((folder / "db").c_str());
    GFile *const ontology = g_file_new_for_path(STORES "/ontology-1");
    TrackerSparqlConnection *const connection = tracker_sparql_connection_new(
        TRACKER_SPARQL_CONNECTION_FLAGS_NONE, place, ontology, nullptr, &error);
    check();
    tracker_sparql_connection_update(connection,
                                     ("CREATE GRAPH <" + std::string(Graph)
                                      + "> ; INSERT DATA { GRAPH <" + Graph
                                      + "> { <urn:korvasync:ids> a kv:IdCounter ; kv:lastEventId "
                                      + std::to_string(count) + " ; kv:lastConversationId 0 } }")
                                         .c_str(),
                                     nullptr, &error);
    check();
    for (int done = 0; done < count; done += Portion) {
        TrackerBatch *const batch = tracker_sparql_connection_create_batch(connection);
        for (int id = done + 1; id <= std::min(count, done + Portion); ++id)
            add(batch, message(id));
        tracker_batch_execute(batch, nullptr, &error);
        check();
        g_object_unref(batch);
    }
    tracker_sparql_connection_close(connection);
    g_object_unref(connection);
    g_object_unref(ontology);
    g_object_unref(place);
    std::ofstream(folder / "korvasync-store") << "1\n";
    return 0;
}
