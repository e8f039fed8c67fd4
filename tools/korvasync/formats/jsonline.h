// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

//! One JSON object on one line, its keys in the order in which they are added. Values that
//! are absent have no key.
class JsonLine
{
public:
    JsonLine &add(const char *key, qint64 value);
    JsonLine &addBool(const char *key, bool value);
    JsonLine &add(const char *key, const QString &value);
    JsonLine &add(const char *key, const JsonLine &object);
    JsonLine &addUnlessEmpty(const char *key, const QString &value);

    QByteArray line() const { return '{' + m_members + "}\n"; }

private:
    QByteArray &newMember(const char *key);

    QByteArray m_members;
};
