// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "headerwords.h"

#include "vmessagelines.h"

#include <string_view>

namespace HeaderWords {

//! Also false for an absent text.
static bool is(const char *text, std::string_view word)
{
    return text && VMessageLines::equals(text, word);
}

// By the first letters: DRAFT and DRAFTS, SENT and SENTBOX. SENDBOX is what backup programs of
// touch phones call the sent folder.
static Folder folderOfBox(std::string_view box)
{
    static constexpr struct
    {
        std::string_view word;
        Folder folder = NoFolder;
    } boxes[] = {{"INBOX", Inbox}, {"DRAFT", Drafts}, {"OUTBOX", Outbox},
                 {"SENT", Sent},   {"SENDBOX", Sent}, {"MYFOLDER", MyFolder}};
    for (const auto &entry : boxes) {
        if (VMessageLines::startsWith(box, entry.word))
            return entry.folder;
    }
    return NoFolder;
}

Folder folderOf(const VMessageHeader &header)
{
    if (const Folder folder = header.box ? folderOfBox(header.box) : NoFolder)
        return folder;
    if (is(header.status, "DRAFT"))
        return Drafts;
    if (is(header.messageType, "DELIVER") || is(header.messageType, "1"))
        return Inbox;
    if (is(header.messageType, "SUBMIT") || is(header.messageType, "2")
        || is(header.status, "SENT"))
        return Sent;
    return NoFolder;
}

ReadStatus readStatusOf(const char *status)
{
    if (is(status, "READ") || is(status, "1"))
        return ReadStatus::Read;
    if (is(status, "UNREAD") || is(status, "0"))
        return ReadStatus::Unread;
    return ReadStatus::Unknown;
}

} // namespace HeaderWords
