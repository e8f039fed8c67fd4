// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QStringList>

//! The message files that the arguments of a command mean: a folder stands for the .vmg,
//! .vmsg, .txt and .xml files in it and below, by name, links not followed. A folder that cannot
//! be listed stays in the list, so that reading it tells why.
QStringList messageFiles(const QStringList &arguments);
