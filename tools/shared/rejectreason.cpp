// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "rejectreason.h"

#include <vmessage/vmessageparser.h>

namespace {

struct Wording
{
    const char *code;
    const char *reason;
};

Wording wordingOf(RejectReason rejectReason)
{
    switch (rejectReason) {
    case RejectReason::None:
        return {"", ""};
    case RejectReason::SmsParse:
        return {"sms-parse", QT_TRANSLATE_NOOP("Text", "not a whole vMessage")};
    case RejectReason::SmsDraft:
        return {"sms-draft", QT_TRANSLATE_NOOP("Text", "a draft, and drafts cannot be written")};
    case RejectReason::SmsNoNumber:
        return {"sms-no-number", QT_TRANSLATE_NOOP("Text", "no number of the other party")};
    case RejectReason::SmsBadId:
        return {"sms-bad-id", QT_TRANSLATE_NOOP("Text", "no message has this id")};
    case RejectReason::SmsNoFolder:
        return {"sms-no-folder", QT_TRANSLATE_NOOP("Text", "no known folder; --folder names one")};
    case RejectReason::SmsNoFolderToReplace:
        return {"sms-no-folder",
                QT_TRANSLATE_NOOP("Text",
                                  "no known folder; its line X-IRMC-BOX names one, such as INBOX")};
    case RejectReason::SmsStore:
        return {"sms-store", QT_TRANSLATE_NOOP("Text", "the store did not take it")};
    case RejectReason::SmsDelete:
        return {"sms-delete", QT_TRANSLATE_NOOP("Text", "the store did not delete it")};
    case RejectReason::SmsChanged:
        return {"sms-changed",
                QT_TRANSLATE_NOOP("Text", "no longer what it was when it was asked about")};
    case RejectReason::CallParse:
        return {"call-parse", QT_TRANSLATE_NOOP("Text", "not a whole call-history entry")};
    case RejectReason::CallType:
        return {"call-type",
                QT_TRANSLATE_NOOP("Text", "no TYPE of call that is incoming, outgoing or missed")};
    case RejectReason::CallStore:
        return {"call-store", QT_TRANSLATE_NOOP("Text", "the store did not take it")};
    case RejectReason::BadCallTime:
        return {"bad-time", QT_TRANSLATE_NOOP("Text", "no time, or none that can be")};
    case RejectReason::BadTime:
        return {"bad-time",
                QT_TRANSLATE_NOOP(
                    "Text",
                    "no time, or none that can be; --on-bad-time now takes the time of the clock")};
    case RejectReason::Duplicate:
        return {"duplicate", QT_TRANSLATE_NOOP("Text", "there already")};
    case RejectReason::TooManyRecipients:
        return {
            "too-many-recipients",
            QT_TRANSLATE_NOOP("Text", "more than one other party; a message can be kept for one")};
    case RejectReason::MmsNotSupported:
        return {"mms-not-supported", QT_TRANSLATE_NOOP("Text", "a multimedia message")};
    case RejectReason::ForeignObject:
        return {"foreign-object",
                QT_TRANSLATE_NOOP("Text", "not a text message but another kind of object")};
    case RejectReason::Unreadable:
        return {"unreadable", QT_TRANSLATE_NOOP("Text", "the file cannot be read")};
    }
    Q_UNREACHABLE();
}

const char *wordingOf(VMessageProblem::Kind problem)
{
    switch (problem) {
    case VMessageProblem::None:
        return "";
    case VMessageProblem::NoBegin:
        return QT_TRANSLATE_NOOP("Text", "BEGIN:VMSG is missing");
    case VMessageProblem::CutHeader:
        return QT_TRANSLATE_NOOP("Text", "cut in the header, behind line %1");
    case VMessageProblem::NoBody:
        return QT_TRANSLATE_NOOP("Text", "BEGIN:VBODY is missing above line %1");
    case VMessageProblem::OpenBody:
        return QT_TRANSLATE_NOOP("Text", "END:VBODY is missing; BEGIN:VBODY is in line %1");
    case VMessageProblem::LineBehindBody:
        return QT_TRANSLATE_NOOP(
            "Text", "END:VBODY is followed by line %1, which is neither END:VENV nor END:VMSG");
    case VMessageProblem::LongText:
        return QT_TRANSLATE_NOOP("Text", "the text below line %1 is longer than 2 GiB");
    }
    Q_UNREACHABLE();
}

} // namespace

QString codeOf(RejectReason rejectReason) { return QLatin1String(wordingOf(rejectReason).code); }

Reason reasonOf(RejectReason rejectReason) { return Text::reason(wordingOf(rejectReason).reason); }

Reason parseErrorIn(const QByteArray &vMessage, quint64 firstLine)
{
    if (vMessage.isEmpty()) // too long to be kept
        return reasonOf(RejectReason::SmsParse);
    VMessageParser parser;
    parser.parseVMessage(vMessage.constData(), static_cast<unsigned int>(vMessage.size()));
    const VMessageProblem problem = parser.problem();
    Reason reason = Text::reason(wordingOf(problem.kind));
    if (!reason.english.contains(QLatin1String("%1")))
        return reason;
    return reason.arg(QString::number(firstLine + problem.line - 1));
}

QByteArray reasonLine(const QString &source, RejectReason rejectReason, const QString &reason)
{
    return "# " + source.toUtf8() + ": " + wordingOf(rejectReason).code + ": " + reason.toUtf8();
}

static bool isCode(std::string_view word)
{
    for (int i = 1; i <= static_cast<int>(RejectReason::Unreadable); ++i) {
        if (word == wordingOf(static_cast<RejectReason>(i)).code)
            return true;
    }
    return false;
}

bool isReasonLine(std::string_view line)
{
    constexpr std::string_view separator(": ");
    if (line.substr(0, 2) != "# ")
        return false;
    for (size_t at = line.find(separator); at != std::string_view::npos;) {
        const size_t next = line.find(separator, at + separator.size());
        if (next == std::string_view::npos)
            return false;
        at += separator.size();
        if (isCode(line.substr(at, next - at)))
            return true;
        at = next;
    }
    return false;
}
