// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "storeprocess.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <memory>

// What the tests of a store's directory share.

inline const QString Add = QStringLiteral("add");
inline const QString List = QStringLiteral("list");
constexpr char History[] = "db/urn%3Akorvasync%3Ahistory.db";
constexpr char Meta[] = "db/meta.db";

inline QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline bool replace(const QString &path, const QByteArray &contents)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size();
}

//! Makes another user the owner, of a link itself.
inline void giveToNobody(const QString &path)
{
    QCOMPARE(QProcess::execute(QStringLiteral("chown"),
                               {QStringLiteral("-h"), QStringLiteral("nobody"), path}),
             0);
}

//! The place of a store that does not exist yet, in a directory of its own.
class StoreDirectoryFixture
{
protected:
    void begin()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        m_store = m_directory->filePath(QStringLiteral("store"));
    }

    void makeStore(int count = 1)
    {
        QCOMPARE(StoreProcess(m_store).run({Add, QString::number(count)}).lines.size(), count);
    }

    //! A read is refused and a write reported as failed, both with one sentence that has these
    //! words and the directory.
    void expectRefused(const QString &words)
    {
        const StoreProcess program(m_store);
        for (const QString &verb : {List, Add}) {
            const auto outcome = program.run({verb, QStringLiteral("1")});
            QVERIFY(outcome.ended);
            QCOMPARE(outcome.first(),
                     verb == List ? QStringLiteral("refused") : QStringLiteral("failed"));
            QVERIFY2(outcome.errors.contains(words), qPrintable(outcome.errors));
            QVERIFY2(outcome.errors.contains(m_store), qPrintable(outcome.errors));
            QVERIFY2(outcome.errors.startsWith(QLatin1String("korvasync.store: ")),
                     qPrintable(outcome.errors));
            QCOMPARE(outcome.errors.count(QLatin1Char('\n')), 1);
        }
    }

    QString path(const char *name) const
    {
        return m_store + QLatin1Char('/') + QLatin1String(name);
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    QString m_store;
};
