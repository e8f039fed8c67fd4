// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

//! What a person may have meant by a mistyped word.
namespace Suggestion {

//! How many letters have to be put in, left out, exchanged or swapped with their neighbour to make
//! one word of the other, upper and lower case being alike; \a most + 1 when these are more.
int distance(const QString &typed, const QString &word, int most);

//! The one of \a words that is nearest to \a typed; empty when none is near.
QString nearest(const QString &typed, const QStringList &words);

//! \a sentence and, where one of \a words is near, the question whether that was meant.
QString added(const QString &sentence, const QString &typed, const QStringList &words);

} // namespace Suggestion
