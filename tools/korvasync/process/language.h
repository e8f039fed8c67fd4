// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QStringList>

class QTranslator;

//! The language in which a person reads what the client says.
namespace Language {

//! The locales that the environment names, the best first, as gettext's programs take them from
//! LC_ALL, LC_MESSAGES, LANG and LANGUAGE. Empty = English.
QStringList wanted();

//! Loads the catalogue of the first language that has one.
//! \return false when the English of the source is what is wanted, or all there is
bool load(QTranslator &translator, const QStringList &locales);

} // namespace Language
