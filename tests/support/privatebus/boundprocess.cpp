// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "boundprocess.h"

void BoundProcess::startBound(const QString &program, const QStringList &arguments)
{
    start(QStringLiteral("setpriv"),
          QStringList{QStringLiteral("--pdeathsig"), QStringLiteral("KILL"), QStringLiteral("--"),
                      program}
              + arguments);
}

void BoundProcess::end()
{
    constexpr int patience = 20000; // milliseconds
    if (state() == QProcess::NotRunning)
        return;
    kill();
    waitForFinished(patience);
}
