// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "adding.h"

#include "options/arguments.h"

bool AddingOptions::take(const Invocation &invocation, const char *textForm)
{
    const QCommandLineParser &parser = invocation.options;
    const auto choice = Arguments::takeChoice(
        parser, "on-duplicate",
        {QStringLiteral("skip"), QStringLiteral("add"), QStringLiteral("fail")});
    if (!choice)
        return false;
    onDuplicate = static_cast<OnDuplicate>(*choice);
    const auto from = Arguments::takeChoice(
        parser, "from",
        {QStringLiteral("auto"), QLatin1String(textForm), QStringLiteral("android-xml")});
    if (!from)
        return false;
    form = static_cast<ItemReader::Form>(*from);
    localZone = invocation.global.localZone;
    if (invocation.isSet("assume-tz"))
        localZone = QTimeZone(invocation.value("assume-tz").toUtf8());
    if (!localZone.isValid()) {
        Diagnostics::error(QStringLiteral("--assume-tz takes a zone such as Europe/Helsinki"));
        return false;
    }
    rejects = invocation.value("rejects");
    return true;
}

QList<QCommandLineOption> AddingOptions::declared(const char *textForm)
{
    const auto text = [](const char *latin1) { return QString::fromLatin1(latin1); };
    const QString forms = QStringLiteral("auto, %1 or android-xml").arg(QLatin1String(textForm));
    return {
        {text("from"), text("The form of the files: ") + forms + text("; auto (default) looks."),
         text("FORM"), text("auto")},
        {text("assume-tz"),
         text("Zone of times that name none (default: the system's), as Europe/Helsinki."),
         text("ZONE")},
        {text("on-duplicate"), text("What is there already: skip (default), add or fail."),
         text("WHAT"), text("skip")},
        {text("rejects"), text("Collect what is refused here, to be mended and added again."),
         text("FILE")},
    };
}
