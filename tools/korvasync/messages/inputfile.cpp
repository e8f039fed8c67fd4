// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "inputfile.h"

#include "filename.h"
#include "process/interrupt.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

using Size = decltype(QByteArray().size());

//! Where a message begins in another encoding than the bytes before it.
struct Beginning
{
    Size position = 0;
    Size markLength = 0;                            // of a byte order mark there
    std::optional<Utf16Converter::ByteOrder> order; // none = UTF-8
};

constexpr char beginWide[] = "B\0E\0G\0I\0N\0:\0V\0M\0S\0G"; // in both orders
constexpr Size wideLength = sizeof beginWide;                // with its last zero
constexpr Size longestBeginning = wideLength + 3;            // with a mark

Beginning withMark(const QByteArray &bytes, Size position, const char *mark,
                   std::optional<Utf16Converter::ByteOrder> order)
{
    const auto length = static_cast<Size>(qstrlen(mark));
    const bool isMarked =
        position >= length && bytes.mid(position - length, length) == QByteArray(mark);
    return {position - (isMarked ? length : 0), isMarked ? length : 0, order};
}

std::optional<Beginning> narrowBeginningIn(const QByteArray &bytes)
{
    const auto at = bytes.indexOf("BEGIN:VMSG");
    return at < 0 ? std::nullopt : std::optional(withMark(bytes, at, "\xEF\xBB\xBF", {}));
}

// A zero before the letters belongs to the first one in the other byte order, or else to what
// stands before it: to a line end of this order, or to a mark that a program put behind a message.
std::optional<Beginning> wideBeginningIn(const QByteArray &bytes,
                                         const std::optional<Utf16Converter> &current)
{
    const bool isLittle = current && current->byteOrder() == Utf16Converter::LittleEndian;
    const bool isBig = current && !isLittle;
    constexpr std::string_view letters(beginWide, wideLength - 1);
    const std::string_view all(bytes.constData(), static_cast<size_t>(bytes.size()));
    for (size_t found = all.find(letters); found != all.npos;
         found = all.find(letters, found + 1)) {
        const auto at = static_cast<Size>(found);
        const bool isAligned = !current || (at - (current->isWithinUnit() ? 1 : 0)) % 2 == 0;
        const bool behindZero = at > 0 && bytes.at(at - 1) == '\0';
        const Beginning big = withMark(bytes, at - 1, "\xFE\xFF", Utf16Converter::BigEndian);
        if (behindZero && (big.markLength > 0 || !current || isBig)) {
            if (!isBig || isAligned)
                return big;
        } else if (!isLittle || !isAligned) {
            return withMark(bytes, at, "\xFF\xFE", Utf16Converter::LittleEndian);
        }
    }
    return std::nullopt;
}

std::optional<Beginning> beginningIn(const QByteArray &bytes,
                                     const std::optional<Utf16Converter> &current)
{
    const auto wide = wideBeginningIn(bytes, current);
    const auto narrow = current ? narrowBeginningIn(bytes) : std::nullopt;
    const bool isWide = wide && (!narrow || wide->position < narrow->position);
    return isWide ? wide : narrow;
}

//! How many of the last bytes may be the first part of such a beginning. Others are not kept
//! back: who sends a message through a pipe waits for its result before sending the next.
Size begunLength(const QByteArray &bytes)
{
    const QByteArray wide = QByteArray::fromRawData(beginWide, wideLength);
    static const std::array<QByteArray, 6> beginnings = {wide,
                                                         '\0' + wide,
                                                         "\xFF\xFE" + wide,
                                                         "\xFE\xFF" + ('\0' + wide),
                                                         "BEGIN:VMSG",
                                                         "\xEF\xBB\xBF"
                                                         "BEGIN:VMSG"};
    for (Size length = qMin(bytes.size(), longestBeginning); length > 0; --length) {
        const char *const last = bytes.cend() - length;
        for (const QByteArray &beginning : beginnings) {
            if (beginning.at(0) == *last && beginning.size() >= length
                && std::memcmp(beginning.constData(), last, static_cast<size_t>(length)) == 0)
                return length;
        }
    }
    return 0;
}

} // namespace

InputFile::InputFile(const QString &path, const QByteArray &readAhead)
    : ahead(readAhead)
{
    if (!readAhead.isNull())
        return;
    if (path == QLatin1String("-")) {
        descriptor = STDIN_FILENO;
        return;
    }
    descriptor = open(FileName::encode(path).constData(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        trouble = Text::ofSystemError(errno);
    struct stat opened = {};
    neverWaits = fstat(descriptor, &opened) == 0 && S_ISREG(opened.st_mode);
}

InputFile::~InputFile()
{
    if (descriptor > STDIN_FILENO)
        close(descriptor);
}

QByteArray InputFile::read()
{
    for (;;) {
        const QByteArray piece = started ? readBytes() : readStart();
        started = true;
        const bool isLast = piece.isEmpty();
        unread += piece;
        const auto begin = beginningIn(unread, converter);
        const Size end = begin ? begin->position
            : isLast           ? unread.size()
                               : unread.size() - begunLength(unread);
        QByteArray utf8 = convert(unread.left(end));
        unread.remove(0, begin ? begin->position + begin->markLength : end);
        if (begin || isLast)
            utf8 += converter ? converter->finish() : QByteArray();
        if (begin) {
            converter.reset();
            if (begin->order)
                converter.emplace(*begin->order);
        }
        if (!utf8.isEmpty() || (isLast && !begin))
            return utf8;
    }
}

QByteArray InputFile::convert(const QByteArray &bytes)
{
    return converter ? converter->convert(bytes) : bytes;
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
    if (!ahead.isEmpty()) {
        consumed += ahead.size();
        return std::exchange(ahead, QByteArray());
    }
    if (descriptor < 0 || ended)
        return QByteArray();
    pollfd waiting{descriptor, POLLIN, 0};
    while (!neverWaits && poll(&waiting, 1, pollMilliseconds) <= 0) {
        if (Interrupt::signalNumber() != 0)
            return QByteArray();
    }
    std::array<char, pieceSize> piece;
    const ssize_t count = ::read(descriptor, piece.data(), piece.size());
    if (count < 0)
        trouble = Text::ofSystemError(errno);
    ended = count <= 0;
    if (ended)
        return QByteArray();
    consumed += count;
    return QByteArray(piece.data(), static_cast<int>(count));
}
