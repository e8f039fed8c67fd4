// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "boundprocess.h"

#include <QtCore/QString>

//! A bus of the test's own, which ends with this object.
class PrivateBus
{
public:
    //! Puts the bus's address into the environment variable, for this process, which must not
    //! have asked for that bus before, and for those that it starts. What the bus starts
    //! itself has the environment of this moment.
    explicit PrivateBus(const char *variable);

    QString address() const { return m_address; }

    //! Stops the bus, which takes calls from then on and answers none until it may go on.
    void stop();
    void goOn();

private:
    Q_DISABLE_COPY(PrivateBus)
    BoundProcess m_daemon;
    QString m_address;
};
