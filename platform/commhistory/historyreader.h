// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <commhistory/event.h>
#include <platformexport.h>

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>
#include <QtCore/QList>
#include <QtCore/QMetaType>
#include <QtCore/QObject>
#include <QtCore/QScopedPointer>
#include <QtCore/QString>

#include <limits>

namespace CommHistory {

class HistoryReaderPrivate;

//! Which events a HistoryReader reads; every condition that is set must hold.
struct HistorySelection
{
    enum PartyMatch { SameNumber, SameEnding };

    Event::EventType type = Event::SmsEvent;
    QList<int> folders; //!< 32 at most; empty = all
    QString party;      //!< empty = every party
    PartyMatch partyMatch = SameNumber;
    int conversation = -1; //!< -1 = all
    QDateTime from;        //!< own time, included; null = no bound
    QDateTime to;          //!< own time, excluded; null = no bound
    QDateTime modifiedSince;
    bool unreadOnly = false;
    bool newestFirst = false;
    int limit = -1; //!< -1 = none
    int portion = 500;
};

//! A time that is absent: it is before every other.
constexpr qint64 NoTime = std::numeric_limits<qint64>::min();

//! One event as a HistoryReader gives it. Times are milliseconds since 1970 in UTC.
struct HistoryEntry
{
    int id = -1;
    Event::EventType type = Event::UnknownType;
    qint64 change = 0;
    bool isRemoved = false; //!< then only id, type and change are known
    int folder = 0;
    Event::Direction direction = Event::UnknownDirection;
    Event::Status status = Event::UnknownStatus;
    bool isRead = false;
    bool isMissedCall = false;
    int conversation = -1;
    qint64 time = NoTime; //!< own time: what orders the messages, or the calls
    qint64 startTime = NoTime;
    qint64 endTime = NoTime;
    QString remoteUid;
    QString text;
    QString token;
    QString encoding;
    QString characterSet;
    QString language;
};

//! A place in the sequence of changes of one store.
struct HistoryPosition
{
    QByteArray store;  //!< which store; empty = the beginning of any
    qint64 change = 0; //!< the last change that is known
    int lastId = 0;    //!< the last id that had been given by then

    //! The end of any, wherever it is when it is asked for.
    static HistoryPosition latest() { return {{}, std::numeric_limits<qint64>::max(), 0}; }
};

//! How many events share a key.
struct HistoryTally
{
    int number = 0;
    QString party;
    qint64 count = 0;
    qint64 unread = 0;
    qint64 first = NoTime; //!< own times
    qint64 last = NoTime;
};

//! Reads selected events in portions, the changes of a store, or how many events there are.
//!
//! One read per reader. Everything is emitted on later turns of the event loop; ended() comes
//! once, and nothing after it. While a receiver works on a portion the store reads the next one,
//! and no further. A receiver may delete the reader, which ends the read.
class KORVAPLATFORM_EXPORT HistoryReader : public QObject
{
    Q_OBJECT
public:
    enum Result {
        Done,
        NoStore,        //!< absent, or cannot be opened; the store has warned why
        ReadFailed,     //!< began, and failed; the store has warned why
        UnknownPosition //!< not one of this store
    };
    Q_ENUM(Result)
    enum Key { Folder, Year, Party };

    explicit HistoryReader(QObject *parent = nullptr);
    ~HistoryReader() override;

    //! By own time, then id.
    void read(const HistorySelection &selection);
    //! By change. Events that came and went since \a since are left out.
    void readChanges(const HistoryPosition &since, int portion);
    void count(const HistorySelection &selection, Key key);

    //! What readChanges() has reached; valid when it ended with Done.
    HistoryPosition position() const;
    //! What count() has found, by key; valid when it ended with Done.
    QList<HistoryTally> tallies() const;

Q_SIGNALS:
    void entriesRead(const QList<CommHistory::HistoryEntry> &entries);
    void ended(CommHistory::HistoryReader::Result result);

private:
    QScopedPointer<HistoryReaderPrivate> d;
};

} // namespace CommHistory

Q_DECLARE_METATYPE(CommHistory::HistoryEntry)
