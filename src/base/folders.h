// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

namespace KorvaSyncIf {

//! Whether the other party of the folder's messages is the one they went to.
bool isOutboundFolder(int folder);

} // namespace KorvaSyncIf
