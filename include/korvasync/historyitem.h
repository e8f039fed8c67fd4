// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <korvasync/korvasyncexport.h>
#include <korvasync/syncrecords.h>

#include <QtCore/QDateTime>
#include <QtCore/QList>
#include <QtCore/QMetaType>
#include <QtCore/QString>

//! Values of HistoryInterface: what it is asked, and what it answers.
namespace KorvaSyncIf {

//! Why a request to HistoryInterface failed.
enum class HistoryError {
    None,
    InvalidFilter,    //!< a field of the HistoryFilter is out of its range
    StoreUnavailable, //!< there is no store, or it cannot be opened; a log line says why
    ReadFailed,       //!< the store failed or went away; what was handed out before is right
    UnknownCursor     //!< not a cursor of this store; begin with an empty one
};

//! One stored message or call.
struct KORVASYNC_EXPORT HistoryItem
{
    enum class Kind { Message, Call };
    enum class Direction { Unknown, Inbound, Outbound };
    enum class Status { Unknown, Sending, Sent, Failed };

    int id = -1; //!< database id, > 0; never given to another item, also after a deletion
    Kind kind = Kind::Message;
    //! Messages: the folder, a LocationId or a user's own folder. Calls: 0.
    int folder = 0;
    //! Messages go by their folder: outbound in LocOutbox, LocDrafts and LocSent.
    Direction direction = Direction::Unknown;
    Status status = Status::Unknown; //!< messages: what became of sending
    bool isRead = false;             //!< messages
    bool isMissed = false;           //!< calls
    int conversation = -1;           //!< id of the conversation; -1 = none
    //! Number or word of the other party, as stored; empty = unknown.
    QString party;
    //! In UTC, to the millisecond; null = unknown. Messages: received, or sent. Calls: begun.
    QDateTime time;
    int duration = 0; //!< calls: seconds
    //! Messages: the text as stored.
    QString text;
    QString token;    //!< token of the message, carried unchanged
    QString charset;  //!< character set that the vMessage named
    QString encoding; //!< transfer encoding that the vMessage named
    QString language; //!< language that the vMessage named
    //! Greater than that of every change before, across all items of the store.
    qint64 change = 0;

    //! The message as the fixed interface has it, for VMessageEncoder. Not for calls.
    SmsInfo toSmsInfo() const;
};

//! Which items a query is for. Every condition that is set must hold.
struct KORVASYNC_EXPORT HistoryFilter
{
    //! When a party counts as the wanted one. Words are compared without regard to case.
    enum class PartyMatch {
        SameNumber, //!< the same number, in national or international form
        SameEnding  //!< the same last seven digits, as conversations are joined
    };
    enum class Order {
        OldestFirst, //!< by time, equal times by id; items without a time come first
        NewestFirst  //!< the reverse
    };

    static constexpr int NoLimit = -1;
    static constexpr int MaxFolders = 32;
    static constexpr int MaxPortion = 1000;

    HistoryItem::Kind kind = HistoryItem::Kind::Message;
    QList<int> folders; //!< of messages, MaxFolders at most; empty = all
    QString party;      //!< empty = every party
    PartyMatch partyMatch = PartyMatch::SameNumber;
    int conversation = -1; //!< id of a conversation; -1 = all
    QDateTime from;        //!< time, included, any time zone; null = no bound
    QDateTime to; //!< time, excluded, any time zone; null = no bound; no time is before every time
    QDateTime modifiedSince; //!< added or changed after this time; null = no bound
    bool unreadOnly = false;
    Order order = Order::OldestFirst;
    int limit = NoLimit; //!< the first so many in the order, >= 0, or NoLimit
    int portion = 500;   //!< the most items handed out at once, 1..MaxPortion
};

//! One step of what happened to the store since a cursor.
struct KORVASYNC_EXPORT HistoryChange
{
    enum class Kind {
        Added,   //!< the item was not there when the cursor was given
        Changed, //!< it was there, and is different now
        Deleted  //!< it was there; the item has its id, kind and change only
    };

    Kind kind = Kind::Added;
    HistoryItem item;
};

//! How many items share a key.
struct KORVASYNC_EXPORT HistoryCount
{
    //! What is counted together.
    enum class By {
        Folder, //!< number of the folder
        Year,   //!< year of the time in UTC; 0 = without a time
        Party   //!< the party as stored: spellings of one number stand apart
    };

    int number = 0; //!< By::Folder, By::Year
    QString party;  //!< By::Party
    qint64 count = 0;
    qint64 unread = 0;
    QDateTime first; //!< earliest time, in UTC; null when no item has one
    QDateTime last;  //!< latest time, in UTC; null when no item has one
};

} // namespace KorvaSyncIf

Q_DECLARE_METATYPE(KorvaSyncIf::HistoryItem)
Q_DECLARE_METATYPE(KorvaSyncIf::HistoryChange)
