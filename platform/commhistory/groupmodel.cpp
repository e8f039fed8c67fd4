// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "groupmodel.h"

#include "historywriting_p.h"
#include "mailbox_p.h"

#include <store/store.h>

namespace CommHistory {

class GroupModelPrivate
{
public:
    explicit GroupModelPrivate(GroupModel *model)
        : mailbox(std::make_shared<Mailbox>(model))
    {
    }
    ~GroupModelPrivate() { mailbox->close(); }

    MailboxPointer mailbox;
};

GroupModel::GroupModel(QObject *parent)
    : QObject(parent)
    , d(new GroupModelPrivate(this))
{
    // So that the reports can be connected by name across threads.
    qRegisterMetaType<QList<int>>("QList<int>");
}

GroupModel::~GroupModel() = default;

void GroupModel::enableContactChanges(bool) { }

bool GroupModel::addGroups(QList<Group> &groups)
{
    const auto report = [this, mailbox = d->mailbox](const QList<int> &ids, bool status) {
        mailbox->post([=] { Q_EMIT groupsCommitted(ids, status); });
    };
    Store::instance().post(Store::Access::Write, [groups, report](StoreConnection *connection) {
        writeInPortions(groups, [&](const QList<Group> &portion) {
            QList<int> ids;
            const bool status =
                portion.isEmpty() || (connection && addConversations(*connection, portion, &ids));
            report(ids, status);
            return status;
        });
    });
    return true;
}

} // namespace CommHistory

#include "moc_groupmodel.cpp"
