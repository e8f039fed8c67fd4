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

//! The session bus or the system bus, either of which may be silent: it takes callers and answers
//! none. To open such a bus makes the bus library wait without limit, and every other connection
//! of the process with it. So the bus is greeted first, on a connection of its own on which the
//! bus library asks nothing by itself. When it has answered, QDBusConnection::sessionBus() or
//! systemBus() opens it without waiting.
class KORVAPLATFORM_EXPORT MessageBus
{
public:
    enum class State {
        Open,
        Absent, //!< nobody listens at its address, or it has ended
        Silent  //!< it has not answered in time; it may later
    };

    //! The longest that a call may take: without limit, where somebody else ends the wait.
    static constexpr int Unlimited = 0x7fffffff;

    static MessageBus &session();
    static MessageBus &system();

    //! Whether it has answered and has not ended since. Asks nothing.
    bool isOpen() const;
    //! Opens the bus unless it is open. Blocks, and may be called from any thread.
    //! \param limitMsecs  how long its answer may take
    State open(int limitMsecs);
    //! The same, on the event loop; only from the main thread.
    //! \param next  called once, perhaps at once; not when the context is deleted before
    void open(int limitMsecs, const QObject *context, const std::function<void(State)> &next);
    //! Waits until the open bus has read what was sent before, as its answer shows. Blocks.
    State flush(int limitMsecs);

    //! Whether no answer has come to a call; what was asked may have been done.
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
