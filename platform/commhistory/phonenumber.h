// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <platformexport.h>

#include <QtCore/QString>

namespace CommHistory {

enum NormalizeFlag { NormalizeFlagNone = 0, NormalizeFlagRemovePunctuation = 1 };

//! The digits of a phone number, in ASCII. They are safe in a regular expression.
//! \param flags  NormalizeFlagRemovePunctuation; without it, the number comes back as it is
//! \return empty if the text has a letter, so that the name of a sender never becomes a number
KORVAPLATFORM_EXPORT QString normalizePhoneNumber(const QString &number, int flags);

//! How many digits from the right decide whether two numbers are the same.
KORVAPLATFORM_EXPORT int phoneNumberMatchLength();

//! Whether two parties are one: numbers when they are equal in national or international form,
//! words when they are equal but for case.
KORVAPLATFORM_EXPORT bool isSameParty(const QString &a, const QString &b);

} // namespace CommHistory
