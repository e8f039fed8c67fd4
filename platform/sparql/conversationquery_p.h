// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QString>

#include <optional>

//! What the conversation query asks, by which the library looks conversations up.
struct ConversationQuery
{
    QString account;
    QString party;      //!< as it was pasted into the query
    QString expression; //!< what the query makes of it; null when it is not looked for
};

//! What \a text asks; nothing when it is not the conversation query. The party may be anything
//! that a message file gives for a number, as long as it likes. It has no expression when the
//! query would not be well-formed with it, nor when it is longer than a name or has signs that
//! group, choose or repeat, with which a match can take for ever.
std::optional<ConversationQuery> readConversationQuery(const QString &text);
