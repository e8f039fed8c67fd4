// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "callentry.h"

#include "model/datetext.h"

#include <algorithm>

namespace CallEntry {

namespace {

constexpr int SecondsLength = 15; // of yyyyMMddThhmmss

bool isDigit(QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); }

// The library's own date-times end in 1 to 3 digits of milliseconds, which no other
// spelling has behind its seconds.
QString withoutMilliseconds(const QString &time)
{
    auto end = qMin<decltype(time.size())>(SecondsLength, time.size());
    while (end < time.size() && end < SecondsLength + 3 && isDigit(time.at(end)))
        ++end;
    return time.left(SecondsLength) + time.mid(end);
}

QDateTime readTime(const QString &text, const QTimeZone &local)
{
    const bool isStamp = text.size() >= SecondsLength && text.at(8) == QLatin1Char('T');
    return isStamp ? DateText::readMessageTime(withoutMilliseconds(text), local) : QDateTime();
}

QString compose(const Call &call, const QDateTime &time)
{
    const QString stamp = time.isValid()
        ? time.toString(QStringLiteral("yyyyMMddThhmmss")) + QLatin1Char('Z')
        : QString();
    return QStringLiteral("BEGIN:VCALLHISTENTRY\r\nTYPE:%1\r\nTEL:%2\r\nDURATION:%3\r\n"
                          "CALL-DATETIME:%4\r\nEND:VCALLHISTENTRY\r\n")
        .arg(call.type, call.number, QString::number(call.duration), stamp);
}

//! The values of an entry as they stand.
struct Fields
{
    QString type;
    QString number;
    QString duration;
    QString time;
    bool isWhole = false; // has its last line

    //! \return what is wrong with the line; empty = nothing
    Reason take(const QString &line);
};

Reason Fields::take(const QString &line)
{
    const QStringList pieces = line.split(QLatin1Char(':'));
    const QString &name = pieces.first();
    const QString value = pieces.value(1);
    if (pieces.size() > 2)
        return Text::reason("a value with a colon");
    if (name == QLatin1String("TYPE"))
        type = value;
    else if (name == QLatin1String("TEL"))
        number = value;
    else if (name == QLatin1String("DURATION"))
        duration = value;
    else if (name == QLatin1String("CALL-DATETIME"))
        time = value;
    else if (line == QLatin1String("END:VCALLHISTENTRY"))
        isWhole = true;
    else
        return Text::reason("a line that an entry does not have");
    return Reason();
}

//! \return what is wrong with the entry; empty = nothing
Reason takeLines(const QByteArray &entry, Fields &fields)
{
    // With its length, as Qt 5 would end the text at a zero otherwise.
    const QString text = QString::fromUtf8(entry.constData(), static_cast<int>(entry.size()));
    QStringList lines = text.split(QLatin1Char('\n'));
    for (QString &line : lines) {
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
    }
    if (!lines.takeFirst().startsWith(QLatin1String("BEGIN:VCALLHISTENTRY")))
        return Text::reason("the beginning is missing");
    for (const QString &line : std::as_const(lines)) {
        Reason trouble = line.isEmpty() ? Reason() : fields.take(line);
        if (!trouble.isEmpty())
            return trouble;
    }
    return fields.isWhole ? Reason() : Text::reason("the end is missing");
}

bool isStorable(const QString &number)
{
    return std::none_of(number.cbegin(), number.cend(), [](QChar c) {
        return c.category() == QChar::Other_Control || c == QChar::ReplacementCharacter;
    });
}

Parsed refused(RejectReason rejectReason, const Reason &detail = Reason())
{
    Parsed parsed;
    parsed.rejectReason = rejectReason;
    parsed.detail = detail;
    return parsed;
}

bool isType(const QString &type)
{
    return type == QLatin1String("incoming") || type == QLatin1String("outgoing")
        || type == QLatin1String("missed");
}

} // namespace

int readDuration(const QString &text)
{
    bool isNumber = true;
    const int seconds = text.isEmpty() ? 0 : text.toInt(&isNumber);
    return isNumber ? seconds : -1;
}

Parsed judged(const Call &call, const QDateTime &named, const QDateTime &now)
{
    if (!isType(call.type))
        return refused(RejectReason::CallType);
    if (!isStorable(call.number))
        return refused(RejectReason::CallParse,
                       Text::reason("a number with unprintable characters"));
    if (call.duration < 0)
        return refused(RejectReason::CallParse,
                       Text::reason("a duration that is no count of seconds"));
    if (!DateText::isBelievable(named, now))
        return refused(RejectReason::BadCallTime);
    if (!DateText::isBelievable(call.start, now) || !DateText::isBelievable(call.end(), now))
        return refused(RejectReason::CallParse, Text::reason("a duration that cannot be"));
    Parsed parsed;
    parsed.call = call;
    return parsed;
}

Parsed parse(const QByteArray &entry, const QTimeZone &local, const QDateTime &now)
{
    Fields fields;
    const Reason trouble = takeLines(entry, fields);
    if (!trouble.isEmpty())
        return refused(RejectReason::CallParse, trouble);
    Call call;
    call.type = fields.type;
    call.number = fields.number;
    call.duration = readDuration(fields.duration);
    const QDateTime time = readTime(fields.time, local);
    call.start = call.isOutgoing() ? time : time.addSecs(-call.duration);
    return judged(call, time, now);
}

// The library escapes nothing, so a number that another program stored may hold anything,
// also line ends. Type, duration and time cannot.
Call fromLibrary(const QString &entry)
{
    const QString lineEnd = QStringLiteral("\r\n");
    const QString tel = QStringLiteral("\r\nTEL:");
    const QString duration = QStringLiteral("\r\nDURATION:");
    const auto telAt = entry.indexOf(tel);
    const auto durationAt = entry.lastIndexOf(duration);
    const QString type = entry.left(telAt).section(QLatin1Char(':'), -1);
    const QStringList last = entry.mid(durationAt + duration.size()).split(lineEnd);
    Call call;
    call.type = type;
    call.number = entry.mid(telAt + tel.size(), durationAt - telAt - tel.size());
    call.duration = last.first().toInt();
    const QDateTime time = readTime(last.value(1).section(QLatin1Char(':'), 1), QTimeZone::utc());
    call.start = call.isOutgoing() ? time : time.addSecs(-call.duration);
    return call;
}

QString forLibrary(const Call &call) { return compose(call, call.end()); }

QString write(const Call &call)
{
    return compose(call, call.isOutgoing() ? call.start : call.end());
}

} // namespace CallEntry
