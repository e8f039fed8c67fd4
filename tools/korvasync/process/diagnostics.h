// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QString>

//! What goes to stderr, a terminal as a rule: control characters become visible signs. Unless the
//! trace is on, neither numbers nor message texts are among it: the library's own messages are held
//! back.
namespace Diagnostics {

//! Takes over Qt's message handler.
void install();
//! \param isOn  shows all that the library logs
void showTrace(bool isOn);
void silenceWarnings();

void warn(const QString &sentence);  //!< unless warnings are silenced
void error(const QString &sentence); //!< why the command ends
void ask(const QString &question);   //!< without an end of the line

//! The store's own words on its first trouble, the cause of any other: a sentence that says
//! what to do. Empty when it had none.
QString storeTrouble();

} // namespace Diagnostics
