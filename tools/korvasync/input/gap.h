// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "inputitem.h"
#include "leftovers.h"
#include "linewindow.h"

#include <QtCore/QList>

#include <optional>
#include <string_view>

//! What stands between two items. It is passed over, but for a message without its BEGIN:VMSG
//! line, which is an item up to its END:VMSG.
class Gap
{
public:
    //! \param items  gets those that are found
    Gap(LineWindow &window, QList<InputItem> &items)
        : m_window(window)
        , m_items(items)
        , m_leftovers(window)
    {
    }

    //! Whether the line that begins here is passed over whole, with passRemark().
    bool beginRemark(std::string_view head);
    bool isInRemark() const { return m_line == Remark; }
    void passRemark();

    //! Notes the line that begins here, as the message without a beginning may begin with any.
    void noteLine(std::string_view head);
    //! Passes over what comes next. \return whether that ends where a tag may begin
    bool passUpToTag();

    void end();           //!< something begins here that is no item
    void endBeforeItem(); //!< an item begins here
    bool endOfFile();     //!< \return whether there is an item yet

    quint64 needed(); //!< the first byte that has to stay in memory
    Leftovers &left() { return m_leftovers; }
    const Leftovers &left() const { return m_leftovers; }

    bool isXml() const { return m_firstSign == '<'; }           //!< the file begins with a tag
    bool hasContent() const { return m_firstSign.has_value(); } //!< more than blanks and reasons
    bool endsInCutBegin() const { return m_line == CutBegin; }
    bool hasPassedOver() const { return m_somethingIsPassedOver; }

private:
    void noteFirstSign(std::string_view head);
    void boundText();

    enum Line { Other, Remark, MessageEnd, CutBegin };

    LineWindow &m_window;
    QList<InputItem> &m_items;
    Leftovers m_leftovers;
    std::optional<LineWindow::Mark> m_text; // where it begins
    bool m_isMessage = false;               // it has lines of one
    Line m_line = Other;                    // the one in hand
    std::optional<char> m_firstSign;        // of the file
    bool m_somethingIsPassedOver = false;
};
