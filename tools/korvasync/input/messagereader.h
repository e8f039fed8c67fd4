// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "formreader.h"

#include <vmessage/vmessagescanner.h>

#include <optional>

//! Reads vMessages. What begins in one that is cut or broken is read again by itself.
class MessageReader final : public FormReader
{
public:
    MessageReader(LineWindow &window, QList<InputItem> &items)
        : FormReader(window, items)
    {
    }

    Beginning beginningAt(std::string_view head) override;
    void open() override;
    bool step() override;
    void finish() override;

private:
    bool endsBefore(std::string_view head) const;
    void noteOtherObject(std::string_view head);
    bool takeLineInHand();
    bool emitUpTo(quint64 end, bool isComplete);

    VMessageScanner m_scanner;
    LineWindow::Mark m_lineInHand;
    std::optional<LineWindow::Mark> m_otherObject; // which seems to begin in the message
    quint64 m_brokenUpTo = 0;                      // the end of the latest message that was none
};
