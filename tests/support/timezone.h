// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QByteArray>

#include <ctime>

//! Makes a time zone the process's own as long as it lives.
class TimeZone
{
public:
    explicit TimeZone(const QByteArray &id)
        : wasSet(qEnvironmentVariableIsSet("TZ"))
        , previous(qgetenv("TZ"))
    {
        qputenv("TZ", id);
        tzset();
    }
    ~TimeZone()
    {
        if (wasSet)
            qputenv("TZ", previous);
        else
            qunsetenv("TZ");
        tzset();
    }

private:
    Q_DISABLE_COPY(TimeZone)

    bool wasSet;
    QByteArray previous;
};
