// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "input/itemreader.h"
#include "model/normalising.h"
#include "newitem.h"

#include <QtCore/QFlags>

//! Makes messages and calls of what was read, or says why it is none that a command takes.
class ItemJudge
{
public:
    enum Accept {
        Messages = 1,
        BackupCalls = 2, //!< of Android
        CallEntries = 4
    };
    Q_DECLARE_FLAGS(Accepted, Accept)

    //! \param rules  for calls as well, of which they concern the zone and the clock
    ItemJudge(Accepted accepted, const NormalisingRules &rules)
        : m_accepted(accepted)
        , m_rules(rules)
    {
    }

    bool accepts(Accept what) const { return m_accepted.testFlag(what); }
    //! Whether it is read as a call, be it refused or not.
    bool isCall(const InputItem &input) const;

    //! The item with its content, or with the reason why it is refused.
    NewItem judge(const InputItem &input) const;

    //! What a file that has no item is called.
    RejectReason noItem() const
    {
        return accepts(Messages) ? RejectReason::SmsParse : RejectReason::CallParse;
    }

    //! Under which a message is found in the store: its own fingerprint first, and where messages
    //! may get the time of the clock, last the one that it has at any time.
    NewItem::Fingerprints fingerprintsOf(int folder, const QString &number, const QDateTime &time,
                                         const QString &body) const;

private:
    void takeMessage(const InputItem &input, NewItem &item) const;
    void identify(const NormalisedMessage &normalised, bool isOfBackup, NewItem &item) const;
    void takeCall(const InputItem &input, NewItem &item) const;
    void refuseObject(const InputItem &input, NewItem &item) const;

    const Accepted m_accepted;
    const NormalisingRules m_rules;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(ItemJudge::Accepted)
