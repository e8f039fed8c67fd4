// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "importoptions.h"

#include "options/arguments.h"
#include "shared/text.h"

bool ImportOptions::take(const Invocation &invocation, const char *textForm)
{
    if (!takeReading(invocation, textForm))
        return false;
    if (purpose == Verify)
        return true;
    const auto choice = Arguments::takeChoice(invocation.options, "add", "on-duplicate");
    if (!choice)
        return false;
    onDuplicate = static_cast<OnDuplicate>(*choice);
    rejects = invocation.value("rejects");
    return true;
}

bool ImportOptions::takeReading(const Invocation &invocation, const char *textForm)
{
    const bool isOfCalls = QLatin1String(textForm) == QLatin1String(CallForm);
    const char *const command = isOfCalls ? "calls add" : "add";
    const auto from = Arguments::takeChoice(invocation.options, command, "from");
    if (!from)
        return false;
    form = static_cast<ItemReader::Form>(*from);
    localZone = invocation.global.localZone;
    return Arguments::takeZone(invocation.options, localZone);
}

QList<QCommandLineOption> ImportOptions::declared(Purpose purpose, const char *textForm)
{
    const auto text = [](const char *latin1) { return QString::fromLatin1(latin1); };
    QList<QCommandLineOption> options{
        {text("from"),
         Text::tr("Form of the files: auto (default: told by their content), %1 or android-xml.")
             .arg(QLatin1String(textForm)),
         text("FORM"), text("auto")},
        {text("assume-tz"),
         Text::tr("Time zone for times without one, e.g. Europe/Helsinki (default: the system's)."),
         text("ZONE")},
    };
    if (purpose == Add) {
        options += QList<QCommandLineOption>{
            {text("on-duplicate"),
             Text::tr("Items that are in the store already: skip (default), add or fail."),
             text("WHAT"), text("skip")},
            {text("rejects"),
             Text::tr(
                 "Collect refused and failed items in this file, to be corrected and added again."),
             text("FILE")},
        };
    }
    return options;
}
