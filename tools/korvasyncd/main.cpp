// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "sendservice.h"
#include "termination.h"

#include "shared/terminaltext.h"

#include <bus/messagebus.h>

#include <QtCore/QCommandLineParser>
#include <QtCore/QCoreApplication>
#include <QtCore/QLoggingCategory>

#include <csignal>
#include <cstdio>
#include <system_error>

namespace {

bool isSessionBusSilent()
{
    constexpr int limitMsecs = 5000;
    return MessageBus::session().open(limitMsecs) == MessageBus::State::Silent;
}

//! The journal gets warnings, one a line. The library's trace has numbers and texts, which are not
//! for it, whatever the environment says.
void print(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtDebugMsg || type == QtInfoMsg)
        return;
    const QByteArray line = "korvasyncd: " + terminalText(message).toUtf8() + '\n';
    std::fwrite(line.constData(), 1, size_t(line.size()), stderr);
}

int serve(int argc, char *argv[])
{
    QLoggingCategory::setFilterRules(QStringLiteral("korvasync.*.debug=false"));
    qInstallMessageHandler(print);
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
    if (isSessionBusSilent()) {
        std::fputs("korvasyncd: the session bus does not answer\n", stderr);
        return 1;
    }
    SendService service{std::chrono::seconds(seconds)};
    const Termination termination;
    QObject::connect(&termination, &Termination::requested, &service, &SendService::finish);
    // In the event loop, as the bus library may deliver calls that come before it out of order.
    const auto start = [&service] {
        if (service.start())
            return;
        std::fputs("korvasyncd: the bus name org.korvasync.Sender cannot be taken\n", stderr);
        QCoreApplication::exit(1);
    };
    QMetaObject::invokeMethod(&service, start, Qt::QueuedConnection);
    QObject::connect(&service, &SendService::ended, &application, &QCoreApplication::quit);
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char *argv[])
{
    // A file that would grow beyond the limit of the process is told by the failed write.
    std::signal(SIGXFSZ, SIG_IGN);
    try {
        return serve(argc, argv);
    } catch (const std::system_error &) {
        std::fputs("korvasyncd: the system gives it no thread\n", stderr);
        return 1;
    }
}
