// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "shared/parsedmessage.h"

namespace SmsElement {

//! The message of an "sms" element; nothing when the element is not whole or has no text.
std::optional<ParsedMessage> parse(const QByteArray &element);

} // namespace SmsElement
