// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QLoggingCategory>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

//! Ends the run when something that must hold for every input does not, and says which line
//! of which target asked for it.
inline void require(bool condition, const char *file = __builtin_FILE(),
                    int line = __builtin_LINE())
{
    if (condition)
        return;
    std::fprintf(stderr, "%s:%d: does not hold\n", file, line);
    std::abort();
}

//! The trace would cost more than the work.
inline void silenceTrace()
{
    QLoggingCategory::setFilterRules(QStringLiteral("korvasync.*=false"));
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
}
