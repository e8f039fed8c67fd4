// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <korvasync/korvasyncexport.h>

#include <QtCore/QDateTime>
#include <QtCore/QList>
#include <QtCore/QMetaType>
#include <QtCore/QString>

//! Records and codes that cross the library's boundary.
//!
//! Two kinds of int identify an item:
//! - A *database id* names a message or call in the phone's store. It is above 0, and never given
//!   twice. -1 means none. The library hands out no ids of calls. It does not tell a call's id from
//!   a message's.
//! - A *reference index* is the 0-based position of an item in the list that the caller passed to a
//!   write. Every result of an item stands at its reference index.
//!
//! One never stands for the other.
namespace KorvaSyncIf {

//! Folders, as their ids in the store. A message that is written to LocOutbox, LocDrafts or LocSent
//! is outbound. In every other folder, 0 (none) included, it is inbound.
enum LocationId {
    LocInbox = 4098,
    LocOutbox = 4099,
    LocDrafts = 4100,
    LocSent = 4101,
    LocMyFolder = 4104 //!< the user's own folder; further user folders have ids above it
};

//! Which calls a read of the call log returns.
enum CallType { IncomingCall = 0, OutgoingCall = 1, MissedCall = 2 };

//! What a PendingStatus tracks.
enum SyncType {
    SmsSync = 0, //!< adding, modifying or deleting text messages
    CallSync = 1 //!< adding calls
};

//! Why the library could not hand an item to the store. It shows as SmsDatabaseError.
enum ErrorCause {
    GroupIdNotFound = 0 //!< the item's conversation was not found, or could not be made
};

//! Result of one message of an addition, a modification or a deletion. The checks of a vMessage run
//! in the order SmsParseError, SmsDraftNotAllowed, SmsNoParentId, SmsNoVCard; the first that fails
//! gives the result.
enum SMSSyncError {
    SmsNoError = 0,         //!< no error so far; after finished(): the item was processed
    SmsParseError = 1,      //!< the vMessage cannot be parsed
    SmsDraftNotAllowed = 2, //!< the vMessage names the drafts folder
    SmsNoVCard = 3,         //!< the vMessage has neither an originator's nor a recipient's number
    SmsInvalidId = 4,       //!< the database id to modify or delete is negative
    SmsNoParentId = 5,      //!< the vMessage names no known folder, and SyncSmsInfo::parentId is 0
    SmsDatabaseError = 6,   //!< the store did not commit the item, or it has no conversation
    SmsDeleteFailed = 7,    //!< the store did not delete the item, or does not have it
    SmsZeroMessagesPassed = 8 //!< the request held no items; the only entry of its status list
};

//! Result of one entry of an addition to the call log.
enum CallSyncError {
    CallNoError = 0,   //!< the entry was parsed; see PendingStatus::isError()
    CallParseError = 1 //!< the entry cannot be parsed
};

//! One text message as the library sees it. A text may have any length. A time may be in any time
//! zone; times from the store are in UTC.
//!
//! A read sets one of the two numbers: fromNumber in the inbox and in user folders, toNumber in
//! every other folder. A write takes toNumber for an outbound message (see LocationId), and
//! fromNumber for any other.
class KORVASYNC_EXPORT SmsInfo
{
public:
    SmsInfo();
    SmsInfo(const SmsInfo &other);
    SmsInfo &operator=(const SmsInfo &other);
    ~SmsInfo();

    //! Assigns every member from \a other.
    void copy(const SmsInfo &other);
    //! Logs one debug line in the category korvasync.records: id, folder id, text, seconds since
    //! 1970 in UTC (4294967295 = none), and the members from charset to messageToken. The line
    //! shows the text.
    void print() const;

    int id = -1;            //!< database id
    int parentId = 0;       //!< folder id, see LocationId; 0 = none known
    int groupId = -1;       //!< conversation id in the store; -1 = none; not set by a read
    QString fromNumber;     //!< sender
    QString toNumber;       //!< recipient
    QString body;           //!< message text
    QDateTime time;         //!< sent or received; null = unknown
    QDateTime modifiedTime; //!< last modification; not used by the library
    QString readStatus;     //!< "READ" or "UNREAD"; the store takes any other value as unread
    QString charset;        //!< character set that the vMessage named; not stored
    QString encoding;       //!< transfer encoding that the vMessage named, e.g. "QUOTED-PRINTABLE"
    QString language;       //!< language that the vMessage named; not stored
    QString folderName;     //!< folder as the vMessage names it, e.g. "INBOX"; not stored
    QString messageToken;   //!< token of the message; stored unchanged
    int refId = -1;         //!< reference index; -1 = none
};

//! One text message as it crosses the boundary to the sync client.
struct KORVASYNC_EXPORT SyncSmsInfo
{
    //! Database id. A read sets it. modifyMessages() changes the message that it names;
    //! addNewMessages() ignores it.
    int id = -1;
    //! Folder id, see LocationId. A read sets it. A write uses it when the vMessage names no known
    //! folder. 0 is then an error (SmsNoParentId). Any other value is stored as it is, LocDrafts
    //! and the default -1 included. No folder of the phone has the id -1, so set this member.
    int parentId = -1;
    //! Time of the message. A read gives it in the form of Qt::TextDate, in the time's own zone;
    //! what comes from the store is in UTC. A write uses it when the vMessage has no time. It has
    //! to be "yyyyMMddThhmmssZ", in UTC: with any other text the message gets no time. Empty = now,
    //! by the local clock, whose reading is stored as if it were UTC.
    QString time;
    QString vMessage;     //!< vMessage 1.1 (IrMC 1.1, section 9.9)
    QString messageToken; //!< token of the message; carried unchanged
};

//! One call.
struct KORVASYNC_EXPORT CallInfo
{
    int id = 0;       //!< reference index on write; 0 on read
    QString type;     //!< "incoming", "outgoing" or "missed"; any other text is stored as outgoing
    QString number;   //!< the other party
    int duration = 0; //!< seconds
    //! On write the end of the call. On read the start of an outgoing call, and the end of any
    //! other. Null = unknown.
    QDateTime dateTime;
};

} // namespace KorvaSyncIf

Q_DECLARE_METATYPE(KorvaSyncIf::SmsInfo)
Q_DECLARE_METATYPE(KorvaSyncIf::CallInfo)
Q_DECLARE_METATYPE(KorvaSyncIf::ErrorCause)
