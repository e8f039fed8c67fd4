// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// A process of its own on the store of KORVASYNC_STORE, for the tests that need several,
// kill one or take rights away from it. Prints one word or line for each outcome.

#include "storetesting.h"

#include <commhistory/callmodel.h>
#include <commhistory/trackerio.h>
#include <sparql/qsparqlconnection.h>
#include <sparql/qsparqlresult.h>

#include <store/storeupgrade.h>

#include <QtCore/QDeadlineTimer>
#include <QtCore/QTextStream>

#include <cstdio>

using namespace CommHistory;
using namespace StoreTesting;

namespace {

//! Prints "refused", "failed" (nothing came of the read) or the number of messages, then
//! each one's id and text.
int list()
{
    QTextStream out(stdout);
    SyncSMSModel model(Inbox, QDateTime(), false);
    QSignalSpy ready(&model, &SyncSMSModel::modelReady);
    if (!model.getEvents()) {
        out << "refused\n";
        return 1;
    }
    // Requests are carried out in order: when this one is answered, so is the read.
    Event event;
    TrackerIO::instance()->getEvent(1, event);
    QCoreApplication::processEvents();
    if (ready.isEmpty()) {
        out << "failed\n";
        return 1;
    }
    out << model.rowCount() << "\n";
    for (const Event &read : eventsOf(model))
        out << read.id() << " " << read.freeText() << "\n";
    return 0;
}

QString lineOf(const Event &event)
{
    const auto time = [](const QDateTime &time) {
        return time.isNull() ? QStringLiteral("none") : time.toUTC().toString(Qt::ISODateWithMs);
    };
    QStringList fields;
    for (const int number :
         {event.id(), int(event.type()), event.parentId(), int(event.direction()),
          int(event.status()), int(event.isRead()), int(event.isMissedCall()), event.groupId()})
        fields.append(QString::number(number));
    fields << time(event.startTime()) << time(event.endTime()) << event.localUid()
           << event.remoteUid() << event.messageToken() << event.encoding() << event.characterSet()
           << event.language() << event.freeText();
    QString line = fields.join(QLatin1Char('|'));
    return line.replace(QLatin1Char('\n'), QStringLiteral("\\n"));
}

//! Prints all fields of all messages and calls, but for the times of modification.
int dump()
{
    QTextStream out(stdout);
    CallModel calls;
    calls.setFilter(CallModel::SortByTime, CallEvent::AllCalls, QDateTime());
    QSignalSpy ready(&calls, &CallModel::modelReady);
    if (!calls.getEvents() || !ready.wait(Patience)) {
        out << "refused\n";
        return 1;
    }
    for (const int folder : {0, 4098, 4099, 4100, 4101, 4102, 4103, 4104}) {
        for (const Event &event : read(folder))
            out << lineOf(event) << "\n";
    }
    for (const Event &event : eventsOf(calls))
        out << lineOf(event) << "\n";
    return 0;
}

//! Adds a message behind a read.
int readAndAdd()
{
    Event event;
    std::puts(TrackerIO::instance()->getEvent(1, event) ? "read" : "not read");
    const QList<int> ids = add(messages(1));
    std::printf("%d\n", ids.value(0, -1));
    return 0;
}

//! Asks for an event at each line of its input.
int readAtEachLine()
{
    while (std::getchar() == '\n') {
        Event event;
        std::puts(TrackerIO::instance()->getEvent(1, event) ? "read" : "not read");
        std::fflush(stdout);
    }
    return 0;
}

//! Adds a message, and looks meanwhile whether the store is brought up to date.
int watchUpgrade()
{
    EventModel model;
    Reports reports(&model);
    QList<Event> events = messages(1);
    model.addEvents(events, false);
    bool isSeen = false;
    for (const QDeadlineTimer deadline(Patience); reports.waiting() == 0 && !deadline.hasExpired();
         QCoreApplication::processEvents())
        isSeen = isSeen || isStoreBeingUpgraded();
    std::puts(isSeen ? "seen" : "not seen");
    std::puts(isStoreBeingUpgraded() ? "going on" : "over");
    return 0;
}

//! Asks for the messages over and over and prints how often that was refused.
int countRefused(int count)
{
    int refused = 0;
    for (int i = 0; i < count; ++i) {
        SyncSMSModel model(Inbox, QDateTime(), false);
        if (!model.getEvents())
            ++refused;
    }
    std::printf("%d\n", refused);
    return 0;
}

//! Adds messages, a hundred a request, and prints each id as soon as it is reported.
int addAndPrint(int count, const QString &text)
{
    EventModel model;
    Reports reports(&model);
    for (int done = 0; done < count; done += 100) {
        QList<Event> events = messages(qMin(100, count - done), text + QString::number(done));
        model.addEvents(events, false);
        const QList<Report> report = reports.wait(1);
        if (report.isEmpty() || !report.first().status) {
            std::puts(report.isEmpty() ? "silent" : "failed");
            return 1;
        }
        for (const Event &event : report.first().events)
            std::printf("%d %s\n", event.id(), qPrintable(event.freeText()));
        std::fflush(stdout);
    }
    return 0;
}

//! Deletes a message through a model that is gone at once, and stays until its input ends.
int removeAndStay(int id)
{
    EventModel().deleteEvent(id);
    std::puts("asked");
    std::fflush(stdout);
    std::getchar();
    return 0;
}

//! Adds a message and asks for the messages at once, before the store was opened.
int readBehindAWrite()
{
    EventModel model;
    Reports reports(&model);
    QList<Event> events = messages(1);
    model.addEvents(events, false);
    SyncSMSModel reader(Inbox, QDateTime(), false);
    std::puts(reader.getEvents() ? "taken" : "refused");
    std::fflush(stdout);
    const QList<Report> report = reports.wait(1);
    std::puts(!report.isEmpty() && report.first().status ? "added" : "failed");
    return 0;
}

//! Leaves the process while the messages are still to be written.
int addAndLeave(int count)
{
    EventModel model;
    QList<Event> events = messages(count);
    model.addEvents(events, false);
    return 0;
}

//! Adds, modifies and deletes over and over, and looks whether the store agrees.
int churn(int rounds)
{
    EventModel model;
    Reports reports(&model);
    for (int round = 0; round < rounds; ++round) {
        const QList<int> ids = add(messages(10));
        Event change;
        change.setId(ids.value(9, -1));
        change.setFreeText(QString::number(round));
        QList<Event> changes{change};
        model.modifyEvents(changes);
        for (int i = 0; i < 9; ++i)
            model.deleteEvent(ids.value(i, -1));
        const QList<Report> got = reports.wait(2);
        Event kept;
        Event removed;
        if (ids.size() != 10 || got.size() != 2 || !got[0].status || !got[1].status
            || got[1].events.size() != 9 || TrackerIO::instance()->getEvent(ids[0], removed)
            || !TrackerIO::instance()->getEvent(ids[9], kept)
            || kept.freeText() != QString::number(round)) {
            std::printf("failed in round %d\n", round);
            return 1;
        }
    }
    std::puts("agreed");
    return 0;
}

//! Adds conversations with the same parties as every other process that does so.
int addConversations(int count)
{
    GroupModel model;
    QSignalSpy committed(&model, &GroupModel::groupsCommitted);
    for (int i = 0; i < count; ++i) {
        Group group;
        group.setLocalUid(QStringLiteral("account"));
        group.setRemoteUids({QString::number(5550100 + i)});
        QList<Group> groups{group};
        model.addGroups(groups);
        if (!committed.wait(Patience) || !committed.first().at(1).toBool()) {
            std::puts("failed");
            return 1;
        }
        std::printf("%d %d\n", i, committed.takeFirst().at(0).value<QList<int>>().first());
    }
    return 0;
}

//! Prints what a query of the conversations gives.
int lookUp()
{
    QSparqlConnection connection(QStringLiteral("QTRACKER_DIRECT"));
    const QScopedPointer<QSparqlResult> result(connection.exec(
        QSparqlQuery(QStringLiteral("SELECT ?c { ?c a nmo:CommunicationChannel }"))));
    std::puts(result ? "a result" : "no result");
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    const QString verb = arguments.value(1);
    const int count = arguments.value(2).toInt();
    if (verb == QLatin1String("list"))
        return list();
    if (verb == QLatin1String("add"))
        return addAndPrint(count, arguments.value(3, QStringLiteral("text")));
    if (verb == QLatin1String("add-and-leave"))
        return addAndLeave(count);
    if (verb == QLatin1String("add-conversations"))
        return addConversations(count);
    if (verb == QLatin1String("remove-and-stay"))
        return removeAndStay(count);
    if (verb == QLatin1String("churn"))
        return churn(count);
    if (verb == QLatin1String("count-refused"))
        return countRefused(count);
    if (verb == QLatin1String("read-behind-a-write"))
        return readBehindAWrite();
    if (verb == QLatin1String("dump"))
        return dump();
    if (verb == QLatin1String("read-and-add"))
        return readAndAdd();
    if (verb == QLatin1String("read-at-each-line"))
        return readAtEachLine();
    if (verb == QLatin1String("watch-upgrade"))
        return watchUpgrade();
    if (verb == QLatin1String("look-up"))
        return lookUp();
    return 2;
}
