// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "process/standardoutput.h"

#include <QtCore/QList>
#include <QtCore/QString>

//! How many messages or calls there are of each folder, year, ...
struct CountTable
{
    struct Row
    {
        QString key; //!< the folder, the year, ...; empty = those that have none
        qint64 count = 0;
        qint64 amount = 0; //!< unread messages, or seconds of calls
    };

    bool isOfCalls = false; //!< else of messages
    const char *by = "";    //!< what the keys are: folder, type, year, number; total = one row
    QList<Row> rows;
    qsizetype hidden = 0; //!< further rows, which are not printed
};

namespace CountFormats {

//! \param format  text (with bars on a terminal, as wide as it) or ndjson
void print(const QList<CountTable> &tables, const QString &format, StandardOutput &output);

} // namespace CountFormats
