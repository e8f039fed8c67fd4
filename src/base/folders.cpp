// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "folders.h"

#include <korvasync/syncrecords.h>

namespace KorvaSyncIf {

int folderOfBox(const QString &box, Qt::CaseSensitivity letters)
{
    static const struct
    {
        QLatin1String word;
        LocationId folder = LocInbox;
    } boxes[] = {
        {QLatin1String("INBOX"), LocInbox},       {QLatin1String("DRAFT"), LocDrafts},
        {QLatin1String("OUTBOX"), LocOutbox},     {QLatin1String("SENT"), LocSent},
        {QLatin1String("MYFOLDER"), LocMyFolder},
    };
    for (const auto &entry : boxes) {
        if (box.startsWith(entry.word, letters))
            return entry.folder;
    }
    return 0;
}

bool isOutboundFolder(int folder)
{
    return folder == LocOutbox || folder == LocDrafts || folder == LocSent;
}

} // namespace KorvaSyncIf
