// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/qglobal.h>

namespace CommHistory {

//! As long as it lives, SQLite asks once more for what a disk did not give, or take, at once. The
//! database library cannot bear such an error while it opens its files: it crashes in its report
//! of it. Errors that last are found before, by StoreConnection::probeFiles(). One at a time.
class RepeatedCalls
{
public:
    RepeatedCalls();
    ~RepeatedCalls();

private:
    Q_DISABLE_COPY(RepeatedCalls)
};

} // namespace CommHistory
