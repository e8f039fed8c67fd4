// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "adding.h"
#include "formats/callentry.h"
#include "store/callwriter.h"

//! Calls as what "korvasync calls add" adds; see Adding.
class AddableCalls
{
public:
    using New = NewCall;
    static constexpr Refusal noItem = Refusal::CallParse;

    //! \param localZone  where times without a zone are meant
    AddableCalls(const Invocation &invocation, const QTimeZone &localZone, DuplicateIndex &index);

    Answer readStore();
    Judged<NewCall> judge(const InputItem &item) const;
    Answer probe() { return store.probe(); }
    Answer add(QList<NewCall> &calls) { return writer.add(calls); }
    static Refusal notStored(const NewCall &) { return Refusal::CallStore; }

    DuplicateIndex &index;

private:
    CallEntry::Parsed parse(const InputItem &item) const;

    const QTimeZone localZone;
    const QDateTime now;
    CallStore store;
    CallWriter writer;
};
