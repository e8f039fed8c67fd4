// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "filename.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace FileName {

constexpr ushort FirstOfBytes = 0xDC00;

// Qt takes a byte order mark at the beginning away.
static QString textOf(QByteArray bytes)
{
    const QByteArray mark("\xEF\xBB\xBF");
    QString marks;
    for (; bytes.startsWith(mark); bytes.remove(0, mark.size()))
        marks += QChar(QChar::ByteOrderMark);
    return marks + QString::fromUtf8(bytes);
}

QString decode(const QByteArray &name)
{
    constexpr int longestCharacter = 4; // in bytes
    QString text = textOf(name);
    if (text.toUtf8() == name)
        return text;
    text.clear();
    for (int i = 0; i < name.size();) {
        int length = 1;
        QByteArray bytes = name.mid(i, length);
        while (length < longestCharacter && textOf(bytes).toUtf8() != bytes)
            bytes = name.mid(i, ++length);
        const QString character = textOf(bytes);
        if (character.toUtf8() == bytes) {
            text += character;
            i += length;
        } else {
            text += QChar(static_cast<ushort>(FirstOfBytes + static_cast<uchar>(name.at(i))));
            ++i;
        }
    }
    return text;
}

QByteArray encode(const QString &name)
{
    if (std::none_of(name.cbegin(), name.cend(), [](QChar c) { return c.isLowSurrogate(); }))
        return name.toUtf8();
    QByteArray bytes;
    QString characters; // not encoded yet
    for (const QChar c : name) {
        const bool isByte = c.isLowSurrogate()
            && (characters.isEmpty() || !characters.at(characters.size() - 1).isHighSurrogate());
        if (!isByte) {
            characters += c;
            continue;
        }
        bytes += characters.toUtf8() + static_cast<char>(c.unicode() - FirstOfBytes);
        characters.clear();
    }
    return bytes + characters.toUtf8();
}

qint64 size(const QString &name)
{
    std::error_code error;
    const std::uintmax_t bytes = std::filesystem::file_size(encode(name).toStdString(), error);
    return error ? 0 : static_cast<qint64>(bytes);
}

} // namespace FileName
