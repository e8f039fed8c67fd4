// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>

#include <functional>

//! Looks at the system bus before it is used.
namespace SystemBus {

constexpr int Limit = 5000; //!< milliseconds that an answer of the bus may take

//! \param next  called with a sentence for the user, empty when the bus can be used; may be
//!              called at once, and not when the context is deleted before
void open(const QObject *context, const std::function<void(const QString &problem)> &next);

QString doesNotAnswer();

} // namespace SystemBus
