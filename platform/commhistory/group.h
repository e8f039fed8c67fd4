// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <platformexport.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace CommHistory {

//! One conversation: the account it goes through and the parties at the other end.
class KORVAPLATFORM_EXPORT Group
{
public:
    int id() const { return m_id; } //!< database id, -1 = not stored yet
    QString localUid() const { return m_localUid; }
    QStringList remoteUids() const { return m_remoteUids; }

    void setId(int id) { m_id = id; }
    void setLocalUid(const QString &uid) { m_localUid = uid; }
    void setRemoteUids(const QStringList &uids) { m_remoteUids = uids; }

private:
    int m_id = -1;
    QString m_localUid;
    QStringList m_remoteUids;
};

} // namespace CommHistory
