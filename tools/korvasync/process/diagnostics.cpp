// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "diagnostics.h"

#include <QtCore/QLoggingCategory>

#include <cstdio>

namespace Diagnostics {

static bool traceIsOn = false;
static bool warningsAreSilent = false;
static QString firstStoreTrouble;
static int storeTroubles = 0;
static QString firstSendingTrouble;

static void print(const QString &line)
{
    const QByteArray bytes = line.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stderr);
}

static void handle(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    const bool isTrouble = type != QtDebugMsg && type != QtInfoMsg;
    if (isTrouble && qstrcmp(context.category, "korvasync.store") == 0) {
        if (firstStoreTrouble.isEmpty())
            firstStoreTrouble = message;
        ++storeTroubles;
    }
    if (isTrouble && qstrcmp(context.category, "korvasync.messaging") == 0
        && firstSendingTrouble.isEmpty())
        firstSendingTrouble = message;
    if (traceIsOn || type == QtFatalMsg)
        print(message);
}

void install(bool trace)
{
    traceIsOn = trace;
    if (!trace) {
        // Switched off at the source: the library would otherwise spell out every message.
        QLoggingCategory::setFilterRules(QStringLiteral("*=false\n"
                                                        "korvasync.store.warning=true\n"
                                                        "korvasync.store.critical=true\n"
                                                        "korvasync.messaging.warning=true"));
    }
    qInstallMessageHandler(handle);
}

void silenceWarnings() { warningsAreSilent = true; }

void warn(const QString &sentence)
{
    if (!warningsAreSilent)
        print(QLatin1String("korvasync: ") + sentence);
}

void error(const QString &sentence) { print(QLatin1String("korvasync: ") + sentence); }

QString storeTrouble() { return firstStoreTrouble; }

int storeTroubleCount() { return storeTroubles; }

QString sendingTrouble() { return firstSendingTrouble; }

} // namespace Diagnostics
