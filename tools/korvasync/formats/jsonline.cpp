// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "jsonline.h"

#include "shared/terminaltext.h"

#include <algorithm>

// What a terminal would act on, escaped: to programs it is the same text.
static QByteArray withoutHarm(const QByteArray &json)
{
    const QString text = QString::fromUtf8(json);
    QString escaped;
    for (const QChar c : text) {
        if (isHarmless(c))
            escaped += c;
        else
            escaped += QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
    }
    return escaped.toUtf8();
}

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
    json += '"';
    const bool isSafe = std::all_of(text.cbegin(), text.cend(), [](QChar c) {
        return c.unicode() < 0x20 || isHarmless(c); // those below are escaped by now
    });
    return isSafe ? json : withoutHarm(json);
}

QByteArray &JsonLine::newMember(const char *key)
{
    if (!m_members.isEmpty())
        m_members += ',';
    return m_members.append('"').append(key).append("\":");
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
    newMember(key) += '{' + object.m_members + '}';
    return *this;
}

JsonLine &JsonLine::addUnlessEmpty(const char *key, const QString &value)
{
    return value.isEmpty() ? *this : add(key, value);
}
