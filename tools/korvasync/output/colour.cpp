// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "colour.h"

#include <QtCore/QByteArray>

#include <unistd.h>

namespace Colour {

static bool isOn()
{
    static const bool on = [] {
        const QByteArray terminal = qgetenv("TERM");
        return isatty(STDOUT_FILENO) && qEnvironmentVariableIsEmpty("NO_COLOR")
            && !terminal.isEmpty() && terminal != "dumb";
    }();
    return on;
}

static QString rendered(const char *attribute, const QString &line)
{
    return isOn() ? QLatin1String("\033[") + QLatin1String(attribute) + QLatin1Char('m') + line
            + QLatin1String("\033[0m")
                  : line;
}

QString bold(const QString &line) { return rendered("1", line); }

QString red(const QString &line) { return rendered("31", line); }

} // namespace Colour
