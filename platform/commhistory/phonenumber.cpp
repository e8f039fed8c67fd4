// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "phonenumber.h"

#include <phonenumbers/phonenumberutil.h>

#include <algorithm>
#include <iterator>
#include <string>

namespace CommHistory {

namespace {

bool isWord(const QString &party)
{
    return std::any_of(party.cbegin(), party.cend(), [](QChar c) {
        return c.isLetter() || c.isSurrogate(); // beyond the BMP there are no dialled digits
    });
}

} // namespace

QString normalizePhoneNumber(const QString &number, int flags)
{
    if (isWord(number))
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

bool isSameParty(const QString &a, const QString &b)
{
    if (a == b)
        return true;
    if (isWord(a) || isWord(b)) {
        const auto folded = [](const QString &word) {
            return word.normalized(QString::NormalizationForm_C).toCaseFolded();
        };
        return isWord(a) == isWord(b) && folded(a) == folded(b);
    }
    using i18n::phonenumbers::PhoneNumberUtil;
    const auto match = PhoneNumberUtil::GetInstance()->IsNumberMatchWithTwoStrings(a.toStdString(),
                                                                                   b.toStdString());
    return match == PhoneNumberUtil::NSN_MATCH || match == PhoneNumberUtil::EXACT_MATCH;
}

} // namespace CommHistory
