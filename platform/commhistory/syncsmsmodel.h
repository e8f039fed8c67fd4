// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <commhistory/eventmodel.h>

#include <QtCore/QDateTime>

namespace CommHistory {

//! Which text messages a SyncSMSModel reads.
struct SyncSMSFilter
{
    //! \param parentId      the folder
    //! \param time          lower bound in milliseconds, any time zone; null = all messages
    //! \param lastModified  false: the bound is on the event's own time, inclusive;
    //!                      true: it is on the last modification, exclusive. Adding an event
    //!                      counts as its first modification.
    SyncSMSFilter(int parentId, const QDateTime &time, bool lastModified)
        : parentId(parentId)
        , time(time)
        , lastModified(lastModified)
    {
    }

    int parentId;
    QDateTime time;
    bool lastModified;
};

//! The text messages of one folder since a time, oldest first, equal times by id. The time of a
//! message in the inbox or in a user's folder is its end, in any other folder its start.
class KORVAPLATFORM_EXPORT SyncSMSModel : public EventModel
{
    Q_OBJECT
public:
    SyncSMSModel(int parentId, const QDateTime &time, bool lastModified, QObject *parent = nullptr);
    ~SyncSMSModel() override;

    void setSyncSmsFilter(const SyncSMSFilter &filter);

    //! Starts a read with the filter set last. Blocks while the store is being opened, three
    //! seconds at most if another process holds it.
    //! \return false if there is no store or it cannot be opened; modelReady() then never comes
    //! \par Failure  A read that fails after its start logs a warning and emits nothing.
    bool getEvents();

Q_SIGNALS:
    //! The rows of the read are in the model.
    //! \param successful  always true
    void modelReady(bool successful);

private:
    SyncSMSFilter m_filter;
};

} // namespace CommHistory
