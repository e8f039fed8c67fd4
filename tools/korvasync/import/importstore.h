// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "itemjudge.h"
#include "options/command.h"
#include "store/duplicateindex.h"
#include "store/timecoverage.h"

#include <optional>
#include <vector>

//! The store of an import: finds what it holds already, and adds what is new.
class ImportStore
{
public:
    enum Equals {
        AreFound, //!< which takes a few bytes for each item of the part that was read
        AreAdded  //!< messages like all others, and the index has none of them
    };

    //! \param judge  tells what is added
    ImportStore(const Invocation &invocation, const ItemJudge &judge, Equals equals);

    //! Whether the store can be read. Where calls alone are added, all are.
    Answer open();
    //! There is none yet: what it will hold is added here.
    void setEmpty();
    //! Has that part of the store read in which the item's equals may be: around its time, or when
    //! it is the first call, all calls.
    Answer readAround(const NewItem &item);
    Answer probe();

    //! Adds the new ones of the items and tells each what became of it.
    //! \return Finished when all are stored, else how the store failed
    Answer add(std::vector<NewItem> &items);

    DuplicateIndex index;

private:
    Answer readMessages(TimeCoverage::Span span);
    Answer readCalls();
    void enter(const NewItem &item);

    StoreLocation &m_location;
    const ItemJudge &m_judge;
    const Equals m_equals;
    std::optional<MessageStore> m_messages; // none where only calls are added
    std::optional<MessageWriter> m_messageWriter;
    CallStore m_calls;
    CallWriter m_callWriter;
    TimeCoverage m_messagesRead;
    bool m_callsAreRead = false;
};
