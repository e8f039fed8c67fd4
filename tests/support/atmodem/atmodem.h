// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "submitpdu.h"

#include <QtCore/QByteArray>
#include <QtCore/QIODevice>
#include <QtCore/QMap>
#include <QtCore/QObject>
#include <QtCore/QPair>

//! A modem at the other end of a serial line, as far as ModemManager and oFono look at one
//! that they send messages through. It keeps what it is told between connections.
class AtModem : public QObject
{
    Q_OBJECT
public:
    //! Talks over \a line until it closes. One at a time; a new one replaces the old one.
    void connectTo(QIODevice *line);

    //! What a test asks for; stays until the next order of its kind:
    //!
    //!     accept, refuse, ignore, hang-up   what becomes of a message: taken, +CMS ERROR,
    //!                                       no answer, line closed amid the PDU
    //!     delay MS                          taken, but answered MS milliseconds later
    //!     ready, ask-pin, no-sim            the SIM
    //!     home, away                        the network; told to who is connected
    void obey(const QByteArray &order);

Q_SIGNALS:
    //! A whole message was taken.
    void received(const QString &number, const QString &text);
    //! A message reached the modem, which may be amid its PDU and may not take it.
    void submitted();

private:
    void read();
    void answer(const QByteArray &command);
    void takePdu(const QByteArray &hex);
    void collect(const SubmitPdu &pdu);
    QByteArray reply(const QByteArray &command) const;
    void write(const QByteArray &text);
    void closeLine();

    QIODevice *m_line = nullptr;
    QByteArray m_buffer;
    bool m_isInPdu = false;
    int m_announcedSize = 0; //!< octets of the PDU to come
    int m_messageReference = 0;
    QByteArray m_behaviour = "accept";
    int m_delay = 0; //!< milliseconds
    QByteArray m_sim = "ready";
    bool m_isRegistered = true;
    using Recipient = QPair<QString, int>;       //!< with the reference, which may repeat itself
    QMap<Recipient, QMap<int, QString>> m_parts; //!< by number of the part
};
