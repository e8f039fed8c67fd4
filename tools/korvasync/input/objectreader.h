// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "formreader.h"

//! Reads call-history entries and foreign objects: what stands between other BEGIN: and END:
//! lines than a message's.
class ObjectReader final : public FormReader
{
public:
    ObjectReader(LineWindow &window, QList<InputItem> &items)
        : FormReader(window, items)
    {
    }

    Beginning beginningAt(std::string_view head) override;
    void open() override;
    bool step() override;
    void finish() override { emitItem(m_window.offset()); }

private:
    std::string_view m_name; // of the object
    bool m_endsHere = false; // with the line in hand
};
