// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QVector>

//! A query whose quoted texts are parameters ~text0, ~text1 and so on.
struct ParameterQuery
{
    QByteArray text;
    QVector<QByteArray> values;
};

//! Makes parameters of the quoted texts, so that queries which differ in these alone are one
//! statement, prepared once. Without values when the query must stay as it is.
ParameterQuery withParameters(const QByteArray &query);

//! Whether no text can be a pattern that takes for ever to look for: "(a*)*" is one, "5550100$"
//! is none.
bool hasPlainTexts(const ParameterQuery &query);
