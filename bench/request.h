// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "harness.h"

#include <QtCore/QEventLoop>

namespace Bench {

//! Waits for a request of the library; \a collect has the pending object with its results.
template <typename Pending, typename Collect>
void waitFor(Pending *pending, const Collect &collect)
{
    check(!pending->isError(), "the request was refused");
    QEventLoop loop;
    QObject::connect(pending, &Pending::finished, &loop, [&] {
        collect(pending);
        loop.quit();
    });
    loop.exec();
}

} // namespace Bench
