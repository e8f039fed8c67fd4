// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <korvasync/vmessagedecoder.h>

#include "base/folders.h"

#include <vmessage/headerwords.h>
#include <vmessage/messagetime.h>
#include <vmessage/vmessageparser.h>
#include <vmessage/vmessagescanner.h>

#include <algorithm>
#include <limits>
#include <optional>
#include <string_view>

namespace KorvaSyncIf {

namespace {

using Problem = VMessageDecoder::Problem;

//! The line on which a second message begins, from 1; 0 if there is none. The parser would take it
//! for a part of the first one's text.
int findSecondMessage(std::string_view bytes)
{
    std::optional<VMessageScanner> scanner; // of the first message, up to its end
    bool hasEnded = false;
    for (int number = 1; !bytes.empty(); ++number) {
        const size_t length = std::min(bytes.find('\n'), bytes.size());
        const std::string_view line = bytes.substr(0, length + 1);
        bytes.remove_prefix(line.size());
        if (!scanner) {
            if (!VMessageScanner::isBegin(line.substr(0, length)))
                continue;
            if (hasEnded)
                return number;
            scanner.emplace();
        }
        const auto taken = scanner->take(line);
        if (!taken.unused.empty())
            return number;
        if (taken.verdict != VMessageScanner::Unfinished) {
            scanner.reset();
            hasEnded = true;
        }
    }
    return 0;
}

Problem::Kind kindOf(VMessageProblem::Kind kind)
{
    switch (kind) {
    case VMessageProblem::None:
        break;
    case VMessageProblem::NoBegin:
        return Problem::NoBegin;
    case VMessageProblem::CutHeader:
        return Problem::CutHeader;
    case VMessageProblem::NoBody:
        return Problem::NoBody;
    case VMessageProblem::OpenBody:
        return Problem::OpenBody;
    case VMessageProblem::LineBehindBody:
        return Problem::LineBehindBody;
    case VMessageProblem::LongText:
        return Problem::LongText;
    }
    return Problem::None;
}

template <typename Party>
QStringList numbersOf(const Party *party)
{
    QStringList numbers;
    for (int i = 0; party && i < party->count; ++i) {
        const QString number = QString::fromUtf8(party->telephones[i]);
        if (!number.isEmpty()) // of a byte order mark alone Qt leaves nothing
            numbers += number;
    }
    return numbers;
}

static_assert(int(HeaderWords::Inbox) == LocInbox && int(HeaderWords::Outbox) == LocOutbox
              && int(HeaderWords::Drafts) == LocDrafts && int(HeaderWords::Sent) == LocSent
              && int(HeaderWords::MyFolder) == LocMyFolder);

HistoryItem::Direction directionOf(int folder)
{
    if (folder == 0)
        return HistoryItem::Direction::Unknown;
    return isOutboundFolder(folder) ? HistoryItem::Direction::Outbound
                                    : HistoryItem::Direction::Inbound;
}

// One's own messages need no reading.
bool isRead(const char *status, bool isOutbound)
{
    const auto named = HeaderWords::readStatusOf(status);
    return named == HeaderWords::ReadStatus::Read
        || (isOutbound && named == HeaderWords::ReadStatus::Unknown);
}

QDateTime timeOf(const VMessageHeader &header, const VMessageBody *body, const QTimeZone &local)
{
    for (const char *text : {header.dateTime, body ? body->date : nullptr}) {
        QDateTime time = text ? MessageTime::read(text, local) : QDateTime();
        if (!time.isNull())
            return time;
    }
    return QDateTime();
}

QString textOf(const VMessageBody &body)
{
    QString text = QString::fromUtf8(body.text, body.length);
    // Qt takes a byte order mark at the beginning away.
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    if (std::string_view(body.text, size_t(body.length)).substr(0, mark.size()) == mark)
        text.prepend(QChar(QChar::ByteOrderMark));
    return text;
}

} // namespace

bool VMessageDecoder::decode(const QByteArray &vMessage, HistoryItem *item)
{
    latestProblem = Problem();
    latestType.clear();
    latestOriginators.clear();
    latestRecipients.clear();
    if (vMessage.size() > std::numeric_limits<int>::max()) {
        latestProblem = {Problem::LongText, 1};
        return false;
    }
    if (const int line = findSecondMessage({vMessage.constData(), size_t(vMessage.size())})) {
        latestProblem = {Problem::SecondMessage, line};
        return false;
    }
    VMessageParser parser;
    const VMessage *const message =
        parser.parseVMessage(vMessage.constData(), uint(vMessage.size()));
    if (!message) {
        latestProblem = {kindOf(parser.problem().kind), int(parser.problem().line)};
        return false;
    }
    if (!localZone.isValid())
        localZone = QTimeZone::systemTimeZone();

    const VMessageHeader &header = *parser.header(message);
    const VMessageBody *const body = parser.body(message);
    latestType = QString::fromUtf8(header.type);
    latestOriginators = numbersOf(parser.originator(message));
    latestRecipients = numbersOf(parser.recipients(message));

    HistoryItem decoded;
    const int named = HeaderWords::folderOf(header);
    decoded.folder = named == HeaderWords::NoFolder ? defaultFolder : named;
    decoded.direction = directionOf(decoded.folder);
    const bool isOutbound = decoded.direction == HistoryItem::Direction::Outbound;
    const QStringList &expected = isOutbound ? latestRecipients : latestOriginators;
    const QStringList &other = isOutbound ? latestOriginators : latestRecipients;
    decoded.party = expected.isEmpty() ? other.value(0) : expected.first();
    decoded.time = timeOf(header, body, localZone);
    decoded.isRead = isRead(header.status, isOutbound);
    if (body) {
        decoded.text = textOf(*body);
        decoded.charset = QString::fromUtf8(body->charset);
        decoded.encoding = QString::fromUtf8(body->encoding);
        decoded.language = QString::fromUtf8(body->language);
    }
    *item = decoded;
    return true;
}

} // namespace KorvaSyncIf
