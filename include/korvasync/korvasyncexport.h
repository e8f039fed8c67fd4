// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/qglobal.h>

//! Marks what leaves libkorvasync. On the ELF systems this library runs on, one
//! spelling serves the library and its users.
#define KORVASYNC_EXPORT Q_DECL_EXPORT
