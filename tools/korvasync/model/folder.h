// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <korvasync/syncrecords.h>

#include <QtCore/QList>
#include <QtCore/QString>

#include <optional>

//! The store's folders by their short names: inbox, outbox, drafts, sent, my.
namespace Folder {

constexpr int None = 0;

const QList<KorvaSyncIf::LocationId> &all();

QString name(int folder); //!< empty for a folder that is none of the five
std::optional<KorvaSyncIf::LocationId> byName(const QString &name);

//! Whether the other party of its messages is the one they went to.
bool isOutbound(int folder);

} // namespace Folder
