// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// korvasync-bench WORK ROW WHO [FOLDER [COUNT [NUMBERS [CALL-SIZE [PRESENT]]]]]: one
// participant's turn in one round of a row. Prints a line "row<TAB>participant<TAB>seconds" for
// each figure.

#include "rows.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QLoggingCategory>

namespace {

struct Work
{
    const char *name;
    void (*run)(const Bench::Turn &turn);
};

constexpr Work works[] = {
    {"encode", Bench::encode},
    {"decode", Bench::decode},
    {"add", Bench::add},
    {"read", Bench::readFolder},
    {"modified", Bench::readModified},
    {"message", Bench::readOne},
    {"delete", Bench::removeMessages},
    {"conversations", Bench::resolveConversations},
    {"calls", Bench::addAndReadCalls},
    {"open", Bench::openStore},
    {"read-all", Bench::readAllFolders},
    {"read-files", Bench::readFiles},
    {"add-files", Bench::readAndAddFiles},
    {"make-store", Bench::makeStore},
    {"make-files", Bench::makeFiles},
    {"make-one-file", Bench::makeOneFile},
};

//! The trace is off, as programs have it; the timing lines are made and thrown away.
void silence()
{
    QLoggingCategory::setFilterRules(QStringLiteral("korvasync.*.debug=false"));
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc < 4)
        return 2;
    Bench::Turn turn{argv[2], argv[3]};
    if (argc > 4)
        turn.folder = argv[4];
    if (argc > 5)
        turn.count = std::atoi(argv[5]);
    if (argc > 6)
        turn.numbers = std::atoi(argv[6]);
    if (argc > 7)
        turn.callSize = std::atoi(argv[7]);
    if (argc > 8)
        turn.present = std::atoi(argv[8]);
    qputenv("KORVASYNC_STORE", turn.folder.c_str());
    QCoreApplication application(argc, argv);
    silence();
    for (const Work &work : works) {
        if (std::string(argv[1]) == work.name) {
            work.run(turn);
            return 0;
        }
    }
    return 2;
}
