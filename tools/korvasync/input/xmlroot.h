// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QByteArray>

#include <string_view>

//! What the tags of a file tell of it as a whole: whether it is an Android backup, and whether
//! that ends where it should. A backup without the end tag of its root was cut.
class XmlRoot
{
public:
    void noteItem() { m_isBackup = true; }
    //! Notes a tag that begins no item, anywhere in the file.
    void noteOther(std::string_view name);
    //! Notes such a tag of the XML itself. \return whether it is the root's
    bool noteTag(std::string_view name);
    void noteClosed() { m_isClosed = true; } //!< also in its start tag

    bool isCut() const { return m_isBackup && !m_root.isEmpty() && !m_isClosed; }
    bool isEmptyBackup() const
    {
        return m_isBackup && m_isClosed && !m_hasOther;
    } //!< if without items

private:
    QByteArray m_root; // its name, empty until it is known
    bool m_isBackup = false;
    bool m_isClosed = false;
    bool m_hasOther = false; // elements, behind the root's tag
};
