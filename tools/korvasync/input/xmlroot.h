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
    void noteItem() { isBackup = true; }
    //! Notes a tag that begins no item, anywhere in the file.
    void noteOther(std::string_view name);
    //! Notes such a tag of the XML itself. \return whether it is the root's
    bool noteTag(std::string_view name);
    void noteClosed() { isClosed = true; } //!< also in its start tag

    bool isCut() const { return isBackup && !root.isEmpty() && !isClosed; }
    bool isEmptyBackup() const { return isBackup && isClosed && !hasOther; } //!< if without items

private:
    QByteArray root; // its name, empty until it is known
    bool isBackup = false;
    bool isClosed = false;
    bool hasOther = false; // elements, behind the root's tag
};
