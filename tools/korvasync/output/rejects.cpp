// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "rejects.h"

#include "terminaltext.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>

Rejects::Rejects(const QString &path)
    : file(std::make_unique<QSaveFile>(path))
{
}

bool Rejects::open()
{
    if (!isWanted())
        return true;
    const QFileInfo present(file->fileName());
    if (present.exists() && !present.isFile()) { // a device or a pipe, not to be replaced
        file = std::make_unique<QFile>(file->fileName());
        return file->open(QIODevice::WriteOnly | QIODevice::ExistingOnly);
    }
    return file->open(QIODevice::WriteOnly)
        && file->setPermissions(QFile::ReadOwner | QFile::WriteOwner); // these are messages
}

void Rejects::add(const ItemResult &result, const QByteArray &message)
{
    if (!isWanted())
        return;
    write(reasonLine(terminalText(result.source), result.refusal,
                     terminalText(result.reason().english))
          + "\r\n" + message);
    // A bare line feed could be one of a text that was cut, which the next reason would go on.
    const bool isClosed = message.isEmpty() || message.endsWith("\r\n")
        || (message.endsWith('\n') && !message.contains("\r\n"));
    if (!isClosed)
        write("\r\n");
}

void Rejects::keep(const QByteArray &leftovers)
{
    if (isWanted())
        write(leftovers.endsWith('\n') ? leftovers : leftovers + "\r\n");
}

// What a full disk takes of the bytes counts as success; only the rest fails.
void Rejects::write(const QByteArray &bytes)
{
    qint64 written = 0;
    while (written < bytes.size() && isWhole) {
        const qint64 count = file->write(bytes.constData() + written, bytes.size() - written);
        isWhole = count > 0;
        written += count;
    }
}

bool Rejects::commit()
{
    if (!isWanted())
        return true;
    // A save file that is committed forgets what failed to reach the disk.
    if (!isWhole || !file->flush())
        return false;
    auto *const saved = qobject_cast<QSaveFile *>(file.get());
    return !saved || saved->commit();
}
