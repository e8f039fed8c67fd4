// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <commhistory/event.h>
#include <platformexport.h>

#include <QtCore/QAbstractListModel>
#include <QtCore/QList>
#include <QtCore/QScopedPointer>

namespace CommHistory {

class EventModelPrivate;

//! Rows of stored events, and the way to write events.
//!
//! A write returns at once; true means that the request was taken. Its outcome
//! comes on a later turn of the event loop as one or more eventsCommitted()
//! reports, in request order, each of at most 1,000 events. What a report with
//! status true names is on disk. After a report with status false nothing more of
//! that request is written or reported. An empty request is reported once, with
//! no events and status true. Events that were added are announced on the session bus
//! before they are reported. A receiver may delete the model.
class KORVAPLATFORM_EXPORT EventModel : public QAbstractListModel
{
    Q_OBJECT
public:
    //! How a read is carried out. The store answers every read asynchronously, so
    //! there is one mode.
    enum QueryMode { AsyncQuery = 0 };

    explicit EventModel(QObject *parent = nullptr);
    ~EventModel() override;

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    //! The event of the row under Qt::UserRole, nothing under any other role.
    QVariant data(const QModelIndex &index, int role) const override;

    using QAbstractListModel::event;
    //! The event of the row; an invalid event for an index outside the model.
    Event event(const QModelIndex &index) const;

    virtual void setQueryMode(QueryMode mode);

    //! Adds the events in order and gives each its id, never -1 in a report with
    //! status true. \a toModelOnly adds rows to this model and writes nothing,
    //! so that no report follows.
    virtual bool addEvents(QList<Event> &events, bool toModelOnly);
    //! Writes of each event the fields whose setters were called, and the time of
    //! the modification. A group id below 1 is not written. An unknown id makes the
    //! report false.
    virtual bool modifyEvents(QList<Event> &events);
    //! Deletes one event by its database id. Requests of one turn of the event loop
    //! are one transaction; each, also for a missing or repeated id, stands in
    //! exactly one report, as an event with that id. Reports of unequal status are
    //! apart.
    virtual bool deleteEvent(int id);

Q_SIGNALS:
    void eventsCommitted(QList<CommHistory::Event> events, bool status);

protected:
    friend class EventModelPrivate;
    QScopedPointer<EventModelPrivate> d;
};

} // namespace CommHistory
