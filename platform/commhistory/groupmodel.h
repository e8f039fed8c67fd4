// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <commhistory/group.h>
#include <platformexport.h>

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QScopedPointer>

namespace CommHistory {

class GroupModelPrivate;

//! The way to write conversations.
class KORVAPLATFORM_EXPORT GroupModel : public QObject
{
    Q_OBJECT
public:
    explicit GroupModel(QObject *parent = nullptr);
    ~GroupModel() override;

    //! Has no effect: this platform has no address book. A phone's own model follows it.
    void enableContactChanges(bool enabled);

    //! Adds the conversations in order. One that exists already, with the same local uid and remote
    //! uids, is reported with the id it has. The reports are those of EventModel::addEvents().
    //! \param groups  not changed
    //! \return true: the request was taken
    bool addGroups(QList<Group> &groups);

Q_SIGNALS:
    //! \param groupIds  database ids in the order of the request; of a failure, none
    //! \param status    whether they are on the disk
    void groupsCommitted(QList<int> groupIds, bool status);

private:
    QScopedPointer<GroupModelPrivate> d;
};

} // namespace CommHistory
