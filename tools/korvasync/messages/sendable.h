// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QString>

//! A vMessage as it is handed to SendSmsInterface, which reads as many of its bytes as it has
//! UTF-16 units: lengthened behind its end by what other scripts need more.
QString sendable(const QString &vMessage);
