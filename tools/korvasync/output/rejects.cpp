// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "rejects.h"

#include "terminaltext.h"

#include <QtCore/QFile>

Rejects::Rejects(const QString &path)
    : file(path)
{
}

bool Rejects::open()
{
    if (!isWanted())
        return true;
    file.setDirectWriteFallback(true); // into a device or a folder that takes no new file
    return file.open(QIODevice::WriteOnly)
        && file.setPermissions(QFile::ReadOwner | QFile::WriteOwner); // these are messages
}

void Rejects::add(const ItemResult &result, const QByteArray &message)
{
    if (!isWanted())
        return;
    const QString reason = terminalText(result.source) + QLatin1String(": ")
        + codeOf(result.refusal) + QLatin1String(": ") + reasonOf(result.refusal);
    file.write("# " + reason.toUtf8() + "\r\n" + message);
    if (!message.isEmpty() && !message.endsWith('\n'))
        file.write("\r\n");
}

bool Rejects::commit() { return !isWanted() || file.commit(); }
