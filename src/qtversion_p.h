// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QHash>

// All that differs between Qt 5.15 and Qt 6 for this library.

#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
using HashSeed = size_t;
#else
using HashSeed = uint;
#endif
