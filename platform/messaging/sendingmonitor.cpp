// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "sendingmonitor.h"

SendingMonitor *SendingMonitor::instance()
{
    static SendingMonitor monitor;
    return &monitor;
}

#include "moc_sendingmonitor.cpp"
