// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

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
    static constexpr quint64 Longest = quint64(32) * 1024 * 1024; //!< a longer one is not kept

    Kind kind = Message;
    QByteArray bytes;       //!< as they were, in UTF-8
    quint64 line = 0;       //!< where it begins, from 1
    bool isTooLong = false; //!< and therefore without bytes

    QString firstLine() const; //!< without what stands around its words
};
