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

constexpr char BeginWide[] = "B\0E\0G\0I\0N\0:\0V\0M\0S\0G"; // in both orders
constexpr Size WideLength = sizeof BeginWide;                // with its last zero
constexpr Size LongestBeginning = WideLength + 3;            // with a mark

//! Finds the beginnings in one piece of the file, from the first to the last.
class Beginnings
{
public:
    explicit Beginnings(const QByteArray &bytes)
        : m_bytes(bytes)
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

    const QByteArray &m_bytes;
    Size m_done = 0;
    Letters m_narrow{QByteArray("BEGIN:VMSG")};
    Letters m_wide{QByteArray(BeginWide, WideLength - 1)};
};

void Beginnings::Letters::seek(const QByteArray &bytes)
{
    if (isSought)
        at = bytes.indexOf(text, at + 1);
    isSought = false;
}

std::optional<Beginning> Beginnings::next(Size from, const std::optional<Utf16Converter> &current)
{
    m_done = from;
    for (;;) {
        m_wide.seek(m_bytes);
        if (current)
            m_narrow.seek(m_bytes);
        const bool isNarrow =
            current && m_narrow.at >= 0 && (m_wide.at < 0 || m_narrow.at < m_wide.at);
        Letters &letters = isNarrow ? m_narrow : m_wide;
        if (letters.at < 0)
            return std::nullopt;
        letters.isSought = true;
        if (letters.at < m_done)
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
        position - length >= m_done && m_bytes.mid(position - length, length) == QByteArray(mark);
    return {position - (isMarked ? length : 0), isMarked ? length : 0, order};
}

// A zero before the letters belongs to the first one in the other byte order, or else to what
// stands before it: to a line end of this order, or to a mark that a program put behind a message.
std::optional<Beginning> Beginnings::wideAt(Size at,
                                            const std::optional<Utf16Converter> &current) const
{
    const bool isLittle = current && current->byteOrder() == Utf16Converter::LittleEndian;
    const bool isBig = current && !isLittle;
    const bool isAligned = !current || (at - m_done - (current->isWithinUnit() ? 1 : 0)) % 2 == 0;
    const bool behindZero = at > m_done && m_bytes.at(at - 1) == '\0';
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
    const QByteArray wide = QByteArray::fromRawData(BeginWide, WideLength);
    static const std::array<QByteArray, 6> beginnings = {wide,
                                                         '\0' + wide,
                                                         "\xFF\xFE" + wide,
                                                         "\xFE\xFF" + ('\0' + wide),
                                                         "BEGIN:VMSG",
                                                         "\xEF\xBB\xBF"
                                                         "BEGIN:VMSG"};
    for (Size length = qMin(bytes.size(), LongestBeginning); length > 0; --length) {
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
    : m_ahead(readAhead)
{
    if (!readAhead.isNull())
        return;
    if (path == QLatin1String("-")) {
        m_descriptor = STDIN_FILENO;
        return;
    }
    m_descriptor = open(FileName::encode(path).constData(), O_RDONLY | O_CLOEXEC);
    if (m_descriptor < 0)
        m_trouble = Text::ofSystemError(errno);
    struct stat opened = {};
    m_neverWaits = fstat(m_descriptor, &opened) == 0 && S_ISREG(opened.st_mode);
}

InputFile::~InputFile()
{
    if (m_descriptor > STDIN_FILENO)
        close(m_descriptor);
}

QByteArray InputFile::read()
{
    for (;;) {
        const QByteArray piece = m_started ? readBytes() : readStart();
        m_started = true;
        const bool isLast = piece.isEmpty();
        m_unread += piece;
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
        const QByteArray bytes = m_unread.mid(done, end - done);
        utf8 += m_converter ? m_converter->convert(bytes) : bytes;
        done = end;
    };
    Beginnings beginnings(m_unread);
    while (const auto begin = beginnings.next(done, m_converter)) {
        convertUpTo(begin->position);
        utf8 += m_converter ? m_converter->finish() : QByteArray();
        m_converter.reset();
        if (begin->order)
            m_converter.emplace(*begin->order);
        done += begin->markLength;
    }
    convertUpTo(toEnd ? m_unread.size() : qMax(done, m_unread.size() - begunLength(m_unread)));
    if (toEnd && m_converter)
        utf8 += m_converter->finish();
    m_unread.remove(0, done);
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
        m_converter.emplace(Utf16Converter::LittleEndian);
    else if (markedBig || (start.at(0) == '\0' && start.at(1) != '\0'))
        m_converter.emplace(Utf16Converter::BigEndian);
    return markedLittle || markedBig ? start.mid(2) : start;
}

QByteArray InputFile::readBytes()
{
    constexpr int pieceSize = 64 * 1024;
    constexpr int pollMilliseconds = 200; // after which a signal is looked for
    if (!m_ahead.isEmpty()) {
        m_consumed += m_ahead.size();
        return std::exchange(m_ahead, QByteArray());
    }
    if (m_descriptor < 0 || m_ended || Interrupt::signalNumber() != 0)
        return QByteArray();
    pollfd waiting{m_descriptor, POLLIN, 0};
    while (!m_neverWaits && poll(&waiting, 1, pollMilliseconds) <= 0) {
        if (Interrupt::signalNumber() != 0)
            return QByteArray();
    }
    std::array<char, pieceSize> piece = {};
    const ssize_t count = ::read(m_descriptor, piece.data(), piece.size());
    if (count < 0)
        m_trouble = Text::ofSystemError(errno);
    m_ended = count <= 0;
    if (m_ended)
        return QByteArray();
    m_consumed += count;
    return QByteArray(piece.data(), static_cast<int>(count));
}
