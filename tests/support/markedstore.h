// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

//! The folder of a store, with the marker that tells the client so and nothing else.
class MarkedStore
{
public:
    MarkedStore()
    {
        QFile marker(m_folder.filePath(QStringLiteral("korvasync-store")));
        if (!marker.open(QIODevice::WriteOnly))
            qFatal("no marker");
    }

    QString path() const { return m_folder.path(); }

private:
    const QTemporaryDir m_folder;
};
