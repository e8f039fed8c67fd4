// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// A simulated modem:
//
//     atmodem PATH    listens on a unix socket
//     atmodem         listens on a free TCP port of this machine
//
// Takes orders from standard input, one a line (see AtModem::obey()), and leaves at its end.
// Writes JSON to standard output, an object a line: first {"listening": PATH or port}, then
// {"obeyed": ORDER} for each order, {"submitted": true} for each PDU that begins to come and
// {"number": ..., "text": ...} for each whole message that was taken.

#include "atmodem.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QSocketNotifier>
#include <QtNetwork/QLocalServer>
#include <QtNetwork/QLocalSocket>
#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>

#include <cstdio>
#include <unistd.h>

namespace {

void tell(const QJsonObject &object)
{
    const QByteArray line = QJsonDocument(object).toJson(QJsonDocument::Compact);
    std::puts(line.constData());
    std::fflush(stdout);
}

//! Listens and gives each connection to the modem.
template <typename Server, typename Address>
bool serve(Server *server, const Address &address, AtModem *modem)
{
    QObject::connect(server, &Server::newConnection, modem,
                     [=] { modem->connectTo(server->nextPendingConnection()); });
    return server->listen(address);
}

void takeOrders(AtModem *modem)
{
    static QByteArray buffer;
    char bytes[256];
    const auto size = read(STDIN_FILENO, bytes, sizeof bytes);
    if (size <= 0)
        return QCoreApplication::quit();
    buffer.append(bytes, int(size));
    while (buffer.contains('\n')) {
        const auto end = buffer.indexOf('\n');
        const QByteArray order = buffer.left(end);
        modem->obey(order);
        tell({{QStringLiteral("obeyed"), QString::fromLatin1(order)}});
        buffer.remove(0, end + 1);
    }
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    AtModem modem;
    QObject::connect(&modem, &AtModem::submitted, [] {
        tell({{QStringLiteral("submitted"), true}});
    });
    QObject::connect(&modem, &AtModem::received, [](const QString &number, const QString &text) {
        tell({{QStringLiteral("number"), number}, {QStringLiteral("text"), text}});
    });
    QSocketNotifier orders(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&orders, &QSocketNotifier::activated, [&modem] { takeOrders(&modem); });

    const QString path = application.arguments().value(1);
    QLocalServer local;
    QTcpServer tcp;
    const bool listens =
        path.isEmpty() ? serve(&tcp, QHostAddress::LocalHost, &modem) : serve(&local, path, &modem);
    if (!listens)
        return 1;
    tell(
        {{QStringLiteral("listening"), path.isEmpty() ? QString::number(tcp.serverPort()) : path}});
    return application.exec();
}
