// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <commhistory/event.h>
#include <commhistory/group.h>
#include <commhistory/historyreader.h>

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QObject>
#include <QtCore/QSet>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <atomic>
#include <functional>

//! What the library asks of the store and can be given a scripted reaction.
enum class Request {
    ReadMessages,
    ReadCalls,
    ReadHistory,
    AddEvents,
    ModifyEvents,
    DeleteEvents,
    AddGroups
};

//! One report of a write: the ids that it names, and its status. A read takes no ids.
struct Report
{
    QList<int> ids;
    bool status = true;
};

//! What comes of one request.
struct Reaction
{
    enum Timing {
        NextTurn,    //!< reports come on a later turn of the event loop
        AtOnce,      //!< reports come inside the call
        WhenReleased //!< reports come inside ScriptedStore::release()
    };

    bool taken = true; //!< false: the call answers false
    QList<Report> reports;
    Timing timing = NextTurn;

    static Reaction refused() { return {false, {}, NextTurn}; }
    static Reaction silent() { return {true, {}, NextTurn}; }
    static Reaction failed() { return {true, {{{}, false}}, NextTurn}; }
    static Reaction reporting(const QList<Report> &reports, Timing timing = NextTurn)
    {
        return {true, reports, timing};
    }
};

//! The store behind the scripted platform: what it holds, how it reacts, and what it was
//! asked. One exists at a time; a test makes its own before it makes anything that uses it.
//!
//! A request for which nothing is scripted is taken and reported as a whole, with status
//! true, on a later turn of the event loop: new events get the ids 101, 102, ..., new
//! conversations 201, 202, ...
class ScriptedStore
{
public:
    ScriptedStore();
    ~ScriptedStore();

    // ---- script

    QList<CommHistory::Event> messageRows; //!< rows of every read of messages
    QList<CommHistory::Event> callRows;    //!< rows of every read of calls
    QMap<int, CommHistory::Event> eventsById;
    QList<QList<CommHistory::HistoryEntry>> historyPortions; //!< of every read by a HistoryReader
    QList<CommHistory::HistoryTally> historyTallies;
    CommHistory::HistoryPosition historyPosition; //!< what every read of changes reaches
    CommHistory::HistoryReader::Result historyFailure = CommHistory::HistoryReader::ReadFailed;
    //! First column of the rows that the query for a number gives; no rows for others.
    QHash<QString, QStringList> conversations;
    QSet<QString> unanswered;      //!< numbers whose query gives no result object
    bool callsCanBeDeleted = true; //!< answer to CallModel::deleteAll()
    std::atomic<bool> isBeingUpgraded{false};

    //! Lets the next request of the kind be answered so; several wait in a queue.
    void react(Request request, const Reaction &reaction);
    //! Delivers the oldest of the reports that wait for it.
    void release();
    //! Makes the store know a conversation with the number, which ends in \a tail.
    void knowConversation(const QString &tail, int id)
    {
        conversations.insert(tail, {QStringLiteral("conversation:%1").arg(id)});
    }

    // ---- record

    QStringList calls; //!< every call of the platform, in order
    QList<CommHistory::Event> addedEvents;
    QList<CommHistory::Event> modifiedEvents;
    QList<CommHistory::Group> addedGroups;
    QStringList queries; //!< texts of the queries

    // ---- for the platform's classes

    static ScriptedStore *current();
    static void record(const QString &call);
    //! As times are recorded: in UTC, so that the record does not depend on the time zone.
    static QString timeText(const QDateTime &time);

    //! Starts what comes of a request and tells whether it is taken. \a requested are the
    //! ids that its report names when nothing is scripted; \a deliver runs once a report,
    //! unless \a model is gone by then.
    bool start(Request request, const QList<int> &requested, QObject *model,
               const std::function<void(const Report &)> &deliver);
    QList<int> newEventIds(int count) { return newIds(lastEventId, count); }
    QList<int> newGroupIds(int count) { return newIds(lastGroupId, count); }

private:
    Q_DISABLE_COPY(ScriptedStore)
    static QList<int> newIds(int &last, int count);

    QMap<Request, QList<Reaction>> reactions;
    QList<std::function<void()>> waiting;
    int lastEventId = 100;
    int lastGroupId = 200;
};
