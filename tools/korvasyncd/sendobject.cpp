// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "sendobject.h"

#include "sendservice.h"
#include "sendsms1adaptor.h"

SendObject::SendObject(SendService *service)
    : m_service(service)
{
    new SendSms1Adaptor(this);
}

int SendObject::SendSms(const QString &vMessage, int &errorCause)
{
    setDelayedReply(true);
    m_service->add(vMessage, message());
    errorCause = PendingSmsId::NoError;
    return -1;
}
