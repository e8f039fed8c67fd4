// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "text.h"

#include <cstring>

namespace {

// Others' sentences among our own. The catalogues have them as well, so that nothing has to be
// installed for a language. What is not here stays in English.
[[maybe_unused]] constexpr const char *OthersSentences[] = {
    QT_TRANSLATE_NOOP("QCommandLineParser", "Unknown option '%1'."),
    QT_TRANSLATE_NOOP("QCommandLineParser", "Unknown options: %1."),
    QT_TRANSLATE_NOOP("QCommandLineParser", "Missing value after '%1'."),
    QT_TRANSLATE_NOOP("QCommandLineParser", "Unexpected value after '%1'."),
    QT_TRANSLATE_NOOP("QSaveFile", "Filename refers to a directory"),
    // the C library's, which Qt hands on
    QT_TRANSLATE_NOOP("Text", "File name too long"),
    QT_TRANSLATE_NOOP("Text", "Input/output error"),
    QT_TRANSLATE_NOOP("Text", "Is a directory"),
    QT_TRANSLATE_NOOP("Text", "No space left on device"),
    QT_TRANSLATE_NOOP("Text", "No such file or directory"),
    QT_TRANSLATE_NOOP("Text", "Not a directory"),
    QT_TRANSLATE_NOOP("Text", "Operation not permitted"),
    QT_TRANSLATE_NOOP("Text", "Permission denied"),
    QT_TRANSLATE_NOOP("Text", "Read-only file system"),
    QT_TRANSLATE_NOOP("Text", "Too many levels of symbolic links"),
};

} // namespace

Reason Text::reason(const char *english) { return {QString::fromUtf8(english), tr(english)}; }

Reason Text::ofSystemError(int number) { return reason(std::strerror(number)); }
