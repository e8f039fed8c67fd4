// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "input/itemreader.h"
#include "options/command.h"

#include <QtCore/QTimeZone>

//! How files are read, and what becomes of their items.
struct ImportOptions
{
    enum Purpose {
        Add,
        Verify //!< only looks whether the items are in the store
    };
    enum OnDuplicate { Skip, AddAgain, Refuse };

    // --from's words for objects between BEGIN: and END: lines.
    static constexpr const char *MessageForm = "vmsg";
    static constexpr const char *CallForm = "entries";

    const Purpose purpose = Add;
    ItemReader::Form form = ItemReader::AnyForm;
    QTimeZone localZone = {}; //!< where times without a zone are meant

    // For Add alone.
    OnDuplicate onDuplicate = Skip;
    int chunkSize = 500;
    QString rejects = {}; //!< file for what is refused; empty = none

    //! Takes the options that all who import have.
    //! \param textForm  MessageForm or CallForm
    //! \return false when one is not as it must be, which is told on stderr
    [[nodiscard]] bool take(const Invocation &invocation, const char *textForm);
    static QList<QCommandLineOption> declared(Purpose purpose, const char *textForm);

private:
    [[nodiscard]] bool takeReading(const Invocation &invocation, const char *textForm);
};
