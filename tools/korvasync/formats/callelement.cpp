// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "callelement.h"

#include "elementattributes.h"

#include "model/datetext.h"

namespace {

//! What a kind of call is here, or the words with which it is refused.
struct Type
{
    const char *name;
    const char *refusal;
};

Type typeOf(int number)
{
    switch (number) {
    case 1:
        return {"incoming", ""};
    case 2:
        return {"outgoing", ""};
    case 3: // missed, rejected, blocked
    case 5:
    case 6:
        return {"missed", ""};
    case 4:
        return {"", QT_TRANSLATE_NOOP("Text", "a voice mail, which is no call")};
    case 7:
        return {"", QT_TRANSLATE_NOOP("Text", "a call that was answered on another device")};
    default:
        return {"", ""};
    }
}

// The phone's own words for callers who do not show their numbers.
QString numberOf(const QString &number)
{
    static const QStringList hidden{QStringLiteral("-1"), QStringLiteral("-2"),
                                    QStringLiteral("-3")};
    return hidden.contains(number) ? QString() : number;
}

} // namespace

CallEntry::Parsed CallElement::parse(const QByteArray &element, const QDateTime &now)
{
    CallEntry::Parsed parsed;
    const auto attributes = ElementAttributes::parse(element);
    if (!attributes) {
        parsed.rejectReason = RejectReason::CallParse;
        parsed.detail = Text::reason("not a whole call element");
        return parsed;
    }
    const Type type = typeOf(attributes->value("type").toInt());
    if (*type.refusal) {
        parsed.rejectReason = RejectReason::CallType;
        parsed.detail = Text::reason(type.refusal);
        return parsed;
    }
    Call call;
    call.type = QLatin1String(type.name);
    call.number = numberOf(attributes->value("number"));
    call.duration = CallEntry::readDuration(attributes->value("duration"));
    call.start = DateText::readMessageTime(attributes->value("date"), QTimeZone::utc());
    return CallEntry::judged(call, call.start, now);
}
