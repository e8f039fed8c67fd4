// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <korvasync/pendingstatus.h>

namespace KorvaSyncIf {

//! Result of adding messages: a PendingStatus with the new database ids. Its life and its failures
//! are those of PendingStatus.
class KORVASYNC_EXPORT PendingIds : public PendingStatus
{
    Q_OBJECT
public:
    //! \param count  items in the caller's request
    PendingIds(int count, QObject *parent);
    ~PendingIds() override;

    //! Hands the messages to the store. The facade calls it, once. An empty list sets isError().
    //! \param smsInfos  records with their reference indexes in SmsInfo::refId
    void store(const QList<SmsInfo> &smsInfos);

    //! Database ids by reference index, complete in the slots of finished(). -1 = not stored, or
    //! not known to be stored. For an empty request one -1.
    QList<int> ids();
};

} // namespace KorvaSyncIf
