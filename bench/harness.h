// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <valgrind/callgrind.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace Bench {

//! One participant's turn in one round of a row, as the command line asks for it.
struct Turn
{
    std::string row;         //!< name of the row, or how the names of its rows begin
    std::string who;         //!< ours, limit or a peer, and in which surroundings: "ours, bus"
    std::string folder = {}; //!< where the store or the files lie
    int count = 100000;      //!< records
    int numbers = 200;       //!< parties
    int callSize = 1000;     //!< messages in a call or transaction of a row that adds
    int present = 0;         //!< records that the store has already

    bool isOurs() const { return who.compare(0, 4, "ours") == 0; }

    void report(double seconds, const std::string &rest = std::string()) const
    {
        std::printf("%s%s\t%s\t%.9f\n", row.c_str(), rest.c_str(), who.c_str(), seconds);
    }
};

//! Seconds that the work takes. Under callgrind, its instructions alone are counted, those of
//! the store's thread too.
template <typename Work>
double seconds(const Work &work)
{
    CALLGRIND_START_INSTRUMENTATION;
    const auto start = std::chrono::steady_clock::now();
    work();
    const auto end = std::chrono::steady_clock::now();
    CALLGRIND_STOP_INSTRUMENTATION;
    return std::chrono::duration<double>(end - start).count();
}

//! Ends the program when a result is not what it must be: a fast wrong answer is no figure.
inline void check(bool holds, const char *what)
{
    if (holds)
        return;
    std::fprintf(stderr, "bench: wrong result: %s\n", what);
    std::exit(1);
}

} // namespace Bench
