// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "diagnostics.h"

#include "shared/terminaltext.h"
#include "shared/troublewatch.h"

#include <QtCore/QLoggingCategory>
#include <QtCore/QMutex>
#include <QtCore/QMutexLocker>

#include <cstdio>

namespace Diagnostics {

static bool traceIsOn = false;
static bool warningsAreSilent = false;

//! What the platform has warned of, from the store's own thread as well.
struct Troubles
{
    QMutex mutex;
    QString firstOfStore;
};

static Troubles &troubles()
{
    static Troubles *const instance = new Troubles; // the store's thread may outlive main()
    return *instance;
}

static void print(const QByteArray &bytes)
{
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stderr);
}

// On one line, whatever names, paths and the modem's own words are part of it.
static void printSentence(const QString &sentence)
{
    print("korvasync: " + terminalText(sentence).toUtf8() + '\n');
}

static void noteTrouble(const char *category, const QString &message)
{
    if (qstrcmp(category, "korvasync.store") != 0)
        return;
    TroubleWatch::note();
    Troubles &all = troubles();
    const QMutexLocker locker(&all.mutex);
    if (all.firstOfStore.isEmpty())
        all.firstOfStore = message;
}

static void handle(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (type != QtDebugMsg && type != QtInfoMsg)
        noteTrouble(context.category, message);
    if (traceIsOn || type == QtFatalMsg)
        print(terminalLines(message.toUtf8()) + '\n');
}

void install() { qInstallMessageHandler(handle); }

void showTrace(bool isOn)
{
    traceIsOn = isOn;
    if (!isOn) {
        // Switched off at the source: the library would otherwise spell out every message.
        QLoggingCategory::setFilterRules(QStringLiteral("*=false\n"
                                                        "korvasync.store.warning=true\n"
                                                        "korvasync.store.critical=true"));
    }
}

void silenceWarnings() { warningsAreSilent = true; }

void warn(const QString &sentence)
{
    if (!warningsAreSilent)
        printSentence(sentence);
}

void error(const QString &sentence) { printSentence(sentence); }

void ask(const QString &question) { print(terminalText(question).toUtf8() + ' '); }

QString storeTrouble()
{
    const QMutexLocker locker(&troubles().mutex);
    return troubles().firstOfStore;
}

} // namespace Diagnostics
