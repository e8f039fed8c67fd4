// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "inputitem.h"
#include "linewindow.h"

#include <QtCore/QList>

#include <optional>
#include <string_view>

//! Reads the items of one form. ItemReader asks each FormReader whether an item begins here. The
//! one that says so gets the bytes until the item has ended.
class FormReader
{
public:
    enum Beginning {
        Nothing,
        Item,
        PassedOver //!< what belongs to the form, but is no item
    };

    virtual ~FormReader() = default;

    //! What begins with these bytes. open() follows unless that is nothing.
    virtual Beginning beginningAt(std::string_view head) = 0;
    virtual void open() = 0;
    //! Reads on in what is open. \return false when more bytes are needed
    virtual bool step() = 0;
    //! The file has ended: closes what is open, as it is.
    virtual void finish() = 0;

    bool isOpen() const { return m_hasBegun; }
    //! The first byte that has to stay in memory, while something is open.
    quint64 needed() const { return m_begin.offset; }

protected:
    using Kind = std::optional<InputItem::Kind>; //!< none: no item comes of it

    //! \param items  gets those that are found
    FormReader(LineWindow &window, QList<InputItem> &items)
        : m_window(window)
        , m_items(items)
    {
    }

    //! Something begins here.
    void openHere(Kind kindOfItem);
    void emitItem(quint64 end); //!< and closes it
    void emitTooLong();         //!< likewise
    void close() { m_hasBegun = false; }
    void dropUpToHere() { m_begin = m_window.here(); }

    const LineWindow::Mark &beginning() const { return m_begin; }
    bool isItem() const { return m_kind.has_value(); }
    bool isTooLong() const { return m_window.offset() - m_begin.offset > InputItem::Longest; }

    LineWindow &m_window;

private:
    QList<InputItem> &m_items;
    Kind m_kind;
    bool m_hasBegun = false;
    LineWindow::Mark m_begin;
};
