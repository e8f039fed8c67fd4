// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QString>

#include <functional>

//! What becomes of numbers where the store joins messages to conversations: it takes the one of
//! the last seven digits of a message's number, or of its word; while there is none, the first
//! whose number ends with them.
struct NumberFinding
{
    enum Kind {
        DifferentNumbers, //!< numbers share a conversation that cannot be one party's
        EndOfOthers,      //!< the first one's messages join a conversation of the others
        Pattern,          //!< signs in it stand for others, so that others can get its messages
        Spellings         //!< of one number, as they should be
    };

    struct Member
    {
        QString number; //!< as it stands
        int messages = 0;
    };

    Kind kind = Spellings;
    QString tail; //!< what is looked for
    QList<Member> members;
};

//! Collects numbers and finds out which of them share a conversation.
class NumberFindings
{
public:
    //! Notes one message of a number. Messages without one join no conversation.
    void add(const QString &number);

    int numberCount() const;

    //! Hands out what there is to tell, by kind.
    void forEach(const std::function<void(const NumberFinding &)> &take) const;

private:
    using Spellings = QMap<QString, int>; // with their messages

    static QList<NumberFinding::Member> membersOf(const Spellings &spellings);
    void findShared(NumberFinding::Kind kind,
                    const std::function<void(const NumberFinding &)> &take) const;
    void findEnds(const std::function<void(const NumberFinding &)> &take) const;
    void findPatterns(const std::function<void(const NumberFinding &)> &take) const;

    QMap<QString, Spellings> m_byTail;
};
