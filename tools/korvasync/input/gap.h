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
        : window(window)
        , items(items)
        , leftovers(window)
    {
    }

    //! Whether the line that begins here is passed over whole, with passRemark().
    bool beginRemark(std::string_view head);
    bool isInRemark() const { return line == Remark; }
    void passRemark();

    //! Notes the line that begins here, as the message without a beginning may begin with any.
    void noteLine(std::string_view head);
    //! Passes over what comes next. \return whether that ends where a tag may begin
    bool passUpToTag();

    void end();           //!< something begins here that is no item
    void endBeforeItem(); //!< an item begins here
    bool endOfFile();     //!< \return whether there is an item yet

    quint64 needed(); //!< the first byte that has to stay in memory
    Leftovers &left() { return leftovers; }
    const Leftovers &left() const { return leftovers; }

    bool isXml() const { return firstSign == '<'; }           //!< the file begins with a tag
    bool hasContent() const { return firstSign.has_value(); } //!< more than blanks and reasons
    bool endsInCutBegin() const { return line == CutBegin; }
    bool hasPassedOver() const { return somethingIsPassedOver; }

private:
    void noteFirstSign(std::string_view head);
    void boundText();

    enum Line { Other, Remark, MessageEnd, CutBegin };

    LineWindow &window;
    QList<InputItem> &items;
    Leftovers leftovers;
    std::optional<LineWindow::Mark> text; // where it begins
    bool isMessage = false;               // it has lines of one
    Line line = Other;                    // the one in hand
    std::optional<char> firstSign;        // of the file
    bool somethingIsPassedOver = false;
};
