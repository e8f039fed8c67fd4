// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "servicetests.h"

class TestServiceOfono : public ServiceTests
{
    Q_OBJECT
public:
    explicit TestServiceOfono(const PrivateBus &systemBus)
        : ServiceTests(ModemStack::Daemon::Ofono, systemBus)
    {
    }
};

MODEM_TEST_MAIN(TestServiceOfono)
#include "tst_serviceofono.moc"
