// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "storelocation.h"

#include "shared/text.h"

using CommHistory::StoreProblem;

StoreLocation::State StoreLocation::state()
{
    const CommHistory::StorePlace::Finding found = m_place.look();
    if (found.problem == StoreProblem::OtherOwner) {
        m_error = Text::tr("it belongs to another user");
        return Unreachable;
    }
    if (found.systemError != 0) {
        m_error = Text::ofSystemError(found.systemError).translated;
        return Unreachable;
    }
    if (found.problem == StoreProblem::Absent)
        return Absent;
    return found.problem == StoreProblem::NotAStore ? OtherFolder : Present;
}
