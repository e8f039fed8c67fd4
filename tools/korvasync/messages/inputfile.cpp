// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "inputfile.h"

#include "process/interrupt.h"

#include <QtCore/QFile>

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

InputFile::InputFile(const QString &path)
{
    if (path == QLatin1String("-")) {
        descriptor = STDIN_FILENO;
        return;
    }
    descriptor = open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        errorText = QString::fromLocal8Bit(std::strerror(errno));
}

InputFile::~InputFile()
{
    if (descriptor > STDIN_FILENO)
        close(descriptor);
}

QByteArray InputFile::read()
{
    QByteArray bytes = started ? readBytes() : readStart();
    started = true;
    if (!converter)
        return bytes;
    QByteArray utf8;
    while (utf8.isEmpty() && !bytes.isEmpty()) { // a piece may be half a character
        utf8 = converter->convert(bytes);
        if (utf8.isEmpty())
            bytes = readBytes();
    }
    return utf8.isEmpty() ? converter->finish() : utf8;
}

// Takes enough bytes to know the form of the rest, and drops a byte order mark. Without a
// mark a zero beside the first letter tells UTF-16.
QByteArray InputFile::readStart()
{
    QByteArray start;
    for (QByteArray piece = readBytes(); !piece.isEmpty(); piece = readBytes()) {
        start += piece;
        if (start.size() >= 3)
            break;
    }
    if (start.startsWith("\xEF\xBB\xBF"))
        return start.mid(3);
    if (start.size() < 2)
        return start;
    const bool markedLittle = start.startsWith("\xFF\xFE");
    const bool markedBig = start.startsWith("\xFE\xFF");
    if (markedLittle || (start.at(0) != '\0' && start.at(1) == '\0'))
        converter.emplace(Utf16Converter::LittleEndian);
    else if (markedBig || (start.at(0) == '\0' && start.at(1) != '\0'))
        converter.emplace(Utf16Converter::BigEndian);
    return markedLittle || markedBig ? start.mid(2) : start;
}

QByteArray InputFile::readBytes()
{
    constexpr int pieceSize = 64 * 1024;
    constexpr int pollMilliseconds = 200; // after which a signal is looked for
    if (descriptor < 0 || ended)
        return QByteArray();
    pollfd waiting{descriptor, POLLIN, 0};
    while (poll(&waiting, 1, pollMilliseconds) <= 0) {
        if (Interrupt::signalNumber() != 0)
            return QByteArray();
    }
    std::array<char, pieceSize> piece;
    const ssize_t count = ::read(descriptor, piece.data(), piece.size());
    if (count < 0)
        errorText = QString::fromLocal8Bit(std::strerror(errno));
    ended = count <= 0;
    if (ended)
        return QByteArray();
    consumed += count;
    return QByteArray(piece.data(), static_cast<int>(count));
}
