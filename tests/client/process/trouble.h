// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "clientprocess.h"

#include <QtTest/QTest>

// What the tests of stores in trouble share.

namespace Trouble {

//! One sentence, and it does not repeat what the messages and calls say.
inline void verifySentence(const QByteArray &errors)
{
    QVERIFY2(errors.startsWith("korvasync: ") && errors.count('\n') >= 1, errors);
    QVERIFY2(!errors.contains("5550100") && !errors.contains("Hello"), errors);
}

//! A row of "arguments" for each command line.
inline void addCommandRows(const QList<const char *> &lines)
{
    QTest::addColumn<QStringList>("arguments");
    for (const char *line : lines)
        QTest::newRow(line) << QString::fromLatin1(line).split(QLatin1Char(' '));
}

//! Adds, then adds again and removes on a disk that cannot be written, which print their exit
//! codes, then lists.
inline ClientProcess::Outcome runOnReadOnlyDisk(const ClientProcess &client, const char *add,
                                                const char *remove, const char *list)
{
    const QByteArray script = "$KORVASYNC " + QByteArray(add) + " -q; mount -o remount,ro $DISK; "
        + "$KORVASYNC " + add + " -q -o ndjson --on-duplicate add; echo $?; " + "$KORVASYNC "
        + remove + "; echo $?; mount -o remount,rw $DISK; $KORVASYNC " + list;
    return client.runOnDisk("20m", script);
}

//! Adds more than the disk holds, which prints its exit code, lists, then makes room, adds
//! once more, of which the last line is printed, and lists.
inline ClientProcess::Outcome runOnFullDisk(const ClientProcess &client, const char *add,
                                            const char *list, const char *lastList)
{
    const QByteArray script = "$KORVASYNC " + QByteArray(add) + " -o ndjson; echo $?; $KORVASYNC "
        + list + "; mount -o remount,size=60m $DISK; $KORVASYNC " + add
        + " -o ndjson | tail -1; $KORVASYNC " + lastList;
    return client.runOnDisk("6m", script);
}

} // namespace Trouble
