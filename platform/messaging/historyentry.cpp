// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "historyentry_p.h"

#include <commhistory/phonenumber.h>

using CommHistory::Event;

namespace {

//! What numbers are compared by, so that the national and the international form of one
//! number share a conversation.
QString comparableNumber(const QString &number)
{
    const QString digits =
        CommHistory::normalizePhoneNumber(number, CommHistory::NormalizeFlagRemovePunctuation);
    return digits.isEmpty() ? number : digits.right(CommHistory::phoneNumberMatchLength());
}

} // namespace

HistoryEntry::HistoryEntry(const QString &number, const QString &text, CommHistory::Folder folder,
                           QObject *parent)
    : QObject(parent)
{
    const QDateTime now = QDateTime::currentDateTime();
    m_event.setType(Event::SmsEvent);
    m_event.setParentId(int(folder));
    m_event.setDirection(Event::Outbound);
    m_event.setStatus(folder == CommHistory::SentFolder ? Event::SentStatus : Event::FailedStatus);
    m_event.setLocalUid(QStringLiteral("/org/freedesktop/Telepathy/Account/ring/tel/ring"));
    m_event.setRemoteUid(number);
    m_event.setFreeText(text);
    m_event.setStartTime(now);
    m_event.setEndTime(now);
    m_event.setIsRead(true);

    connect(&m_conversations, &CommHistory::GroupModel::groupsCommitted, this,
            [this](const QList<int> &ids, bool status) {
                if (status)
                    writeEvent(ids.value(0));
                else
                    Q_EMIT written(false);
            });
    connect(&m_events, &CommHistory::EventModel::eventsCommitted, this,
            [this](const QList<Event> &, bool status) { Q_EMIT written(status); });
}

void HistoryEntry::write()
{
    // One that is there already is found by these two.
    CommHistory::Group conversation;
    conversation.setLocalUid(m_event.localUid());
    conversation.setRemoteUids({comparableNumber(m_event.remoteUid())});
    QList<CommHistory::Group> conversations{conversation};
    m_conversations.addGroups(conversations);
}

void HistoryEntry::writeEvent(int groupId)
{
    m_event.setGroupId(groupId);
    QList<Event> events{m_event};
    m_events.addEvents(events, false);
}

#include "moc_historyentry_p.cpp"
