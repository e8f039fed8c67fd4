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
//! A call crosses the boundary as a call-history entry, lines of name, colon and value:
//! \code
//! BEGIN:VCALLHISTENTRY
//! TYPE:incoming | outgoing | missed
//! TEL:the other party, any text without a colon
//! DURATION:seconds
//! CALL-DATETIME:date and time
//! END:VCALLHISTENTRY
//! \endcode
//! What is read ends its lines in CR LF and its date-time in the milliseconds, 0 to 999
//! without leading zeros, in local time and without a zone letter. What is added may end
//! its lines in LF too and has its date-time as "yyyyMMddThhmmss", read as local time; a Z or z
//! behind it is cut off. So an entry that was read is not one that can be added as it is. An
//! outgoing call is read with its start and added with its end.
//!
//! Pending objects and adapters live as told at SMSSyncInterface.
class KORVASYNC_EXPORT CallSyncInterface : public QObject
{
    Q_OBJECT
public:
    explicit CallSyncInterface(QObject *parent = nullptr);
    ~CallSyncInterface() override;

    //! The calls of one kind whose start is not before a time, newest first. Waits for the store
    //! as SMSSyncInterface::messages() does.
    //! \param type   any other value than the three asks for all calls
    //! \param since  lower bound, included, any time zone; null = all
    PendingMsgs *calls(CallType type, const QDateTime &since);

    //! Adds calls. Per entry: CallParseError. A date-time that cannot be read is no error
    //! and stored as none. What the store does not commit shows in isError() alone.
    PendingStatus *addNewCalls(const QList<QString> &entries);

    //! Removes every call; waits for the store. False when it did not.
    bool deleteAllCalls();

private:
    CallSyncInterfacePrivate *d;
};

} // namespace KorvaSyncIf
