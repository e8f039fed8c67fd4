// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "folder.h"

namespace Folder {

using namespace KorvaSyncIf;

const QList<LocationId> &all()
{
    static const QList<LocationId> folders{LocInbox, LocOutbox, LocDrafts, LocSent, LocMyFolder};
    return folders;
}

QString name(int folder)
{
    switch (folder) {
    case LocInbox:
        return QStringLiteral("inbox");
    case LocOutbox:
        return QStringLiteral("outbox");
    case LocDrafts:
        return QStringLiteral("drafts");
    case LocSent:
        return QStringLiteral("sent");
    case LocMyFolder:
        return QStringLiteral("my");
    }
    return QString();
}

std::optional<LocationId> byName(const QString &wanted)
{
    for (const LocationId folder : all()) {
        if (name(folder) == wanted)
            return folder;
    }
    return std::nullopt;
}

bool isOutbound(int folder)
{
    return folder == LocOutbox || folder == LocDrafts || folder == LocSent;
}

} // namespace Folder
