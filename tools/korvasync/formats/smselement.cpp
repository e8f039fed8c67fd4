// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "smselement.h"

#include "elementattributes.h"

namespace {

// Of the phone's six boxes the outbox, the failed and the queued messages are one here.
HeaderWords::Folder folderOf(const QString &type)
{
    switch (type.toInt()) {
    case 1:
        return HeaderWords::Inbox;
    case 2:
        return HeaderWords::Sent;
    case 3:
        return HeaderWords::Drafts;
    case 4:
    case 5:
    case 6:
        return HeaderWords::Outbox;
    default:
        return HeaderWords::NoFolder;
    }
}

} // namespace

std::optional<ParsedMessage> SmsElement::parse(const QByteArray &element)
{
    const auto attributes = ElementAttributes::parse(element);
    // A message that says "null" is more likely than one without a text.
    const auto body = attributes ? attributes->text("body") : std::nullopt;
    if (!body)
        return std::nullopt;
    ParsedMessage parsed;
    parsed.folder = folderOf(attributes->value("type"));
    const QString read = attributes->value("read"); // few programs leave it out
    parsed.readStatus = read.isEmpty() ? HeaderWords::ReadStatus::Read
                                       : HeaderWords::readStatusOf(read.toUtf8().constData());
    parsed.headerTime = attributes->value("date");
    parsed.recipients = QStringList{attributes->value("address")};
    parsed.body = ParsedMessage::withLineFeeds(*body);
    return parsed;
}
