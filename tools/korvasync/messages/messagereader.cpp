// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "messagereader.h"

#include "process/interrupt.h"

MessageReader::MessageReader(const QString &path)
    : file(path)
    , errorText(file.error())
{
}

std::optional<MessageReader::Message> MessageReader::next()
{
    // All of a message is kept until its end is found.
    constexpr qint64 longestMessage = qint64(256) * 1024 * 1024;
    constexpr int startSize = 256;
    VMessageScanner::Message found;
    while (!scanner.next(&found)) {
        if (ended || !errorText.isEmpty())
            return std::nullopt;
        const QByteArray piece = file.read();
        errorText = file.error();
        ended = piece.isEmpty();
        if (ended && Interrupt::signalNumber() != 0)
            return std::nullopt; // what is there of the next message is not its all
        if (firstBytes.size() < startSize)
            firstBytes += piece.left(startSize);
        if (file.bytesRead() - readAtLastMessage > longestMessage)
            errorText = QStringLiteral("no message ends within 256 MiB");
        else if (!ended)
            scanner.add({piece.constData(), static_cast<size_t>(piece.size())});
        else
            scanner.finish();
    }
    readAtLastMessage = file.bytesRead();
    return Message{QByteArray(found.bytes.data(), static_cast<int>(found.bytes.size())),
                   found.line};
}
