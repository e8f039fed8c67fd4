// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QtGlobal>

#include <deque>

//! Where other elements seemed to begin within elements that never ended. What begins there is
//! read again; without these notes the same bytes would be read once for each such beginning in
//! front of them.
class DeadEnds
{
public:
    //! \param offset  in the file, where an element begins that is read from now on
    void begin(quint64 offset);

    //! Notes a beginning that the element passes.
    //! \param offset   in the file, greater from call to call
    //! \param shelter  of the element there, as ElementScanner has it
    //! \return false when an element has passed it so before: that one never ended, and this
    //!         one will not either
    bool pass(quint64 offset, int shelter);

private:
    std::deque<quint64> m_passed; // an offset, and a bit for each shelter behind it
    size_t m_next = 0;            // the element has passed those before
};
