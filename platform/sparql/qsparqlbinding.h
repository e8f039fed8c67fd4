// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <platformexport.h>

#include <QtCore/QString>

//! One value of a result row.
class KORVAPLATFORM_EXPORT QSparqlBinding
{
public:
    QSparqlBinding() = default;
    QSparqlBinding(const QString &name, const QString &value)
        : m_name(name)
        , m_value(value)
    {
    }

    QString name() const { return m_name; }   //!< the variable, without its question mark
    QString value() const { return m_value; } //!< as text; null when the variable is unbound

private:
    QString m_name;
    QString m_value;
};
