// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <korvasync/sendsmsinterface.h>

#include <QtDBus/QDBusContext>

class SendService;

//! The service as other programs see it: org.korvasync.SendSms1 at the path of a SendSmsInterface.
//! It holds the path and sends nothing itself.
class SendObject : public SendSmsInterface, protected QDBusContext
{
    Q_OBJECT
public:
    explicit SendObject(SendService *service);

    //! The reply comes later, from the service. The results are not used.
    // NOLINTNEXTLINE(readability-identifier-naming): the method's name on the bus
    int SendSms(const QString &vMessage, int &errorCause);

private:
    SendService *const m_service;
};
