// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "input/itemreader.h"
#include "model/datetext.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QDateTime>
#include <QtCore/QList>
#include <QtCore/QTimeZone>

#include <korvasync/syncrecords.h>

#include <optional>

//! Values of options and arguments that several commands take. What is wrong with one is
//! told on stderr.
namespace Arguments {

//! An absent option leaves \a time null. \return false when it is no time
bool takeTime(const QCommandLineParser &parser, const char *option, const QTimeZone &local,
              QDateTime &time, DateText::Rounding rounding = DateText::RoundUp);

//! Takes --assume-tz; where it is absent, \a zone stays. \return false when it names none
bool takeZone(const QCommandLineParser &parser, QTimeZone &zone);

//! An absent option leaves \a number as it is. \return false when it is no number in bounds
bool takeNumber(const QCommandLineParser &parser, const char *option, int least, int most,
                int &number);

//! The place of the option's value among the command's Choices; an absent option has its default.
std::optional<int> takeChoice(const QCommandLineParser &parser, const char *command,
                              const char *option);

//! An absent option leaves \a folder as it is. \return false when it names none
bool takeFolder(const QCommandLineParser &parser, const char *option, int &folder);

//! Database ids from the arguments, where "-" stands for standard input, one a line.
std::optional<QList<int>> databaseIds(const QStringList &arguments);

//! The only message of a file, for a command that takes just one.
std::optional<InputItem> onlyMessage(const char *command, const QString &path);

//! Whether the bytes are text, which would otherwise lose what is not.
bool isUtf8(const QByteArray &bytes);

//! All of standard input; nothing when it cannot be read or is no text, or a signal came
//! meanwhile.
std::optional<QString> standardInput();

} // namespace Arguments
