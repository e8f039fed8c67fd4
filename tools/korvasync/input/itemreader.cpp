// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "itemreader.h"

#include <algorithm>

ItemReader::ItemReader(const QString &path, Form form, const QByteArray &readAhead)
    : m_window(path, readAhead)
    , m_gap(m_window, m_found)
    , m_messages(m_window, m_found)
    , m_objects(m_window, m_found)
    , m_markup(m_window, m_found, m_gap)
    , m_takesMarkup(form != TextObjects)
{
    if (form != AndroidXml)
        m_textForms = {&m_messages, &m_objects};
}

std::optional<InputItem> ItemReader::next()
{
    while (m_found.isEmpty()) {
        if (step())
            continue;
        if (m_window.hasEnded() ? !finish() : !fill())
            return std::nullopt;
    }
    return m_found.takeFirst();
}

bool ItemReader::fill()
{
    const quint64 needed = m_gap.needed();
    return m_window.fill(m_current ? std::min(m_current->needed(), needed) : needed);
}

//! Reads on. \return false when more bytes are needed
bool ItemReader::step()
{
    if (m_window.rest().empty())
        return false;
    if (!m_current)
        return stepBetween();
    const bool isDone = m_current->step();
    if (!m_current->isOpen())
        m_current = nullptr;
    return isDone;
}

bool ItemReader::stepBetween()
{
    if (m_gap.isInRemark()) {
        m_gap.passRemark();
        return true;
    }
    if (m_window.atLineStart()) {
        const auto head = m_window.lineHead();
        if (!head)
            return false;
        if (m_gap.beginRemark(*head))
            return true;
        for (FormReader *const form : m_textForms) {
            if (opens(*form, *head))
                return true;
        }
        if (!m_textForms.empty())
            m_gap.noteLine(*head);
        m_window.enterLine();
    }
    return m_gap.passUpToTag() ? stepToTag() : true;
}

bool ItemReader::stepToTag()
{
    const std::string_view head = m_window.rest().substr(0, MarkupReader::HeadLength);
    if (head.size() < MarkupReader::HeadLength && !m_window.hasEnded())
        return false;
    if (!m_takesMarkup || !opens(m_markup, head))
        m_window.take(1);
    return true;
}

bool ItemReader::opens(FormReader &form, std::string_view head)
{
    const FormReader::Beginning beginning = form.beginningAt(head);
    if (beginning == FormReader::Nothing)
        return false;
    if (beginning == FormReader::Item)
        m_gap.endBeforeItem();
    else
        m_gap.end();
    form.open();
    m_current = &form;
    return true;
}

//! Closes what is open at the end of the file. \return false when nothing is left to do
bool ItemReader::finish()
{
    if (m_current) {
        m_current->finish();
        if (!m_current->isOpen())
            m_current = nullptr;
        return true;
    }
    if (m_gap.endOfFile())
        return true;
    if (m_cutIsTold || (!m_gap.endsInCutBegin() && !m_markup.isCut()))
        return false;
    m_cutIsTold = true;
    m_found += InputItem{InputItem::CutFile, QByteArray(), m_window.here().line, false};
    return true;
}
