// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "judging.h"

#include "options/arguments.h"
#include "process/text.h"
#include "process/zonename.h"

bool ReadingOptions::take(const Invocation &invocation, const char *textForm)
{
    const auto from = Arguments::takeChoice(
        invocation.options, "from",
        {QStringLiteral("auto"), QLatin1String(textForm), QStringLiteral("android-xml")});
    if (!from)
        return false;
    form = static_cast<ItemReader::Form>(*from);
    localZone = invocation.global.localZone;
    if (invocation.isSet("assume-tz"))
        localZone = ZoneName::zone(invocation.value("assume-tz").toUtf8());
    if (!localZone.isValid()) {
        Diagnostics::error(
            ZoneName::complaint(QStringLiteral("--assume-tz"), invocation.value("assume-tz")));
    }
    return localZone.isValid();
}

QList<QCommandLineOption> ReadingOptions::declared(const char *textForm)
{
    const auto text = [](const char *latin1) { return QString::fromLatin1(latin1); };
    return {
        {text("from"),
         Text::tr("Form of the files: auto (default: told by their content), %1 or android-xml.")
             .arg(QLatin1String(textForm)),
         text("FORM"), text("auto")},
        {text("assume-tz"),
         Text::tr("Time zone for times without one, e.g. Europe/Helsinki (default: the system's)."),
         text("ZONE")},
    };
}
