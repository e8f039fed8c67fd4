// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "sendservice.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QCoreApplication>
#include <QtCore/QLoggingCategory>

#include <cstdio>

int main(int argc, char *argv[])
{
    // The library's trace has numbers and texts, which are not for the journal.
    QLoggingCategory::setFilterRules(QStringLiteral("korvasync.*.debug=false"));
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    const QCommandLineOption idleTime(QStringLiteral("idle-time"),
                                      QStringLiteral("Ends after so long without a call."),
                                      QStringLiteral("SECONDS"), QStringLiteral("60"));
    parser.setApplicationDescription(
        QStringLiteral("Sends text messages for programs on the session bus."));
    parser.addOption(idleTime);
    parser.addHelpOption();
    parser.process(application);
    bool isNumber = false;
    const int seconds = parser.value(idleTime).toInt(&isNumber);
    if (!isNumber || seconds < 1) {
        std::fputs("korvasyncd: --idle-time is a number of seconds\n", stderr);
        return 2;
    }
    SendService service{std::chrono::seconds(seconds)};
    // In the event loop, as the bus library may deliver calls that come before it out of order.
    const auto start = [&service] {
        if (service.start())
            return;
        std::fputs("korvasyncd: the bus name org.korvasync.Sender cannot be taken\n", stderr);
        QCoreApplication::exit(1);
    };
    QMetaObject::invokeMethod(&service, start, Qt::QueuedConnection);
    QObject::connect(&service, &SendService::idle, &application, &QCoreApplication::quit);
    return QCoreApplication::exec();
}
