// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "formats/deadends.h"
#include "formats/elementscanner.h"
#include "inputfile.h"

#include <vmessage/vmessagescanner.h>

#include <QtCore/QList>

#include <optional>
#include <string_view>

//! What of a file stands for itself: a message, a call, or what is neither.
struct InputItem
{
    enum Kind {
        Message,       //!< a vMessage
        CallEntry,     //!< a call-history entry
        AndroidSms,    //!< an element of an Android backup, as the next two
        AndroidMms,    //!< not with certainty whole
        AndroidCall,   //!< only its start tag
        ForeignObject, //!< from another BEGIN: line to its END: line
        CutFile        //!< not an item: here an Android backup or the next BEGIN:VMSG is cut off
    };

    Kind kind = Message;
    QByteArray bytes;       //!< as they were, in UTF-8
    quint64 line = 0;       //!< where it begins, from 1
    bool isTooLong = false; //!< and therefore without bytes

    QString firstLine() const; //!< without what stands around its words
};

//! The items of one file, one after the other, of all kinds mixed: a file of rejects may hold
//! them all. What stands between them is passed over, but for the remains of a message without
//! its BEGIN:VMSG, which are one item, up to their END:VMSG. Memory is bounded, whatever the file
//! holds: by the longest item, and an item is not kept beyond 32 MiB.
//!
//! Lines that begin with "# " between two items are passed over whole, as rejects have the
//! reasons in them. In a file that begins with a tag, so are comments and CDATA sections. The
//! line with a reason also ends any item that was cut before it.
class ItemReader
{
public:
    enum Form { AnyForm, TextObjects, AndroidXml };

    //! \param path       "-" is standard input
    //! \param form       which kinds are looked for: all, those between BEGIN: and END: lines, or
    //!                   elements
    //! \param readAhead  as for InputFile
    explicit ItemReader(const QString &path, Form form = AnyForm,
                        const QByteArray &readAhead = QByteArray());

    //! Nothing at the end, after an error and when a signal came.
    std::optional<InputItem> next();

    Reason error() const { return trouble; } //!< empty = none so far
    qint64 bytesRead() const { return file.bytesRead(); }

    //! Of a file of rejects, what was read since the last call: reasons without an item behind
    //! them, and what stands there instead.
    QByteArray takeLeftovers();

    //! Whether something was passed over that is neither blank nor among the leftovers. In a file
    //! that begins with a tag it is not looked for.
    bool hasPassedOver() const { return somethingIsPassedOver; }

    //! For a file that had no item.
    QByteArray passedOver() const; //!< all of it; empty when it is longer than an item may be
    bool isEmpty() const { return !hasContent; } //!< but for blanks and reasons
    //! Of Android, and whole.
    bool isEmptyBackup() const { return isBackup && rootIsClosed && !hasOtherElement; }

private:
    using Size = decltype(QByteArray().size());
    struct Mark
    {
        Size position;
        quint64 line;
    };
    enum Place { Between, PassedLine, PassedSection, Object, VMessage, Element, BrokenElement };

    bool fill();
    bool finish();
    bool step();
    bool stepBetween();
    bool stepPassedSection();
    bool stepObject();
    bool stepVMessage();
    bool stepElement();
    bool stepBrokenElement();

    quint64 offset() const { return discarded + static_cast<quint64>(position); }
    std::string_view rest() const;
    std::string_view view(Size from, Size to) const;
    std::optional<std::string_view> lineHead() const;
    bool takeLine();
    void openRemark(std::string_view head);
    void closeLeftover(bool beforeItem);
    void dropLeftover();
    void noteContent(std::string_view head);

    bool openObject(std::string_view head);
    bool openMarkup();
    bool openSection(std::string_view text, std::string_view start, const char *end);
    bool openRoot(std::string_view name);
    void open(Place itemPlace, InputItem::Kind itemKind);
    void openMessage();
    void noteOtherObject(std::string_view head);
    void closeMessage();
    bool takeMessageLine();
    bool emitMessage(Size end, bool isComplete);
    void goBackTo(const Mark &mark);
    void noteChatter(std::string_view head);
    void endChatter();
    void boundChatter();
    bool isDeadEnd();
    void breakElement(bool atReason);
    void emitUpTo(Size length);
    void emitItem(Size end);
    void emitTooLong();

    InputFile file;
    const Form form;
    bool ended = false;
    Reason trouble;

    QByteArray buffer;     // from the open item, else from the unread byte on
    quint64 discarded = 0; // bytes of the file before those
    Size position = 0;     // of the first byte that was not read
    quint64 line = 1;      // which that byte is in
    bool atLineStart = true;
    Place place = Between;

    Size begin = 0; // of the open item
    quint64 beginLine = 0;
    InputItem::Kind kind = InputItem::Message;
    std::string_view objectName;      // of an open object
    bool objectEnds = false;          // with the line in hand
    const char *sectionEnd = nullptr; // of a comment or CDATA section
    VMessageScanner messageScanner;   // of the open message
    Size messageLine = 0;             // its line in hand
    std::optional<Mark> otherObject;  // which seems to begin in it
    quint64 brokenUpTo = 0;           // in the file, the end of the latest message that was none
    ElementScanner element;
    DeadEnds deadEnds;

    Size chatter = -1; // where it begins; -1 = there is none
    quint64 chatterLine = 0;
    bool isRemains = false;   // it has lines of a message
    bool remainsEnd = false;  // with the line in hand
    bool isCutMarker = false; // the line in hand
    bool somethingIsPassedOver = false;

    // In the buffer, of what belongs to no item: from the start of the file, or a reason.
    std::optional<Size> leftoverBegin = 0;
    bool followsReason = false;
    QByteArray leftovers;

    bool hasContent = false;
    bool isXml = false;
    QByteArray root;     // name of the first element, empty until it is known
    bool isRoot = false; // what is open
    bool isBackup = false;
    bool rootIsClosed = false;
    bool hasOtherElement = false;
    bool cutIsTold = false;

    QList<InputItem> found;
};
