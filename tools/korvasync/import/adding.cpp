// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "adding.h"

#include "options/arguments.h"
#include "process/text.h"

bool AddingOptions::take(const Invocation &invocation, const char *textForm)
{
    if (!ReadingOptions::take(invocation, textForm))
        return false;
    const auto choice = Arguments::takeChoice(
        invocation.options, "on-duplicate",
        {QStringLiteral("skip"), QStringLiteral("add"), QStringLiteral("fail")});
    if (!choice)
        return false;
    onDuplicate = static_cast<OnDuplicate>(*choice);
    rejects = invocation.value("rejects");
    return true;
}

QList<QCommandLineOption> AddingOptions::declared(const char *textForm)
{
    const auto text = [](const char *latin1) { return QString::fromLatin1(latin1); };
    return ReadingOptions::declared(textForm)
        + QList<QCommandLineOption>{
            {text("on-duplicate"),
             Text::tr("Items that are in the store already: skip (default), add or fail."),
             text("WHAT"), text("skip")},
            {text("rejects"),
             Text::tr(
                 "Collect refused and failed items in this file, to be corrected and added again."),
             text("FILE")},
        };
}
