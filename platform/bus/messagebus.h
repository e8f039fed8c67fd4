// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <platformexport.h>

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusError>
#include <QtDBus/QDBusPendingCallWatcher>

#include <atomic>
#include <functional>

//! The session bus or the system bus. A bus may be silent: it accepts connections and answers none.
//! If the bus library opens such a bus, it waits without limit, and so does every other connection
//! of the process. Therefore the bus is greeted first, on a connection of its own on which the bus
//! library asks nothing by itself. Once it has answered, QDBusConnection::sessionBus() or
//! systemBus() opens it without waiting.
class KORVAPLATFORM_EXPORT MessageBus
{
public:
    enum class State {
        Open,
        Absent, //!< nobody listens at its address, or it has ended
        Silent  //!< it has not answered in time; it may later
    };

    //! Milliseconds that stand for no limit, where something else ends the wait.
    static constexpr int Unlimited = 0x7fffffff;

    static MessageBus &session();
    static MessageBus &system();

    //! Whether the bus has answered and has not ended since. Never waits.
    bool isOpen() const;
    //! Opens the bus unless it is open. Blocks. May be called from any thread.
    //! \param limitMsecs  how long the answer may take, in milliseconds
    State open(int limitMsecs);
    //! Opens the bus without blocking. Only for the main thread.
    //! \param next  called once, perhaps inside this call; never if the context is deleted before
    void open(int limitMsecs, const QObject *context, const std::function<void(State)> &next);
    //! Blocks until the open bus has answered a call, and so has read what was sent before.
    State flush(int limitMsecs);

    //! Whether a call failed for want of an answer. What it asked for may have been done.
    static bool isUnanswered(const QDBusError &error);

private:
    Q_DISABLE_COPY(MessageBus)
    using Connection = QDBusConnection (*)();
    using Address = QString (*)();

    MessageBus(const char *probeName, Connection connection, Address address);
    QDBusConnection probe() const;
    void take(const QDBusError &error);
    QDBusPendingCallWatcher *greet(const QDBusConnection &bus, int limitMsecs);
    State stateOfAnswered() const;

    const QString m_probeName;
    const Connection m_connection;
    const Address m_address;
    std::atomic<bool> m_hasAnswered{false};       // from then on the bus library has the bus open
    QPointer<QDBusPendingCallWatcher> m_greeting; // the one under way, for all who wait
};
