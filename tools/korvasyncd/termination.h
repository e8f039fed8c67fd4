// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QObject>
#include <QtCore/QSocketNotifier>

//! SIGTERM and SIGINT as a signal of the event loop; one object in a process. The second such
//! signal ends the process at once.
class Termination : public QObject
{
    Q_OBJECT
public:
    Termination();

Q_SIGNALS:
    void requested();

private:
    QSocketNotifier m_notifier;
};
