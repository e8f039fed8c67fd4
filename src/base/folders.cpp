// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "folders.h"

#include <korvasync/syncrecords.h>

namespace KorvaSyncIf {

bool isOutboundFolder(int folder)
{
    return folder == LocOutbox || folder == LocDrafts || folder == LocSent;
}

} // namespace KorvaSyncIf
