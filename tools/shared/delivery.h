// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <korvasync/sendsmsinterface.h>
#include <korvasync/syncrecords.h>

#include <QtCore/QMutex>
#include <QtCore/QObject>
#include <QtCore/QString>

//! One message on its way through the library: what is known of it, and why it was not sent.
//!
//! answered() and ended() come once each, on a later turn of the event loop and in any order;
//! ended() only for a message that isUnderWay() at the beginning.
class Delivery : public QObject
{
    Q_OBJECT
public:
    //! Hands the message over, to a sender of its own: one that has seen a message waits for no
    //! other.
    explicit Delivery(const KorvaSyncIf::SmsInfo &message, QObject *parent = nullptr);

    //! The library's answer; before answered() only an error is known already.
    int id() const { return m_id; }
    int errorCause() const { return m_errorCause; } //!< a PendingSmsId::ErrorCause
    bool isAnswered() const { return m_isAnswered; }

    //! Whether it was handed to the platform, and is not known and stored yet what became of it.
    bool isUnderWay() const { return m_isUnderWay; }

    //! The platform's own words on why the message was not sent, or may not have been: a sentence
    //! without number or text, empty when there is none. Known before the store has the message.
    //! May be called in any thread.
    QString problem() const;

Q_SIGNALS:
    void answered();
    void ended();

private:
    void follow(PendingSmsId *pending);
    void note(int message, const QString &problem);
    void end(int message);

    SendSmsInterface m_sender;
    int m_message = 0; //!< its number in the platform's monitor; 0 = the platform did not get it
    int m_id = -1;
    int m_errorCause = PendingSmsId::NoError;
    bool m_isAnswered = false;
    bool m_isUnderWay = false;
    mutable QMutex m_mutex; //!< guards what follows
    QString m_problem;
};
