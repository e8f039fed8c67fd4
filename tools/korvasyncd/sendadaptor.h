// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "sendservice.h"

#include <QtDBus/QDBusAbstractAdaptor>

//! The service as other programs see it.
class SendAdaptor : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.korvasync.SendSms1")
    Q_CLASSINFO("D-Bus Introspection",
                "  <interface name=\"org.korvasync.SendSms1\">\n"
                "    <method name=\"SendSms\">\n"
                "      <arg name=\"vMessage\" type=\"s\" direction=\"in\"/>\n"
                "      <arg name=\"id\" type=\"i\" direction=\"out\"/>\n"
                "      <arg name=\"errorCause\" type=\"i\" direction=\"out\"/>\n"
                "    </method>\n"
                "  </interface>\n")
public:
    SendAdaptor(SendSmsInterface *object, SendService *service)
        : QDBusAbstractAdaptor(object)
        , m_service(service)
    {
    }

public Q_SLOTS:
    //! The reply comes later, within 22 seconds of the call, or the error
    //! org.korvasync.SendSms1.Error.NotSent: nothing goes out for this call, also later.
    //! \return the database id, -1 = none, and the PendingSmsId::ErrorCause
    int SendSms(const QString &vMessage, const QDBusMessage &call, int &errorCause)
    {
        call.setDelayedReply(true);
        m_service->add(vMessage, call);
        errorCause = PendingSmsId::NoError;
        return -1;
    }

private:
    SendService *const m_service;
};
