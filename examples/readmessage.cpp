// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// readmessage: reads a vMessage from standard input, and prints its time, the other party and the
// text, or the line to look at when it holds no message that is whole.

#include <korvasync/vmessagedecoder.h>

#include <QtCore/QFile>

#include <cstdio>

using namespace KorvaSyncIf;

int main()
{
    QFile input;
    if (!input.open(stdin, QIODevice::ReadOnly))
        return 1;
    VMessageDecoder decoder;
    HistoryItem item;
    if (!decoder.decode(input.readAll(), &item)) {
        std::fprintf(stderr, "readmessage: not a whole message, see line %d\n",
                     decoder.problem().line);
        return 1;
    }
    std::printf("%s %s\n%s\n", qPrintable(item.time.toString(Qt::ISODate)),
                qUtf8Printable(item.party), qUtf8Printable(item.text));
    return 0;
}
