// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "phonenumber.h"

#include <phonenumbers/phonenumberutil.h>

#include <algorithm>
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
    std::string digits = number.toStdString();
    i18n::phonenumbers::PhoneNumberUtil::GetInstance()->NormalizeDigitsOnly(&digits);
    return QString::fromStdString(digits);
}

int phoneNumberMatchLength() { return 7; }

} // namespace CommHistory
