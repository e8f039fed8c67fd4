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

} // namespace CommHistory
