// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "rejectreason.h"

#include <vmessage/headerwords.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

//! The parts of one vMessage; empty where it has no such part.
struct ParsedMessage
{
    int folder = HeaderWords::NoFolder;
    HeaderWords::ReadStatus readStatus = HeaderWords::ReadStatus::Unknown;
    QString type; //!< SMS, INET, ...
    QString headerTime;
    QString bodyTime;
    QStringList originators; //!< numbers of the vCards in the sender's place
    QStringList recipients;  //!< numbers of the vCards in the receiver's place
    QString body;            //!< with a line feed for every line end

    //! Whether it is another kind of object than a text message.
    RejectReason rejectReasonOfType() const;

    //! The text with a line feed for every line end; the encoder drops carriage returns.
    static QString withLineFeeds(QString text);

    //! The text as it is compared: without byte order marks at its beginning, of which the
    //! library drops one from all that it stores or sends. It lives as long as \a text.
    static QStringView comparable(QStringView text);

    //! Nothing when the bytes hold no whole vMessage.
    static std::optional<ParsedMessage> parse(const QByteArray &vMessage);
};
