// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <commhistory/eventmodel.h>

#include <QtCore/QDateTime>

namespace CommHistory {

namespace CallEvent {
//! Kinds of calls that a read can ask for.
enum CallType { AllCalls = 0, OutgoingCall = 1, MissedCall = 2, IncomingCall = 3 };
} // namespace CallEvent

//! The calls of one kind since a time.
class KORVAPLATFORM_EXPORT CallModel : public EventModel
{
    Q_OBJECT
public:
    //! The one order that is offered: newest first by start time, equal times by
    //! descending id.
    enum Sorting { SortByTime = 1 };

    explicit CallModel(QObject *parent = nullptr);
    ~CallModel() override;

    //! \param since  lower bound of the start time, inclusive, in milliseconds, any time zone;
    //!               null = all calls
    void setFilter(Sorting sorting, CallEvent::CallType type, const QDateTime &since);

    //! See SyncSMSModel::getEvents().
    bool getEvents();

    //! Deletes every call, and nothing else. Blocks until the store has answered.
    //! \return true if they are gone from the disk; false if there is no store or it was not
    //!         written
    bool deleteAll();

Q_SIGNALS:
    //! The rows of the read are in the model.
    void modelReady();

private:
    CallEvent::CallType m_type = CallEvent::AllCalls;
    QDateTime m_since;
};

} // namespace CommHistory
