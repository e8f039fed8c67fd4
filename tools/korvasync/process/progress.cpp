// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "progress.h"

#include "shared/text.h"
#include "terminalwidth.h"

#include <cstdio>
#include <unistd.h>

Progress::Progress(const QString &when)
    : m_isOn(when == QLatin1String("always")
             || (when == QLatin1String("auto") && isatty(STDERR_FILENO)))
{
    m_clock.start();
}

void Progress::end()
{
    if (m_hasShown)
        std::fputc('\n', stderr);
}

// A line that goes on in the next row cannot be rewritten in place. The first of the words tells
// most, a number cut off would be another one, and the last column is left to the cursor.
static QString fittingLine(QStringList words)
{
    const QLatin1String separator(", ");
    const int width = terminalWidth(STDERR_FILENO); // each time, as windows change theirs
    if (width == 0)
        return words.join(separator);
    while (words.size() > 1 && words.join(separator).size() >= width)
        words.removeAt(1);
    QString line = words.join(separator);
    if (line.size() >= width)
        line.truncate(line.lastIndexOf(QLatin1Char(' '), width - 1));
    return line;
}

void Progress::show(int items, const std::function<std::optional<double>()> &partDone)
{
    if (!m_isOn)
        return;
    const std::optional<double> part = partDone();
    const double seconds = qMax(0.001, static_cast<double>(m_clock.elapsed()) / 1000);
    QStringList words;
    if (part) {
        words += Text::tr("%1 done of about %2")
                     .arg(items)
                     .arg(*part > 0 ? qRound(items / *part) : items);
    } else {
        words += Text::tr("%1 done").arg(items);
    }
    words += QStringLiteral("%1/s").arg(qRound(items / seconds));
    if (part && *part > 0)
        words += Text::tr("%1 s left").arg(qRound(seconds / *part - seconds));
    std::fprintf(stderr, "\r%s\033[K", fittingLine(words).toUtf8().constData());
    std::fflush(stderr);
    m_hasShown = true;
}
