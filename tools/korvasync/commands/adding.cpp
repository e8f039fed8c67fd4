// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "adding.h"

#include "options/arguments.h"

bool AddingOptions::takeOnDuplicate(const Invocation &invocation)
{
    const auto choice = Arguments::takeChoice(
        invocation.options, "on-duplicate",
        {QStringLiteral("skip"), QStringLiteral("add"), QStringLiteral("fail")});
    if (choice)
        onDuplicate = static_cast<OnDuplicate>(*choice);
    return choice.has_value();
}
