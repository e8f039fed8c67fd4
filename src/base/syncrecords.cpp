// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <korvasync/syncrecords.h>

#include "datetimetext.h"
#include "logging.h"

#include <QtCore/QDebug>

namespace KorvaSyncIf {

SmsInfo::SmsInfo() = default;

SmsInfo::SmsInfo(const SmsInfo &other) { copy(other); }

// NOLINTNEXTLINE(cert-oop54-cpp): member by member, so onto itself is safe
SmsInfo &SmsInfo::operator=(const SmsInfo &other)
{
    copy(other);
    return *this;
}

SmsInfo::~SmsInfo() = default;

void SmsInfo::copy(const SmsInfo &other)
{
    id = other.id;
    parentId = other.parentId;
    groupId = other.groupId;
    fromNumber = other.fromNumber;
    toNumber = other.toNumber;
    body = other.body;
    time = other.time;
    modifiedTime = other.modifiedTime;
    readStatus = other.readStatus;
    charset = other.charset;
    encoding = other.encoding;
    language = other.language;
    folderName = other.folderName;
    refId = other.refId;
    messageToken = other.messageToken;
}

void SmsInfo::print() const
{
    // Scripts that read the trace split at these uneven separators.
    qCDebug(lcRecords) << "Id == " << id << " | "
                       << "ParentId == " << parentId << " | "
                       << "Body == " << body << " | "
                       << "Time == " << epochSeconds(time) << " | "
                       << "charset == " << charset << "|"
                       << "encoding == " << encoding << "|"
                       << "language == " << language << "|"
                       << "folderName == " << folderName << "|"
                       << "messageToken == " << messageToken;
}

} // namespace KorvaSyncIf
