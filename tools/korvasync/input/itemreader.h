// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "gap.h"
#include "inputitem.h"
#include "linewindow.h"
#include "markupreader.h"
#include "messagereader.h"
#include "objectreader.h"

#include <QtCore/QList>

#include <optional>
#include <string_view>
#include <vector>

//! The items of one file, one after the other, of all kinds mixed: a file of rejects may hold
//! them all. What stands between them is passed over, but for a message without its BEGIN:VMSG
//! line, which is one item up to its END:VMSG. Memory is bounded, whatever the file holds: by the
//! longest item, and an item is not kept beyond 32 MiB.
//!
//! Lines that begin with "# " between two items are passed over whole, as rejects have the
//! reasons in them. In a file that begins with a tag, so are comments and CDATA sections. The
//! line with a reason also ends any item that was cut before it.
//!
//! ItemReader itself only chooses. LineWindow has the bytes. Each line and each tag between two
//! items is offered to the FormReader of each form; what none of them takes is for Gap.
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

    Reason error() const { return m_window.error(); } //!< empty = none so far
    qint64 bytesRead() const { return m_window.bytesRead(); }

    //! Of a file of rejects, what was read since the last call: reasons without an item behind
    //! them, and what stands there instead.
    QByteArray takeLeftovers() { return m_gap.left().take(); }

    //! Whether something was passed over that is neither blank nor among the leftovers. In a file
    //! that begins with a tag it is not looked for.
    bool hasPassedOver() const { return m_gap.hasPassedOver(); }

    //! For a file that had no item.
    QByteArray passedOver() const
    {
        return m_gap.left().open();
    }                                                    //!< all; empty if too long to keep
    bool isEmpty() const { return !m_gap.hasContent(); } //!< but for blanks and reasons
    bool isEmptyBackup() const { return m_markup.isEmptyBackup(); } //!< of Android, and whole

private:
    Q_DISABLE_COPY(ItemReader)
    bool fill();
    bool step();
    bool stepBetween();
    bool stepToTag();
    bool opens(FormReader &form, std::string_view head);
    bool finish();

    LineWindow m_window;
    QList<InputItem> m_found;
    Gap m_gap;
    MessageReader m_messages;
    ObjectReader m_objects;
    MarkupReader m_markup;
    std::vector<FormReader *> m_textForms; // which begin with a line, in the order of asking
    const bool m_takesMarkup;
    FormReader *m_current = nullptr; // the one that something is open of; null between two items
    bool m_cutIsTold = false;
};
