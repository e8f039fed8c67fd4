// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QStringList>

//! What the store answers to a query.
class QSparqlResultPrivate
{
public:
    QStringList rows; //!< with one column
    bool hasError = true;
    int row = -1; //!< the current one; before the first at the start
};
