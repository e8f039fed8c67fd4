// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "text.h"

#include <QtCore/QString>

#include <string_view>

//! Why an item was not done. The order is of no meaning.
enum class RejectReason {
    None,
    SmsParse,
    SmsDraft,
    SmsNoNumber,
    SmsBadId,
    SmsNoFolder,
    SmsNoFolderToReplace,
    SmsStore,
    SmsDelete,
    SmsChanged,
    CallParse,
    CallType,
    CallStore,
    BadTime,
    BadCallTime,
    Duplicate,
    TooManyRecipients,
    MmsNotSupported,
    ForeignObject,
    Unreadable
};

//! The word that results carry, such as "sms-no-number"; empty for None.
QString codeOf(RejectReason rejectReason);
//! The same in words, as the end of a sentence.
Reason reasonOf(RejectReason rejectReason);
//! For SmsParse instead: what is wrong with a vMessage that cannot be parsed, and in which line.
//! \param firstLine  of the message in its file
Reason parseErrorIn(const QByteArray &vMessage, quint64 firstLine);

//! The line without its end that a file of rejects has in front of an item.
QByteArray reasonLine(const QString &source, RejectReason rejectReason, const QString &reason);
//! Whether a line, or its long enough start, is such a line.
bool isReasonLine(std::string_view line);
