// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <commhistory/eventmodel.h>
#include <commhistory/folder.h>
#include <commhistory/groupmodel.h>

#include <QtCore/QObject>
#include <QtCore/QString>

//! Puts one outgoing message into the store, in the conversation with its recipient.
class HistoryEntry : public QObject
{
    Q_OBJECT
public:
    //! \param number, text  are stored as they are
    HistoryEntry(const QString &number, const QString &text, CommHistory::Folder folder,
                 QObject *parent);

    void write();

Q_SIGNALS:
    //! Once, on a later turn of the event loop. With false the store has warned.
    void written(bool isStored);

private:
    void writeEvent(int groupId);

    CommHistory::GroupModel m_conversations;
    CommHistory::EventModel m_events;
    CommHistory::Event m_event;
};
