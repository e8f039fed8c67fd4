// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QEventLoop>
#include <QtCore/QMetaObject>

//! Runs one turn of the event loop.
inline void turn()
{
    QEventLoop loop;
    QMetaObject::invokeMethod(&loop, "quit", Qt::QueuedConnection);
    loop.exec();
}

//! Runs the event loop until all is quiet. The scripted platform and the library work through
//! posted events alone, so a fixed number of turns settles every test, however slow the machine.
inline void settle()
{
    for (int i = 0; i < 20; ++i)
        turn();
}
