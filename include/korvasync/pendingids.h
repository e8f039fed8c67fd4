// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <korvasync/pendingstatus.h>

namespace KorvaSyncIf {

//! Result of adding messages: a PendingStatus that also has the new database ids.
class KORVASYNC_EXPORT PendingIds : public PendingStatus
{
    Q_OBJECT
public:
    //! \param count  items in the caller's request
    PendingIds(int count, QObject *parent);
    ~PendingIds() override;

    //! Hands the messages to the store; the facade calls it once.
    void store(const QList<SmsInfo> &smsInfos);

    QList<int> ids(); //!< database ids by reference index, -1 = not stored
};

} // namespace KorvaSyncIf
