// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "eventmodel.h"
#include "eventrow_p.h"
#include "mailbox_p.h"

#include <QtCore/QVector>

#include <functional>

namespace CommHistory {

class StoreConnection;

//! Reports from the store's thread; may outlive the model.
using EventReporter = std::function<void(const QList<Event> &, bool)>;

class EventModelPrivate
{
public:
    explicit EventModelPrivate(EventModel *model);
    ~EventModelPrivate();

    //! Reads on the store's thread, then puts the rows into the model and calls \a ready.
    //! False when the store cannot be read.
    bool read(std::function<bool(StoreConnection &, QVector<EventRow> *)> read,
              std::function<void()> ready);

    EventReporter reporter() const;
    void endGathering();

    EventModel *q;
    MailboxPointer mailbox;
    QVector<EventRow> rows;
    bool isGathering = false; //!< deletions of this turn of the event loop
};

} // namespace CommHistory
