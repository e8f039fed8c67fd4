// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// A program of the other Qt version: writes the events that it is given on the session bus to
// standard output and gives them back.

#include "exchange.h"

#include <QtCore/QCoreApplication>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>

#include <cstdio>

class ExchangePeer : public QObject
{
    Q_OBJECT
public Q_SLOTS:
    void take(const QList<CommHistory::Event> &events)
    {
        for (const CommHistory::Event &event : events)
            say(Exchange::text(event).toUtf8());
        QDBusConnection::sessionBus().send(
            QDBusMessage::createSignal(QStringLiteral("/"), Exchange::Interface, Exchange::Returned)
            << QVariant::fromValue(events));
    }

public:
    static void say(const QByteArray &line)
    {
        std::puts(line.constData());
        std::fflush(stdout);
    }
};

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    Exchange::registerTypes();
    ExchangePeer peer;
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.connect(QString(), QString(), Exchange::Interface, Exchange::Given, &peer,
                     SLOT(take(QList<CommHistory::Event>))))
        return 1;
    // The answer of the bus comes when it knows the subscription.
    bus.call(QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId")));
    ExchangePeer::say(QByteArray("Qt ") + QByteArray::number(QT_VERSION >> 16));
    return application.exec();
}

#include "exchangepeer.moc"
