// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QList>
#include <QtCore/QMutex>
#include <QtCore/QMutexLocker>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QtGlobal>

//! Takes what goes to Qt's message handler, as long as it lives. One at a time.
class MessageLog
{
public:
    MessageLog()
    {
        if (current())
            qFatal("There is a message log already");
        current() = this;
        previous = qInstallMessageHandler(take);
    }
    ~MessageLog()
    {
        qInstallMessageHandler(previous);
        current() = nullptr;
    }

    //! The lines of one level, in order.
    QStringList lines(QtMsgType level) const
    {
        const QMutexLocker locker(&mutex);
        QStringList result;
        for (const Line &line : entries) {
            if (line.level == level)
                result.append(line.text);
        }
        return result;
    }
    //! The lines of one level that begin with \a start.
    QStringList linesFrom(QtMsgType level, const QString &start) const
    {
        QStringList result;
        for (const QString &line : lines(level)) {
            if (line.startsWith(start))
                result.append(line);
        }
        return result;
    }
    void clear()
    {
        const QMutexLocker locker(&mutex);
        entries.clear();
    }

private:
    Q_DISABLE_COPY(MessageLog)

    struct Line
    {
        QtMsgType level;
        QString text;
    };

    static MessageLog *&current()
    {
        static MessageLog *log = nullptr;
        return log;
    }
    static void take(QtMsgType level, const QMessageLogContext &, const QString &text)
    {
        const QMutexLocker locker(&current()->mutex);
        current()->entries.append({level, text});
    }

    mutable QMutex mutex; // the store logs in a thread of its own
    QtMessageHandler previous;
    QList<Line> entries;
};
