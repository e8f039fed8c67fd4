// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "storetesting.h"

#include <korvasync/historyinterface.h>

#include <QtCore/QEventLoop>
#include <QtCore/QTimer>

//! What the tests of HistoryInterface on the real store share.
namespace HistoryTesting {

using namespace KorvaSyncIf;
using namespace StoreTesting;
using CommHistory::Event;

constexpr int FirstFolder = 6000; // each test has folders and numbers of its own

//! A request, waited for.
template <typename Pending>
HistoryError wait(Pending *pending)
{
    HistoryError error = pending->error();
    QEventLoop loop;
    QObject::connect(pending, &Pending::finished, &loop, [&](Pending *sender) {
        error = sender->error();
        loop.quit();
    });
    QTimer::singleShot(Patience, &loop, &QEventLoop::quit);
    loop.exec();
    return error;
}

struct Answer
{
    HistoryError error = HistoryError::None;
    QList<int> sizes; // of the portions
    QList<HistoryItem> items;

    QStringList texts() const
    {
        QStringList texts;
        for (const HistoryItem &item : items)
            texts.append(item.text);
        return texts;
    }
};

inline Answer ask(const HistoryFilter &filter)
{
    HistoryInterface history;
    Answer answer;
    PendingHistory *const pending = history.query(filter);
    QObject::connect(pending, &PendingHistory::portion, [&](const QList<HistoryItem> &items) {
        answer.sizes.append(int(items.size()));
        answer.items += items;
    });
    answer.error = wait(pending);
    return answer;
}

struct Steps
{
    HistoryError error = HistoryError::None;
    QStringList told; // "added ID", ...
    QString cursor;
    QList<int> sizes;
};

inline QString tell(const HistoryChange &change)
{
    const QString id = QString::number(change.item.id);
    switch (change.kind) {
    case HistoryChange::Kind::Added:
        return QStringLiteral("added ") + id;
    case HistoryChange::Kind::Changed:
        return QStringLiteral("changed ") + id;
    case HistoryChange::Kind::Deleted:
        break;
    }
    return QStringLiteral("deleted ") + id;
}

inline Steps follow(const QString &cursor, int portion = 500)
{
    HistoryInterface history;
    Steps steps;
    PendingChanges *const pending = history.changes(cursor, portion);
    QObject::connect(pending, &PendingChanges::portion, [&](const QList<HistoryChange> &changes) {
        steps.sizes.append(int(changes.size()));
        for (const HistoryChange &change : changes)
            steps.told.append(tell(change));
    });
    QObject::connect(pending, &PendingChanges::finished,
                     [&](PendingChanges *sender) { steps.cursor = sender->cursor(); });
    steps.error = wait(pending);
    return steps;
}

inline QList<HistoryCount> countBy(HistoryCount::By by, const HistoryFilter &filter)
{
    HistoryInterface history;
    PendingCounts *const pending = history.counts(filter, by);
    QList<HistoryCount> counts;
    QObject::connect(pending, &PendingCounts::finished,
                     [&](PendingCounts *sender) { counts = sender->counts(); });
    return wait(pending) == HistoryError::None ? counts : QList<HistoryCount>();
}

inline Event from(const QString &party, const QString &text, int folder = FirstFolder)
{
    Event event = message(text, folder);
    event.setRemoteUid(party);
    return event;
}

inline Event call(const QString &party, const QDateTime &start, int seconds)
{
    Event event;
    event.setType(Event::CallEvent);
    event.setDirection(Event::Inbound);
    event.setRemoteUid(party);
    event.setStartTime(start);
    event.setEndTime(start.addSecs(seconds));
    return event;
}

inline bool modify(const Event &event)
{
    CommHistory::EventModel model;
    Reports reports(&model);
    QList<Event> events{event};
    return model.modifyEvents(events) && reports.wait(1).value(0).status;
}

inline bool remove(const QList<int> &ids)
{
    CommHistory::EventModel model;
    Reports reports(&model);
    for (const int id : ids)
        model.deleteEvent(id);
    return reports.wait(1).value(0).status;
}

inline HistoryFilter inFolder(int folder)
{
    HistoryFilter filter;
    filter.folders = {folder};
    return filter;
}

inline QStringList numbered(const QString &word, std::initializer_list<int> numbers)
{
    QStringList texts;
    for (const int number : numbers)
        texts.append(word + QString::number(number));
    return texts;
}

} // namespace HistoryTesting
