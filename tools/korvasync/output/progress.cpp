// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "progress.h"

#include <cstdio>
#include <unistd.h>

Progress::Progress(const QString &when)
    : isOn(when == QLatin1String("always")
           || (when == QLatin1String("auto") && isatty(STDERR_FILENO)))
{
    clock.start();
}

void Progress::end()
{
    if (hasShown)
        std::fputc('\n', stderr);
}

void Progress::show(int items, std::optional<double> part)
{
    if (!isOn)
        return;
    const double seconds = qMax(0.001, static_cast<double>(clock.elapsed()) / 1000);
    QString line = QStringLiteral("\r%1 done").arg(items);
    if (part)
        line += QStringLiteral(" of about %1").arg(*part > 0 ? qRound(items / *part) : items);
    line += QStringLiteral(", %1/s").arg(qRound(items / seconds));
    if (part && *part > 0)
        line += QStringLiteral(", %1 s left").arg(qRound(seconds / *part - seconds));
    std::fputs(line.toUtf8().constData(), stderr);
    std::fputs("\033[K", stderr);
    std::fflush(stderr);
    hasShown = true;
}
