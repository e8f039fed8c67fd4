// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "model/storedmessage.h"
#include "process/standardoutput.h"

#include <QtCore/QList>

//! Messages as a mailbox for mail programs (RFC 4155), one mail a message.
namespace Mailbox {

//! A number is no mail address: it is the name beside an address in a domain that cannot
//! exist. A mail answers the first one with the same party.
void print(const QList<StoredMessage> &messages, StandardOutput &output);

} // namespace Mailbox
