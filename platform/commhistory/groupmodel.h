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

    //! Whether the model follows address-book changes.
    void enableContactChanges(bool enabled);

    //! Adds the conversations in order. One that exists already, with the same local
    //! uid and remote uids, is reported with the id it has. Reports as for
    //! EventModel::addEvents(); true means that the request was taken.
    bool addGroups(QList<Group> &groups);

Q_SIGNALS:
    void groupsCommitted(QList<int> groupIds, bool status);

private:
    QScopedPointer<GroupModelPrivate> d;
};

} // namespace CommHistory
