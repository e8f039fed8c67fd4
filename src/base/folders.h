// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QString>

namespace KorvaSyncIf {

//! The folder that a box text names by its first letters, so that the plural words of the encoder
//! are known too. 0 if it names none.
//! \param letters  Qt::CaseSensitive for words in capitals only, as the fixed interface wants them
int folderOfBox(const QString &box, Qt::CaseSensitivity letters);

//! Whether the other party of the folder's messages is the one they went to.
bool isOutboundFolder(int folder);

} // namespace KorvaSyncIf
