// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "sendobject.h"

#include <korvasync/syncrecords.h>

#include <QtCore/QDeadlineTimer>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QTimer>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>

#include <chrono>
#include <optional>

class Delivery;

//! Serves the calls of other programs one after the other, each with a fresh sender, since
//! one that has seen its message waits for no other.
//!
//! A program that was not told that its message went out may ask again, so nothing goes out
//! behind its back. Calls with the same number and text are one while none of them has been
//! answered, and while it is not known what became of the message: they get the same reply. A call
//! waits for less time than its caller does, and is refused then. What has waited is handed over
//! only when its caller is still there. A bounded number of calls waits.
class SendService : public QObject
{
    Q_OBJECT
public:
    //! \param idleTime      the service ends after so long without a call
    //! \param waitingLimit  the default and the two seconds that a served call takes are below
    //!                      the 25 seconds that callers usually wait
    explicit SendService(std::chrono::milliseconds idleTime,
                         std::chrono::milliseconds waitingLimit = std::chrono::seconds(20));

    static constexpr int MostCalls = 100;       //!< that wait or are being served
    static constexpr qint64 MostText = 1 << 22; //!< UTF-16 units of their vMessages

    //! Takes the bus name. \return false when another one has it, or there is no bus
    bool start();
    //! Answers the call, at once or when its turn has come.
    void add(const QString &vMessage, const QDBusMessage &call);
    //! Gives the bus name back, sends nothing more and ends when it is known and stored what
    //! became of the messages that are on their way.
    void finish();

Q_SIGNALS:
    //! Nothing is left to do, and the bus name is given back.
    void ended();

private:
    //! What equal calls ask for.
    struct Request
    {
        KorvaSyncIf::SmsInfo message;
        QList<QDBusMessage> calls; //!< at least one
        int serial = 0;
        QDeadlineTimer deadline;
    };
    //! A message whose outcome is not known yet.
    struct UnderWay
    {
        KorvaSyncIf::SmsInfo message;
        bool isAnsweredAsUnknown = false;
    };

    bool refuseUnsendable(const QString &vMessage, const QDBusMessage &call,
                          KorvaSyncIf::SmsInfo &message);
    bool join(const QDBusMessage &call, const KorvaSyncIf::SmsInfo &message);
    bool hasRoomFor(const QDBusMessage &call) const;
    void wait(const Request &request);
    void serveNext();
    void refuseCallersThatHaveGone(const QStringList &busNames);
    void serve(const Request &request);
    void answer(Delivery &delivery);
    void end(Delivery &delivery);
    void stopWaiting(int serial);
    void rest();
    void endWhenIdle();
    void reply(const QDBusMessage &call, int id, int errorCause);
    void refuse(const QDBusMessage &call, const QString &reason);
    void refuse(const Request &request, const QString &reason);
    QList<Request>::iterator firstThatMayGo();
    bool equalsOneUnderWay(const KorvaSyncIf::SmsInfo &message) const;

    QDBusConnection m_bus;
    const std::chrono::milliseconds m_waitingLimit;
    SendObject m_object;
    QTimer m_idleTimer;
    QList<Request> m_waiting;
    std::optional<Request> m_served;
    bool m_isLooking = false; //!< asks the bus which callers are still there
    QHash<const Delivery *, UnderWay> m_underWay;
    int m_lastSerial = 0;
    bool m_isFinishing = false;
};
