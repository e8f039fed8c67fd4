// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "callformats.h"

#include "androidxml.h"
#include "callentry.h"
#include "model/datetext.h"
#include "shared/terminaltext.h"
#include "shared/text.h"

namespace CallFormats {

JsonLine jsonOf(const Call &call, JsonLine json)
{
    json.addUnlessEmpty("type", call.type)
        .addUnlessEmpty("number", call.number)
        .add("duration", call.duration)
        .addUnlessEmpty("time", DateText::write(call.start));
    return json;
}

static QByteArray ndjson(const Call &call) { return jsonOf(call).line(); }

QString clockText(qint64 seconds)
{
    const auto padded = [](qint64 number) {
        return QString::number(number).rightJustified(2, QLatin1Char('0'));
    };
    const qint64 minutes = seconds / 60;
    const QString head = minutes < 60
        ? QString::number(minutes)
        : QString::number(minutes / 60) + QLatin1Char(':') + padded(minutes % 60);
    return head + QLatin1Char(':') + padded(seconds % 60);
}

static QByteArray tableLine(const Call &call)
{
    const QString time = DateText::write(call.start);
    const QString number =
        call.number.isEmpty() ? Text::tr("hidden", "a number") : terminalText(call.number);
    return QStringLiteral("%1  %2  %3  %4\n")
        .arg((time.isEmpty() ? QStringLiteral("-") : time).leftJustified(20),
             call.type.leftJustified(8), clockText(call.duration).rightJustified(7), number)
        .toUtf8();
}

static QByteArray entry(const Call &call) { return CallEntry::write(call).toUtf8(); }

void print(const QList<Call> &calls, const QString &format, StandardOutput &output)
{
    if (format == QLatin1String("android-xml")) {
        AndroidXml::print(calls, output);
        return;
    }
    const auto form = format == QLatin1String("ndjson") ? ndjson
        : format == QLatin1String("entries")            ? entry
                                                        : tableLine;
    for (const Call &call : calls)
        output.write(form(call));
}

} // namespace CallFormats
