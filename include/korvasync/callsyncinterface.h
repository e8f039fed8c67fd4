// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <korvasync/korvasyncexport.h>
#include <korvasync/pendingmsgs.h>
#include <korvasync/pendingstatus.h>
#include <korvasync/syncrecords.h>

#include <QtCore/QDateTime>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QString>

namespace KorvaSyncIf {

class CallSyncInterfacePrivate;

//! Reads, adds and wipes the phone's call log.
//!
//! A call crosses the boundary as a call-history entry. The format is this library's own; no
//! standard describes it. An entry consists of lines with a name, a colon and a value:
//! \code
//! BEGIN:VCALLHISTENTRY
//! TYPE:incoming
//! TEL:+15550100
//! DURATION:65
//! CALL-DATETIME:20240105T081500
//! END:VCALLHISTENTRY
//! \endcode
//!
//! | line | value |
//! |---|---|
//! | TYPE | incoming, outgoing or missed |
//! | TEL | the other party; any text without a colon |
//! | DURATION | whole seconds |
//! | CALL-DATETIME | date and time in the local time zone, see below |
//!
//! | | in an entry that is read | in an entry to add |
//! |---|---|---|
//! | line ends | CR LF | CR LF, or LF |
//! | form of the time | yyyyMMddThhmmss, then the milliseconds | yyyyMMddThhmmss |
//! | time of an outgoing call | its start | its end |
//! | time of any other call | its end | its end |
//!
//! The milliseconds are 0 to 999, without leading zeros. In an entry to add, a Z or z behind the
//! time is ignored: the time is local all the same. An entry that was read therefore cannot be
//! added as it is. Remove the milliseconds, and add the duration to the time of an outgoing call.
//!
//! Pending objects, order, new phones and destruction are described at SMSSyncInterface. On a new
//! phone, calls() has PendingMsgs::isError() at once, and deleteAllCalls() returns false.
class KORVASYNC_EXPORT CallSyncInterface : public QObject
{
    Q_OBJECT
public:
    explicit CallSyncInterface(QObject *parent = nullptr);
    ~CallSyncInterface() override;

    //! Reads the calls of one kind, newest start first, equal starts by descending database id.
    //! Blocking and failures are those of SMSSyncInterface::messages().
    //! \param type   any other value than the three asks for all calls
    //! \param since  lower bound of the call's start, inclusive; any time zone, compared in
    //!               milliseconds. Null = all calls.
    //! \return never null; a child of this object
    PendingMsgs *calls(CallType type, const QDateTime &since);

    //! Adds calls.
    //! \par Errors of entries  CallParseError for a wrong first line, name, type or END, and for a
    //! second colon in a line. Other faults are no errors: a duration that is not a number is 0. A
    //! time that cannot be read is stored as none, and the call starts in the year 2106. An entry
    //! without a type, even an empty text, is stored as an outgoing call.
    //! \par Failure  Calls that the store did not commit show in PendingStatus::isError() alone,
    //! which does not tell which ones they are. For an empty list, and if no entry can be parsed,
    //! isError() is true at once, and finished() never comes.
    //! \return never null; a child of this object
    PendingStatus *addNewCalls(const QList<QString> &entries);

    //! Deletes every call, and nothing else. Blocks until the store has answered.
    //! \return true if the calls are gone from the disk; false if the store is absent or was not
    //!         written
    bool deleteAllCalls();

private:
    CallSyncInterfacePrivate *d;
};

} // namespace KorvaSyncIf
