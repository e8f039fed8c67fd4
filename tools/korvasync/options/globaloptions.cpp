// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "globaloptions.h"

#include "choices.h"
#include "shared/text.h"

QList<QCommandLineOption> GlobalOptions::declared(const QStringList &formats, int meaning)
{
    const auto text = [](const char *latin1) { return QString::fromLatin1(latin1); };
    QString forms = formats.join(QLatin1String(", "));
    if (formats.isEmpty()) {
        forms = Text::tr("text, ndjson; messages: vmsg, csv, mbox, android-xml; calls: entries, "
                         "android-xml");
    } else {
        forms.replace(0, formats.first().size(), Text::tr("%1 (default)").arg(formats.first()));
    }
    QCommandLineOption dryRun({text("n"), text("dry-run")},
                              Text::tr("Show what would happen; write nothing."));
    QCommandLineOption progress(
        text("progress"),
        Text::tr("Show progress on stderr: auto (default: on a terminal), always or never."),
        text("WHEN"), text("auto"));
    if ((meaning & DryRun) == 0)
        dryRun.setFlags(QCommandLineOption::HiddenFromHelp);
    if ((meaning & ShowsProgress) == 0)
        progress.setFlags(QCommandLineOption::HiddenFromHelp);
    return {
        {text("store"),
         Text::tr(
             "Folder of the store (default: $KORVASYNC_STORE, else korvasync in the data folder)."),
         text("DIR")},
        {text("o"), Text::tr("Output format: %1.").arg(forms), text("FORMAT")},
        dryRun,
        {text("q"), Text::tr("No summary; -qq: no warnings either.")},
        {text("v"), Text::tr("Show the library's debug messages, with numbers and texts.")},
        progress,
        {text("timeout"),
         Text::tr("Seconds to wait for an answer from the store, up to 1000000 (default: 60)."),
         text("S"), text("60")},
        {{text("h"), text("help")}, Text::tr("This help.")},
        {text("version"), Text::tr("The version.")},
    };
}

QString GlobalOptions::take(const QCommandLineParser &parser)
{
    const auto isSet = [&](const char *name) { return parser.isSet(QLatin1String(name)); };
    const auto value = [&](const char *name) { return parser.value(QLatin1String(name)); };
    store = value("store");
    if (isSet("store") && store.isEmpty())
        return Text::tr("--store names no folder");
    format = value("o");
    if (isSet("o") && format.isEmpty())
        return Text::tr("-o names no format");
    dryRun = isSet("dry-run");
    quiet = static_cast<int>(parser.optionNames().count(QStringLiteral("q")));
    verbose = isSet("v");
    progress = value("progress");
    if (!Choices::of(QString(), QStringLiteral("progress")).contains(progress))
        return Text::tr("--progress is auto, always or never");
    bool isNumber = false;
    const double seconds = value("timeout").toDouble(&isNumber);
    constexpr double longest = 1000000;
    if (!isNumber || !(seconds > 0 && seconds <= longest))
        return Text::tr("--timeout is a number of seconds above 0 and up to 1000000");
    timeout = std::chrono::milliseconds(static_cast<qint64>(seconds * 1000));
    return QString();
}
