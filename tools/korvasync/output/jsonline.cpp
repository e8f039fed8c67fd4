// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "jsonline.h"

static QByteArray quoted(const QString &text)
{
    const QByteArray utf8 = text.toUtf8();
    QByteArray json;
    json.reserve(utf8.size() + 2);
    json += '"';
    for (const char c : utf8) {
        if (c == '"' || c == '\\')
            json += '\\';
        if (c == '\n')
            json += "\\n";
        else if (c == '\t')
            json += "\\t";
        else if (static_cast<unsigned char>(c) < 0x20)
            json += "\\u00" + QByteArray(1, c).toHex();
        else
            json += c;
    }
    return json + '"';
}

QByteArray &JsonLine::newMember(const char *key)
{
    if (!members.isEmpty())
        members += ',';
    return members.append('"').append(key).append("\":");
}

JsonLine &JsonLine::add(const char *key, qint64 value)
{
    newMember(key) += QByteArray::number(value);
    return *this;
}

JsonLine &JsonLine::addBool(const char *key, bool value)
{
    newMember(key) += value ? "true" : "false";
    return *this;
}

JsonLine &JsonLine::add(const char *key, const QString &value)
{
    newMember(key) += quoted(value);
    return *this;
}

JsonLine &JsonLine::add(const char *key, const JsonLine &object)
{
    newMember(key) += '{' + object.members + '}';
    return *this;
}

JsonLine &JsonLine::addUnlessEmpty(const char *key, const QString &value)
{
    return value.isEmpty() ? *this : add(key, value);
}
