// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "modemstack.h"
#include "storetesting.h"

#include <messaging/messagingif.h>

#include <QtCore/QTemporaryDir>

// What the tests of sending share.

//! Runs the test class, made from the system bus, on private buses and a store of its own.
#define MODEM_TEST_MAIN(TestClass)                                                                 \
    int main(int argc, char *argv[])                                                               \
    {                                                                                              \
        const QTemporaryDir directory;                                                             \
        qputenv("KORVASYNC_STORE",                                                                 \
                QFile::encodeName(directory.filePath(QStringLiteral("store"))));                   \
        const PrivateBus systemBus("DBUS_SYSTEM_BUS_ADDRESS");                                     \
        const PrivateBus sessionBus("DBUS_SESSION_BUS_ADDRESS");                                   \
        QCoreApplication application(argc, argv);                                                  \
        TestClass test(systemBus);                                                                 \
        return QTest::qExec(&test, argc, argv);                                                    \
    }

namespace ModemTesting {

constexpr int Outbox = 4099;

//! Takes down what becomes of a message.
class Outcome
{
public:
    explicit Outcome(PendingMessage *message)
    {
        QObject::connect(message, &PendingMessage::finished, &m_context,
                         [this](const PendingMessage *message) {
                             ++m_count;
                             m_isError = message->isError();
                             m_text = message->errorText();
                         });
        QObject::connect(message, &QObject::destroyed, &m_context, [this] { m_isOver = true; });
    }

    //! Waits until nothing more can come; true when one outcome came.
    bool wait()
    {
        return QTest::qWaitFor([this] { return m_isOver; }, StoreTesting::Patience) && m_count == 1;
    }
    int count() const { return m_count; }
    bool isError() const { return m_isError; }
    QString text() const { return m_text; }

private:
    Q_DISABLE_COPY(Outcome)

    QObject m_context;
    int m_count = 0;
    bool m_isOver = false;
    bool m_isError = false;
    QString m_text;
};

//! Empties the two folders.
inline void removeMessages()
{
    QList<CommHistory::Event> events = StoreTesting::read(StoreTesting::Sent);
    events += StoreTesting::read(Outbox);
    CommHistory::EventModel model;
    StoreTesting::Reports reports(&model);
    for (const CommHistory::Event &event : std::as_const(events))
        model.deleteEvent(event.id());
    if (!events.isEmpty())
        reports.wait(1);
}

} // namespace ModemTesting
