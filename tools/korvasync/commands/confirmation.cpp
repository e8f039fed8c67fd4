// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "confirmation.h"

#include "process/diagnostics.h"
#include "shared/text.h"

#include <cctype>
#include <cstdio>
#include <unistd.h>

namespace Confirmation {

bool isNeeded(const Invocation &invocation)
{
    return !invocation.isSet("yes") && !invocation.global.dryRun;
}

bool isPossible(const Invocation &invocation, const QString &command)
{
    const bool possible = !isNeeded(invocation) || isatty(STDIN_FILENO);
    if (!possible) {
        Diagnostics::error(
            Text::tr("%1 needs --yes where it cannot ask on a terminal").arg(command));
    }
    return possible;
}

bool isGiven(const Invocation &invocation, const QString &question)
{
    if (!isNeeded(invocation))
        return true;
    const QString yes = Text::tr("y", "the letter for yes in [y/N]; y itself is always understood");
    Diagnostics::ask(QStringLiteral("%1 [%2/N]").arg(question, yes));
    const int answer = std::tolower(std::getchar());
    if (answer == 'y' || yes == QString(QChar(answer)))
        return true;
    if (answer == EOF) // the question has no line end yet
        std::fputc('\n', stderr);
    Diagnostics::warn(Text::tr("nothing was deleted"));
    return false;
}

} // namespace Confirmation
