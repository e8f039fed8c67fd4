// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "jsonline.h"
#include "model/storedmessage.h"
#include "process/standardoutput.h"

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QTimeZone>

#include <optional>

//! The forms in which messages of the store are printed.
namespace MessageFormats {

//! For programs.
//! \param format  ndjson, vmsg, csv, mbox or android-xml
void print(const QList<StoredMessage> &messages, const QString &format, StandardOutput &output);

//! \param json  what stands before the members of the message
JsonLine jsonOf(const StoredMessage &message, JsonLine json = JsonLine());

//! For people, one line a message: id, time, folder, unread mark, number, text.
//! \param zone  that the times are shown in; nothing = UTC, without an offset
void printTable(const QList<StoredMessage> &messages, StandardOutput &output,
                const std::optional<QTimeZone> &zone = std::nullopt);
//! For people, each message in full.
void printPages(const QList<StoredMessage> &messages, StandardOutput &output);

} // namespace MessageFormats
