// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "adding.h"
#include "calls/callreader.h"
#include "store/callwriter.h"

//! Calls as what "korvasync calls add" adds; see Adding.
class AddableCalls
{
public:
    using Reader = CallReader;
    using New = NewCall;
    static constexpr Refusal notStored = Refusal::CallStore;

    explicit AddableCalls(const Invocation &invocation);

    Answer readStore();
    Judged<NewCall> judge(const QByteArray &entry) const;
    static Refusal judgeFile(const QByteArray &) { return Refusal::CallParse; }
    Answer add(QList<NewCall> &calls) { return writer.add(calls); }

    DuplicateIndex index;

private:
    const QTimeZone localZone;
    const QDateTime now;
    CallStore store;
    CallWriter writer;
};
