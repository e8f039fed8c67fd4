// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "input/filename.h"
#include "input/filesahead.h"
#include "input/itemreader.h"
#include "model/fingerprint.h"
#include "options/command.h"
#include "process/diagnostics.h"
#include "process/text.h"
#include "results.h"
#include "store/answer.h"

//! How files are read.
struct ReadingOptions
{
    // --from's words for objects between BEGIN: and END: lines.
    static constexpr const char *MessageForm = "vmsg";
    static constexpr const char *CallForm = "entries";

    ItemReader::Form form = ItemReader::AnyForm;
    QTimeZone localZone; //!< where times without a zone are meant

    //! Takes the options that all who read files have.
    //! \param textForm  MessageForm or CallForm
    //! \return false when one is not as it must be, which is told on stderr
    bool take(const Invocation &invocation, const char *textForm);
    static QList<QCommandLineOption> declared(const char *textForm);
};

//! One item of the input: new, or why it is none.
template <typename New>
struct Judged
{
    New item;
    Refusal refusal = Refusal::None;
    Reason detail;                          //!< instead of the refusal's own words
    Answer answer = Answer::Finished;       //!< of the store, where it had to be read for this item
    std::optional<Fingerprint> alternative; //!< under which the store may have it as well
    std::optional<Fingerprint> atAnyTime;   //!< where items may get the time of the clock
    bool hasOwnTime = true;                 //!< else it equals any that has its atAnyTime
};

//! Reads files and judges one item of them after the other.
//!
//! \tparam Kind  what is read, AddableItems or AddableCalls:
//!   - New, an item with its fingerprint
//!   - index, in which each file begins anew
//!   - judge() for an item of a file; noItem, the code for a file that has none
template <typename Kind>
class Judging
{
public:
    using Item = Judged<typename Kind::New>;

    Judging(Kind &kind, ItemReader::Form form, FilesAhead &files)
        : kind(kind)
        , form(form)
        , files(files)
    {
    }

    //! \param goesOn  asked before each item
    //! \param take    gets a result with source and detail, the item, and its bytes
    //! \param keep    gets what is left of an earlier file of rejects, before the next item; empty
    //!                at the end of a file that holds more than items
    //! \return whether all was read to its end; else nobody knows how much is left, nor what was
    //!         passed over
    template <typename GoesOn, typename Take, typename Keep>
    bool run(const GoesOn &goesOn, const Take &take, const Keep &keep);

    //! The file that the item in hand is in.
    QString path() const { return currentPath; }

    //! What stands in folders and was not read.
    QStringList passedOver() { return files.paths().passedOver; }

    //! How far it is, from 0 to 1; none = not known.
    std::optional<double> partDone();

private:
    template <typename GoesOn, typename Take, typename Keep>
    bool readFile(const FilesAhead::File &file, const GoesOn &goesOn, const Take &take,
                  const Keep &keep);
    template <typename Take>
    void noteFileWithoutItems(const QString &path, const ItemReader &reader, const Take &take);
    template <typename Take>
    void judge(const InputItem &item, ItemResult result, const Take &take);

    static Item refused(Refusal refusal)
    {
        Item item;
        item.refusal = refusal;
        return item;
    }

    Kind &kind;
    const ItemReader::Form form;
    FilesAhead &files;
    QString currentPath;
    std::optional<qint64> bytesTotal; // of all files, once somebody asked; 0 = not known
    qint64 bytesDone = 0;
};

template <typename Kind>
template <typename GoesOn, typename Take, typename Keep>
bool Judging<Kind>::run(const GoesOn &goesOn, const Take &take, const Keep &keep)
{
    while (const auto file = files.next()) {
        if (!goesOn() || !readFile(*file, goesOn, take, keep))
            return false;
    }
    return goesOn(); // else files may not have been found
}

template <typename Kind>
std::optional<double> Judging<Kind>::partDone()
{
    if (!bytesTotal) {
        bytesTotal = 0;
        const QStringList paths = files.paths().files;
        if (!paths.contains(QLatin1String("-"))) {
            for (const QString &path : paths)
                *bytesTotal += FileName::size(path);
        }
    }
    if (*bytesTotal == 0)
        return std::nullopt;
    return static_cast<double>(bytesDone) / static_cast<double>(*bytesTotal);
}

template <typename Kind>
template <typename GoesOn, typename Take, typename Keep>
bool Judging<Kind>::readFile(const FilesAhead::File &file, const GoesOn &goesOn, const Take &take,
                             const Keep &keep)
{
    const QString &path = file.path;
    currentPath = path;
    ItemReader reader(path, form, file.bytes);
    kind.index.beginFile();
    bool hasItems = false;
    const qint64 before = bytesDone;
    while (goesOn()) {
        const auto item = reader.next();
        const QByteArray leftovers = reader.takeLeftovers();
        if (!leftovers.isEmpty())
            keep(leftovers);
        if (!item)
            break;
        hasItems = true;
        ItemResult result;
        result.source = path + QLatin1Char(':') + QString::number(item->line);
        judge(*item, result, take);
        bytesDone = before + reader.bytesRead();
    }
    bytesDone = before + reader.bytesRead();
    if (!goesOn())
        return false;
    if (hasItems && reader.hasPassedOver())
        keep(QByteArray());
    if (!reader.error().isEmpty()) {
        ItemResult result;
        result.source = path;
        result.detail = reader.error();
        take(result, refused(Refusal::Unreadable), QByteArray());
    } else if (!hasItems) {
        noteFileWithoutItems(path, reader, take);
    }
    return true;
}

// An empty file is what a list of nothing gives: there is nothing to do.
template <typename Kind>
template <typename Take>
void Judging<Kind>::noteFileWithoutItems(const QString &path, const ItemReader &reader,
                                         const Take &take)
{
    if (reader.isEmpty() || reader.isEmptyBackup()) {
        Diagnostics::warn(Text::tr("%1 is empty").arg(path));
        return;
    }
    ItemResult result;
    result.source = path + QLatin1String(":1");
    if (form == ItemReader::AndroidXml)
        result.detail = Text::reason("not an Android backup, as --from says");
    constexpr int mostOfFile = 1024 * 1024; // which is still there, so that it can be read anew
    QByteArray bytes = reader.passedOver();
    if (path != QLatin1String("-") && bytes.size() > mostOfFile)
        bytes.clear();
    take(result, refused(Kind::noItem), bytes);
}

template <typename Kind>
template <typename Take>
void Judging<Kind>::judge(const InputItem &item, ItemResult result, const Take &take)
{
    const Item judged = kind.judge(item);
    result.detail = judged.detail;
    if (item.isTooLong)
        result.detail = Text::reason("longer than 32 MiB, so not kept");
    else if (item.kind == InputItem::CutFile)
        result.detail = Text::reason("the file is cut off here, so some may be missing");
    take(result, judged, item.bytes);
}
