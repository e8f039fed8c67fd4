// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/qglobal.h>

//! Marks what libkorvaplatform exports. Library and users share one definition: on ELF systems,
//! nothing has to be imported.
#define KORVAPLATFORM_EXPORT Q_DECL_EXPORT
