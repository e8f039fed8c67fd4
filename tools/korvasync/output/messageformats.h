// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "store/storedmessage.h"

#include <QtCore/QByteArray>
#include <QtCore/QList>

//! The forms in which messages of the store are printed.
namespace MessageFormats {

QByteArray ndjson(const StoredMessage &message);
QByteArray vmsg(const StoredMessage &message);
//! One line a message: id, time, folder, unread mark, number, text.
QByteArray table(const QList<StoredMessage> &messages);
//! One message in full.
QByteArray page(const StoredMessage &message);

} // namespace MessageFormats
