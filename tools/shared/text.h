// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QCoreApplication>
#include <QtCore/QString>

//! Why something was not done, in two languages: people read it in theirs, and scripts and files
//! get it in English wherever they run.
struct Reason
{
    QString english;
    QString translated;

    bool isEmpty() const { return english.isEmpty(); }
    Reason arg(const QString &value) const { return {english.arg(value), translated.arg(value)}; }
    Reason arg(const Reason &value) const
    {
        return {english.arg(value.english), translated.arg(value.translated)};
    }
};

//! What people read: Text::tr("an English sentence") is that sentence in their language.
//! script/translations finds it where it stands, and likewise those in Text::reason() and
//! QT_TRANSLATE_NOOP("Text", ...).
class Text
{
    Q_DECLARE_TR_FUNCTIONS(Text)
public:
    static Reason reason(const char *english);
    //! \param number  as errno has it
    static Reason ofSystemError(int number);
};
