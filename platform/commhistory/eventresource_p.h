// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "eventrow_p.h"

#include <store/storeconnection.h>

#include <type_traits>

namespace CommHistory {

// What the store holds, as the database takes it.

constexpr Event::Properties AllFields(QFlag(~0));

GPointer<TrackerResource> newResource(const QByteArray &uri, const char *type);

template <typename Number>
void setNumber(TrackerResource *resource, const char *name, Number number)
{
    if constexpr (std::is_same_v<Number, bool>)
        tracker_resource_set_boolean(resource, name, number);
    else
        tracker_resource_set_int64(resource, name, number);
}

void addTo(TrackerBatch *batch, TrackerResource *resource);

//! The fields of an event that \a set names, and what is made from them.
//! \param row  has type, folder and times, also where they are not set
GPointer<TrackerResource> eventResource(const EventRow &row, Event::Properties set, qint64 change);

GPointer<TrackerResource> conversationResource(int id, const char *local, const QByteArray &remote);

//! What is left of an event.
GPointer<TrackerResource> tombstoneResource(int id, int type, qint64 change);

} // namespace CommHistory
