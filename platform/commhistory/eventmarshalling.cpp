// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "eventmarshalling.h"

#include "eventrow_p.h"

using CommHistory::Event;
using CommHistory::MessagePart;

namespace {

//! As which type the bus carries a value of an event.
template <typename Value>
auto toBus(const Value &value)
{
    if constexpr (std::is_same_v<Value, QDateTime>)
        return CommHistory::toStoredTime(value);
    else if constexpr (std::is_enum_v<Value>)
        return int(value);
    else
        return value;
}

template <typename Value>
Value fromBus(const QDBusArgument &argument)
{
    decltype(toBus(Value())) carried{};
    argument >> carried;
    if constexpr (std::is_same_v<Value, QDateTime>)
        return CommHistory::fromStoredTime(carried);
    else
        return Value(carried);
}

} // namespace

QDBusArgument &operator<<(QDBusArgument &argument, const MessagePart &part)
{
    argument.beginStructure();
    argument << part.contentId << part.contentType << part.path << part.plainText << part.size
             << part.contentLocation;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, MessagePart &part)
{
    argument.beginStructure();
    argument >> part.contentId >> part.contentType >> part.path >> part.plainText >> part.size
        >> part.contentLocation;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const Event &event)
{
    argument.beginStructure();
    CommHistory::forEachField([&](const auto &field) { argument << toBus((event.*field.get)()); });
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, Event &event)
{
    argument.beginStructure();
    CommHistory::forEachField([&](const auto &field) {
        (event.*field.set)(fromBus<decltype((event.*field.get)())>(argument));
    });
    argument.endStructure();
    return argument;
}
