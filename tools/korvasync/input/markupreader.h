// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "formats/deadends.h"
#include "formats/elementscanner.h"
#include "formreader.h"
#include "gap.h"
#include "xmlroot.h"

#include <optional>
#include <string_view>

//! Reads the elements of Android backups. What begins in a broken one is read again by itself.
//! In a file that begins with a tag, it also passes over comments, CDATA sections and the start
//! tag of the root.
class MarkupReader final : public FormReader
{
public:
    static constexpr size_t HeadLength = 64; //!< of a tag, for its name

    //! \param gap  what stands before the tag that begins
    MarkupReader(LineWindow &window, QList<InputItem> &items, const Gap &gap)
        : FormReader(window, items)
        , m_gap(gap)
    {
    }

    Beginning beginningAt(std::string_view head) override;
    void open() override;
    bool step() override;
    void finish() override;

    //! Whether the file ends before its markup does, and no cut element has told.
    bool isCut() const { return m_root.isCut() && !m_endsInElement; }
    bool isEmptyBackup() const { return m_root.isEmptyBackup(); }

private:
    enum Place { Section, Element, BrokenElement };

    bool beginSection(std::string_view head);
    bool stepSection();
    bool stepElement();
    bool stepBrokenElement();
    void closeElement();
    bool isDeadEnd();
    void breakElement(bool atReason);
    void emitElement(quint64 end);

    const Gap &m_gap;
    XmlRoot m_root;
    Place m_place = Element;
    Kind m_elementKind;              // none: of the root
    std::string_view m_sectionStart; // of a comment or CDATA section
    std::string_view m_sectionEnd;
    ElementScanner m_element;
    DeadEnds m_deadEnds;
    bool m_endsInElement = false; // the file
};
