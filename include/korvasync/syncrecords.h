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
//! Two kinds of int identify an item. A *database id* names an event in the phone's
//! store; -1 means none. A *reference index* is the 0-based position of an item in the
//! list that the caller passed to a write; every per-item result is keyed by it. The
//! one never stands for the other.
namespace KorvaSyncIf {

//! Folders, as their ids in the store. Messages in LocOutbox, LocDrafts and LocSent are
//! outbound; in every other folder, 0 (none) included, they are inbound.
enum LocationId {
    LocInbox = 4098,
    LocOutbox = 4099,
    LocDrafts = 4100,
    LocSent = 4101,
    LocMyFolder = 4104 //!< the user's own folder; further user folders lie above it
};

//! Which calls a call-log read returns.
enum CallType { IncomingCall = 0, OutgoingCall = 1, MissedCall = 2 };

//! What a PendingStatus tracks.
enum SyncType {
    SmsSync = 0, //!< adding, modifying or deleting text messages
    CallSync = 1 //!< adding calls
};

//! Why the store adapter could not process the items it names.
enum ErrorCause {
    GroupIdNotFound = 0 //!< a conversation could neither be found nor made
};

//! Result of one item of a message write, modification or deletion.
enum SMSSyncError {
    SmsNoError = 0,           //!< the item was processed
    SmsParseError = 1,        //!< the vMessage cannot be parsed
    SmsDraftNotAllowed = 2,   //!< the vMessage names the drafts folder
    SmsNoVCard = 3,           //!< the vMessage has neither an originator's nor a recipient's number
    SmsInvalidId = 4,         //!< the database id to modify or delete is negative
    SmsNoParentId = 5,        //!< neither the vMessage nor the SyncSmsInfo names a folder
    SmsDatabaseError = 6,     //!< the store did not commit the item, or it has no conversation
    SmsDeleteFailed = 7,      //!< the store did not delete the item
    SmsZeroMessagesPassed = 8 //!< the request held no items; the only entry of its status list
};

//! Result of one item of a call-log write.
enum CallSyncError {
    CallNoError = 0,   //!< the entry was processed
    CallParseError = 1 //!< the entry's text cannot be parsed
};

//! One text message as the library sees it. Times may have any time zone; the ones that
//! come from the store are in UTC.
class KORVASYNC_EXPORT SmsInfo
{
public:
    SmsInfo();
    SmsInfo(const SmsInfo &other);
    SmsInfo &operator=(const SmsInfo &other);
    ~SmsInfo();

    //! Assigns every member from \a other.
    void copy(const SmsInfo &other);
    //! Writes one line with the main members to the debug stream. It shows the text.
    void print() const;

    int id = -1;            //!< database id
    int parentId = 0;       //!< folder id, see LocationId; 0 = none known
    int groupId = -1;       //!< conversation id in the store; -1 = none
    QString fromNumber;     //!< the other party of an inbound message
    QString toNumber;       //!< the other party of an outbound message
    QString body;           //!< message text
    QDateTime time;         //!< sent or received; null = unknown
    QDateTime modifiedTime; //!< last modification; null = unknown
    QString readStatus;     //!< "READ" or "UNREAD"
    QString charset;        //!< character set that the vMessage named
    QString encoding;       //!< transfer encoding that the vMessage named
    QString language;       //!< language that the vMessage named
    QString folderName;     //!< folder as named in the vMessage, such as "INBOX"
    QString messageToken;   //!< token of the event
    int refId = -1;         //!< reference index
};

//! One text message as it crosses the boundary to the sync client.
struct KORVASYNC_EXPORT SyncSmsInfo
{
    int id = -1;       //!< database id; on modify, the message to change
    int parentId = -1; //!< folder id; on write used only when the vMessage names no folder
    //! On read the message's time in Qt::TextDate form, in the time's own zone. On write
    //! "yyyyMMddThhmmssZ" in UTC, used only when the vMessage has no time; empty = now.
    QString time;
    QString vMessage;     //!< vMessage 1.1 text (IrMC 1.1, section 9.9)
    QString messageToken; //!< token of the event, carried unchanged
};

//! One call.
struct KORVASYNC_EXPORT CallInfo
{
    int id = 0;         //!< reference index on write; 0 in what is read from the store
    QString type;       //!< "incoming", "outgoing" or "missed"
    QString number;     //!< the other party
    int duration = 0;   //!< seconds
    QDateTime dateTime; //!< end of the call; on read of an outgoing call its start
};

} // namespace KorvaSyncIf

Q_DECLARE_METATYPE(KorvaSyncIf::SmsInfo)
Q_DECLARE_METATYPE(KorvaSyncIf::CallInfo)
Q_DECLARE_METATYPE(KorvaSyncIf::ErrorCause)
