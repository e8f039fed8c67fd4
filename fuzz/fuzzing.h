// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QLoggingCategory>

#include <cstdint>
#include <cstdlib>

//! Ends the run when something that must hold for every input does not.
inline void require(bool condition)
{
    if (!condition)
        std::abort();
}

//! The trace would cost more than the work.
inline void silenceTrace()
{
    QLoggingCategory::setFilterRules(QStringLiteral("korvasync.*=false"));
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
}
