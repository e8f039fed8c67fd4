// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QHash>
#include <QtCore/QString>

#include <optional>

//! The attributes of one element of an Android backup, which holds all its values in them.
class ElementAttributes
{
public:
    //! Reads what XML forbids and programs write nevertheless: a character as two references to
    //! its surrogates, markup and line ends as they were typed, commas between attributes.
    //! A reference to no character, or to half of one, becomes U+FFFD, so that it is seen.
    //! \param tag  the start tag, in UTF-8, else in Latin-1
    //! \return nothing when it is not whole
    static std::optional<ElementAttributes> parse(const QByteArray &tag);

    //! As it stands; nothing when it is absent.
    std::optional<QString> text(const char *name) const;
    //! Without blanks around it; empty when it is absent, which is spelled "null" as well.
    QString value(const char *name) const;

private:
    QHash<QString, QString> m_values;
};
