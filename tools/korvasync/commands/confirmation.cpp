// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "confirmation.h"

#include "process/diagnostics.h"

#include <cstdio>
#include <unistd.h>

namespace Confirmation {

static bool isNeeded(const Invocation &invocation)
{
    return !invocation.isSet("yes") && !invocation.global.dryRun;
}

bool isPossible(const Invocation &invocation, const QString &command)
{
    const bool possible = !isNeeded(invocation) || isatty(STDIN_FILENO);
    if (!possible) {
        Diagnostics::error(
            QStringLiteral("%1 needs --yes where it cannot ask on a terminal").arg(command));
    }
    return possible;
}

bool isGiven(const Invocation &invocation, const QString &question)
{
    if (!isNeeded(invocation))
        return true;
    std::fprintf(stderr, "%s [y/N] ", question.toUtf8().constData());
    const int answer = std::getchar();
    return answer == 'y' || answer == 'Y';
}

} // namespace Confirmation
