// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "vmessageparser.h"

#include <platformexport.h>

// What the words in the header of a message mean, in every spelling that programs use. Upper and
// lower case are the same.
namespace HeaderWords {

//! The folders that headers name, as their ids in the store.
enum Folder : int {
    NoFolder = 0,
    Inbox = 4098,
    Outbox = 4099,
    Drafts = 4100,
    Sent = 4101,
    MyFolder = 4104
};

//! By the box. Where no box is known, the status tells the folder, or the direction.
KORVAPLATFORM_EXPORT Folder folderOf(const VMessageHeader &header);

enum class ReadStatus { Unknown, Unread, Read };

//! \param status  null if absent
KORVAPLATFORM_EXPORT ReadStatus readStatusOf(const char *status);

} // namespace HeaderWords
