// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "phonenumber.h"

#include <phonenumbers/phonenumberutil.h>

#include <algorithm>
#include <iterator>
#include <string>

namespace CommHistory {

QString normalizePhoneNumber(const QString &number, int flags)
{
    const bool hasLetter = std::any_of(number.cbegin(), number.cend(), [](QChar c) {
        return c.isLetter() || c.isSurrogate(); // beyond the BMP there are no dialled digits
    });
    if (hasLetter)
        return QString();
    if (!(flags & NormalizeFlagRemovePunctuation))
        return number;
    // Nearly all numbers, for which the library with its tables would have to be loaded.
    const auto isAscii = [](QChar c) { return c.unicode() < 0x80; };
    if (std::all_of(number.cbegin(), number.cend(), isAscii)) {
        QString digits;
        digits.reserve(number.size());
        std::copy_if(number.cbegin(), number.cend(), std::back_inserter(digits),
                     [](QChar c) { return c.isDigit(); });
        return digits;
    }
    std::string digits = number.toStdString();
    i18n::phonenumbers::PhoneNumberUtil::GetInstance()->NormalizeDigitsOnly(&digits);
    return QString::fromStdString(digits);
}

int phoneNumberMatchLength() { return 7; }

} // namespace CommHistory
