// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "inputfile.h"

#include "filename.h"
#include "shared/interrupt.h"

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

//! Finds the beginnings in one piece of the file, from the first to the last.
class Beginnings
{
public:
    explicit Beginnings(const QByteArray &bytes)
        : bytes(bytes)
    {
    }

    //! The next one.
    //! \param done     what stands before does not count
    //! \param current  the form of the bytes from there on
    std::optional<Beginning> next(Size done, const std::optional<Utf16Converter> &current);

private:
    //! Where the letters stand next. No byte is looked at twice for it.
    struct Letters
    {
        QByteArray text;
        Size at = -1;
        bool isSought = true;

        void seek(const QByteArray &bytes);
    };

    Beginning withMark(Size position, const char *mark,
                       std::optional<Utf16Converter::ByteOrder> order) const;
    std::optional<Beginning> wideAt(Size at, const std::optional<Utf16Converter> &current) const;

    const QByteArray &bytes;
    Size done = 0;
    Letters narrow{QByteArray("BEGIN:VMSG")};
    Letters wide{QByteArray(beginWide, wideLength - 1)};
};

void Beginnings::Letters::seek(const QByteArray &bytes)
{
    if (isSought)
        at = bytes.indexOf(text, at + 1);
    isSought = false;
}

std::optional<Beginning> Beginnings::next(Size from, const std::optional<Utf16Converter> &current)
{
    done = from;
    for (;;) {
        wide.seek(bytes);
        if (current)
            narrow.seek(bytes);
        const bool isNarrow = current && narrow.at >= 0 && (wide.at < 0 || narrow.at < wide.at);
        Letters &letters = isNarrow ? narrow : wide;
        if (letters.at < 0)
            return std::nullopt;
        letters.isSought = true;
        if (letters.at < done)
            continue;
        const auto found = isNarrow ? withMark(letters.at, "\xEF\xBB\xBF", std::nullopt)
                                    : wideAt(letters.at, current);
        if (found)
            return found;
    }
}

Beginning Beginnings::withMark(Size position, const char *mark,
                               std::optional<Utf16Converter::ByteOrder> order) const
{
    const auto length = static_cast<Size>(qstrlen(mark));
    const bool isMarked =
        position - length >= done && bytes.mid(position - length, length) == QByteArray(mark);
    return {position - (isMarked ? length : 0), isMarked ? length : 0, order};
}

// A zero before the letters belongs to the first one in the other byte order, or else to what
// stands before it: to a line end of this order, or to a mark that a program put behind a message.
std::optional<Beginning> Beginnings::wideAt(Size at,
                                            const std::optional<Utf16Converter> &current) const
{
    const bool isLittle = current && current->byteOrder() == Utf16Converter::LittleEndian;
    const bool isBig = current && !isLittle;
    const bool isAligned = !current || (at - done - (current->isWithinUnit() ? 1 : 0)) % 2 == 0;
    const bool behindZero = at > done && bytes.at(at - 1) == '\0';
    const Beginning big = withMark(at - 1, "\xFE\xFF", Utf16Converter::BigEndian);
    if (behindZero && (big.markLength > 0 || !current || isBig)) {
        if (!isBig || isAligned)
            return big;
    } else if (!isLittle || !isAligned) {
        return withMark(at, "\xFF\xFE", Utf16Converter::LittleEndian);
    }
    return std::nullopt;
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
        QByteArray utf8 = convertUnread(isLast);
        if (!utf8.isEmpty() || isLast)
            return utf8;
    }
}

//! \param toEnd  nothing comes behind it
QByteArray InputFile::convertUnread(bool toEnd)
{
    QByteArray utf8;
    Size done = 0;
    const auto convertUpTo = [&](Size end) {
        const QByteArray bytes = unread.mid(done, end - done);
        utf8 += converter ? converter->convert(bytes) : bytes;
        done = end;
    };
    Beginnings beginnings(unread);
    while (const auto begin = beginnings.next(done, converter)) {
        convertUpTo(begin->position);
        utf8 += converter ? converter->finish() : QByteArray();
        converter.reset();
        if (begin->order)
            converter.emplace(*begin->order);
        done += begin->markLength;
    }
    convertUpTo(toEnd ? unread.size() : qMax(done, unread.size() - begunLength(unread)));
    if (toEnd && converter)
        utf8 += converter->finish();
    unread.remove(0, done);
    return utf8;
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
    if (descriptor < 0 || ended || Interrupt::signalNumber() != 0)
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
