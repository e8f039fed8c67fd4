// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "eventresource_p.h"

#include "historykeys_p.h"

#include <store/endkey.h>
#include <store/storedtext.h>

#include <cstring>

namespace CommHistory {

namespace {

QByteArray conversationUri(int id) { return "conversation:" + QByteArray::number(id); }

//! An id below one is no conversation's; it is stored as the value for none.
void setConversation(TrackerResource *resource, int id)
{
    constexpr int none = -1;
    setNumber(resource, "kv:conversationId", id > 0 ? id : none);
    if (id > 0)
        tracker_resource_set_uri(resource, "kv:channel", conversationUri(id).constData());
}

} // namespace

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

GPointer<TrackerResource> eventResource(const EventRow &row, Event::Properties set, qint64 change)
{
    auto resource = newResource(eventUri(row.id), "kv:Event");
    TrackerResource *const r = resource.get();
    setNumber(r, "kv:change", change);
    forEachNumber([&](const auto &field) {
        if ((set & field.property) && field.property != Event::GroupId)
            setNumber(r, field.name, row.*field.inRow);
    });
    if (set & Event::GroupId)
        setConversation(r, row.groupId);
    if (set & (Event::Type | Event::ParentId | Event::StartTime | Event::EndTime))
        setNumber(r, "kv:time", ownTime(row));
    const char *text = row.texts.constData(); // a zero byte ends each
    forEachText([&](const TextField &field) {
        const std::size_t length = std::strlen(text);
        if (set & field.property)
            tracker_resource_set_string(r, field.name, text);
        if ((set & field.property) && field.property == Event::RemoteUid)
            setNumber(r, "kv:partyKey",
                      partyKeyOf(fromStoredText(QByteArray::fromRawData(text, int(length)))));
        text += length + 1;
    });
    return resource;
}

GPointer<TrackerResource> conversationResource(int id, const char *local, const QByteArray &remote)
{
    auto resource = newResource(conversationUri(id), "nmo:CommunicationChannel");
    tracker_resource_set_string(resource.get(), "nie:subject", local);
    tracker_resource_set_string(resource.get(), "nie:generator", remote.constData());
    setNumber(resource.get(), "kv:endKey", endKey(remote));
    return resource;
}

GPointer<TrackerResource> tombstoneResource(int id, int type, qint64 change)
{
    auto resource = newResource("deleted:" + QByteArray::number(id), "kv:Tombstone");
    setNumber(resource.get(), "kv:deletedId", id);
    setNumber(resource.get(), "kv:deletedType", type);
    setNumber(resource.get(), "kv:deletedChange", change);
    return resource;
}

} // namespace CommHistory
