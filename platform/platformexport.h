// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/qglobal.h>

//! Marks what leaves libkorvaplatform. On the ELF systems this library runs on,
//! one spelling serves the library and its users.
#define KORVAPLATFORM_EXPORT Q_DECL_EXPORT
