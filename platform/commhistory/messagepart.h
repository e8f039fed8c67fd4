// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <platformexport.h>

#include <QtCore/QByteArray>
#include <QtCore/QMetaType>
#include <QtCore/QString>

namespace CommHistory {

//! One part of a multi-part message. A text message has none. The type exists because events that
//! other programs announce on the bus may have parts.
class KORVAPLATFORM_EXPORT MessagePart
{
public:
    QString contentId;       //!< MIME content id, without angle brackets
    QString contentType;     //!< MIME type such as "text/plain"
    QString path;            //!< absolute path of the part's file
    QString plainText;       //!< decoded text of a text part
    int size = 0;            //!< in bytes
    QString contentLocation; //!< MIME content location

    bool operator==(const MessagePart &other) const;
    bool operator!=(const MessagePart &other) const { return !(*this == other); }
};

} // namespace CommHistory

Q_DECLARE_METATYPE(CommHistory::MessagePart)
