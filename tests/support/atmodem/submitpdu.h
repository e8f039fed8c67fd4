// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>

//! What an SMS-SUBMIT (3GPP TS 23.040) says: a message, or one part of a long one.
struct SubmitPdu
{
    QString number;     //!< digits, behind a '+' when the number is international
    QString text;       //!< may begin or end between the two halves of a character beyond the BMP
    int reference = -1; //!< what the parts of one message have in common; -1 = not in parts
    int part = 1;       //!< counted from 1
    int partCount = 1;
};

//! \param pdu        as a modem gets it: behind the address of the service centre
//! \return nothing when the bytes are no SMS-SUBMIT with text
std::optional<SubmitPdu> decodeSubmitPdu(const QByteArray &pdu);
