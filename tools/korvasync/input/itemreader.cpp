// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "itemreader.h"

#include <algorithm>

ItemReader::ItemReader(const QString &path, Form form, const QByteArray &readAhead)
    : window(path, readAhead)
    , gap(window, found)
    , messages(window, found)
    , objects(window, found)
    , markup(window, found, gap)
    , takesMarkup(form != TextObjects)
{
    if (form != AndroidXml)
        textForms = {&messages, &objects};
}

std::optional<InputItem> ItemReader::next()
{
    while (found.isEmpty()) {
        if (step())
            continue;
        if (window.hasEnded() ? !finish() : !fill())
            return std::nullopt;
    }
    return found.takeFirst();
}

bool ItemReader::fill()
{
    const quint64 needed = gap.needed();
    return window.fill(current ? std::min(current->needed(), needed) : needed);
}

//! Reads on. \return false when more bytes are needed
bool ItemReader::step()
{
    if (window.rest().empty())
        return false;
    if (!current)
        return stepBetween();
    const bool isDone = current->step();
    if (!current->isOpen())
        current = nullptr;
    return isDone;
}

bool ItemReader::stepBetween()
{
    if (gap.isInRemark()) {
        gap.passRemark();
        return true;
    }
    if (window.atLineStart()) {
        const auto head = window.lineHead();
        if (!head)
            return false;
        if (gap.beginRemark(*head))
            return true;
        for (FormReader *const form : textForms) {
            if (opens(*form, *head))
                return true;
        }
        if (!textForms.empty())
            gap.noteLine(*head);
        window.enterLine();
    }
    return gap.passUpToTag() ? stepToTag() : true;
}

bool ItemReader::stepToTag()
{
    const std::string_view head = window.rest().substr(0, MarkupReader::headLength);
    if (head.size() < MarkupReader::headLength && !window.hasEnded())
        return false;
    if (!takesMarkup || !opens(markup, head))
        window.take(1);
    return true;
}

bool ItemReader::opens(FormReader &form, std::string_view head)
{
    const FormReader::Beginning beginning = form.beginningAt(head);
    if (beginning == FormReader::Nothing)
        return false;
    if (beginning == FormReader::Item)
        gap.endBeforeItem();
    else
        gap.end();
    form.open();
    current = &form;
    return true;
}

//! Closes what is open at the end of the file. \return false when nothing is left to do
bool ItemReader::finish()
{
    if (current) {
        current->finish();
        if (!current->isOpen())
            current = nullptr;
        return true;
    }
    if (gap.endOfFile())
        return true;
    if (cutIsTold || (!gap.endsInCutBegin() && !markup.isCut()))
        return false;
    cutIsTold = true;
    found += InputItem{InputItem::CutFile, QByteArray(), window.here().line, false};
    return true;
}
