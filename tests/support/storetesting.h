// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <commhistory/eventmodel.h>
#include <commhistory/groupmodel.h>
#include <commhistory/syncsmsmodel.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

// What the tests of the real store share.

//! Runs the test class on a store of its own in a temporary directory, which does not
//! exist at the start.
#define STORE_TEST_MAIN(TestClass)                                                                 \
    int main(int argc, char *argv[])                                                               \
    {                                                                                              \
        const QTemporaryDir directory;                                                             \
        qputenv("KORVASYNC_STORE",                                                                 \
                QFile::encodeName(directory.filePath(QStringLiteral("store"))));                   \
        QCoreApplication application(argc, argv);                                                  \
        TestClass test;                                                                            \
        return QTest::qExec(&test, argc, argv);                                                    \
    }

namespace StoreTesting {

constexpr int Patience = 60000; //!< milliseconds that a report may take at most, on a busy machine
constexpr int Inbox = 4098;
constexpr int Outbox = 4099;
constexpr int Sent = 4101;

inline QDateTime utc(int year, int month, int day, int hour = 0, int minute = 0, int second = 0)
{
    return QDateTime(QDate(year, month, day), QTime(hour, minute, second), Qt::UTC);
}

inline CommHistory::Event message(const QString &text, int folder = Inbox,
                                  const QDateTime &time = utc(2026, 3, 1, 12))
{
    CommHistory::Event event;
    event.setType(CommHistory::Event::SmsEvent);
    event.setParentId(folder);
    event.setDirection(folder == Inbox ? CommHistory::Event::Inbound
                                       : CommHistory::Event::Outbound);
    event.setRemoteUid(QStringLiteral("+15550100"));
    event.setStartTime(time);
    event.setEndTime(time);
    event.setFreeText(text);
    return event;
}

inline QList<CommHistory::Event> messages(int count, const QString &text = QStringLiteral("text"),
                                          int folder = Inbox)
{
    QList<CommHistory::Event> events;
    for (int i = 0; i < count; ++i)
        events.append(message(text + QString::number(i), folder));
    return events;
}

//! One report of a model.
struct Report
{
    QList<CommHistory::Event> events;
    bool status;
    QList<int> ids() const
    {
        QList<int> ids;
        for (const CommHistory::Event &event : events)
            ids.append(event.id());
        return ids;
    }
};

//! The reports of a model, in order.
class Reports
{
public:
    explicit Reports(CommHistory::EventModel *model)
        : m_spy(model, &CommHistory::EventModel::eventsCommitted)
    {
    }

    //! Waits for the next \a count reports. Fewer when they do not come in time.
    QList<Report> wait(int count)
    {
        while (m_spy.count() < count && m_spy.wait(Patience)) { }
        QList<Report> reports;
        while (!m_spy.isEmpty() && reports.size() < count) {
            const QList<QVariant> arguments = m_spy.takeFirst();
            reports.append(
                {arguments.at(0).value<QList<CommHistory::Event>>(), arguments.at(1).toBool()});
        }
        return reports;
    }
    int waiting() const { return int(m_spy.count()); }

private:
    QSignalSpy m_spy;
};

//! Adds the events and returns the ids that the store gave; empty when it failed.
inline QList<int> add(QList<CommHistory::Event> events)
{
    CommHistory::EventModel model;
    Reports reports(&model);
    if (!model.addEvents(events, false))
        return {};
    QList<int> ids;
    do {
        const QList<Report> next = reports.wait(1);
        if (next.isEmpty() || !next.first().status)
            return {};
        ids += next.first().ids();
    } while (ids.size() < events.size());
    return ids;
}

//! A store comes to be by the first write.
inline bool makeStore() { return !add(messages(1, QStringLiteral("first"), 1)).isEmpty(); }

inline QList<CommHistory::Event> eventsOf(const CommHistory::EventModel &model)
{
    QList<CommHistory::Event> events;
    for (int row = 0; row < model.rowCount(); ++row)
        events.append(model.event(model.index(row, 0)));
    return events;
}

//! The messages of a folder, through a model of its own.
inline QList<CommHistory::Event> read(int folder, const QDateTime &since = QDateTime(),
                                      bool modified = false)
{
    CommHistory::SyncSMSModel model(folder, since, modified);
    QSignalSpy ready(&model, &CommHistory::SyncSMSModel::modelReady);
    if (!model.getEvents() || !ready.wait(Patience))
        return {};
    return eventsOf(model);
}

//! Database id of the message with this text; -1 when the folder has none.
inline int idIn(int folder, const QString &text)
{
    for (const CommHistory::Event &event : read(folder)) {
        if (event.freeText() == text)
            return event.id();
    }
    return -1;
}

} // namespace StoreTesting
