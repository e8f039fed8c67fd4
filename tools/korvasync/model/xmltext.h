// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QString>

//! XML 1.0, section 2.2: control characters are no text, not even as references.
namespace XmlText {

bool canHold(uint codePoint);
bool canHold(const QString &text);

//! The text with U+FFFD for each character that XML cannot hold.
//! \param replaced  if given, grows by the count of those
QString held(QString text, int *replaced = nullptr);

} // namespace XmlText
