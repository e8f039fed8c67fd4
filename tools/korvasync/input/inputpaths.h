// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QStringList>

//! What the arguments of a command mean.
struct InputPaths
{
    QStringList files;      //!< to be read, in this order
    QStringList passedOver; //!< what stands in folders besides
};

//! A folder stands for the .vmg, .vmsg, .txt and .xml files in it and below, by name. Links in it
//! are not followed. A folder that cannot be listed stays among the files, so that reading it tells
//! why. A signal ends the list.
InputPaths messageFiles(const QStringList &arguments);
