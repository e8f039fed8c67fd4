// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "terminalwidth.h"

#include <sys/ioctl.h>

int terminalWidth(int descriptor)
{
    constexpr int usualWidth = 80; // of a terminal that does not know its own
    winsize size = {};
    if (ioctl(descriptor, TIOCGWINSZ, &size) != 0)
        return 0;
    return size.ws_col == 0 ? usualWidth : size.ws_col;
}
