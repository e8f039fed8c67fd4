// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

//! Phone numbers and the words that stand in their place, such as "InfoPost".
namespace Number {

//! What two spellings of one party have in common: the last seven digits of a number, so
//! that the international and the national form are alike; a word as it stands.
QString comparable(const QString &number);

//! Whether a party that has no conversation joins that of another which ends like it, a dot being
//! any character. A word with signs that would make more of it, or a very long one, does not.
bool isSoughtByEnd(const QString &comparable);

//! All digits of a number but the zeros in front, which stand for a prefix.
QString significantDigits(const QString &number);

//! The numbers that stand in one place, joined by "~", ";" or "," as some programs do it for
//! several people; the text itself where it is one number or a word.
QStringList joined(const QString &number);

//! The numbers of a place, each of them once, in whatever forms it stands there. What has nothing
//! to see in it, or a control character, is none.
QStringList parties(const QStringList &numbers);

//! What was meant by a number of a vMessage. The library takes the UTF-8 of a number for
//! Latin-1, so a word such as "Bänk" stands in the store, and in every vMessage that comes
//! from there, as "BÃ¤nk". Undone here, it is shown right, stays what it is when it is
//! added again, and is equal to itself.
QString asMeant(const QString &number);
//! As what is meant stands in the store.
QString asStored(const QString &number);

} // namespace Number
