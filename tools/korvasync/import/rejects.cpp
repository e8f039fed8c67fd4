// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "rejects.h"

#include "process/diagnostics.h"
#include "shared/terminaltext.h"
#include "shared/text.h"

Rejects::Rejects(const QString &path)
    : m_wanted(path)
{
}

bool Rejects::open() { return !isWanted() || m_file.open(m_wanted); }

void Rejects::add(const ItemResult &result, const QByteArray &message)
{
    if (!isWanted())
        return;
    write(reasonLine(terminalText(result.source), result.rejectReason,
                     terminalText(result.reason().english))
          + "\r\n");
    write(message);
    // A bare line feed could be one of a text that was cut, which the next reason would go on.
    const bool isClosed = message.isEmpty() || message.endsWith("\r\n")
        || (message.endsWith('\n') && !message.contains("\r\n"));
    if (!isClosed)
        write("\r\n");
}

void Rejects::keep(const QByteArray &leftovers)
{
    if (!isWanted())
        return;
    write(leftovers);
    if (!leftovers.endsWith('\n'))
        write("\r\n");
}

void Rejects::leaveIn(const QString &path)
{
    m_predecessorIsNeeded = m_predecessorIsNeeded || m_file.isPredecessor(path);
}

void Rejects::write(const QByteArray &bytes)
{
    m_isEmpty = false;
    m_isWritten = m_isWritten && m_file.write(bytes);
}

bool Rejects::commit(bool isWhole)
{
    if (!isWanted())
        return true;
    if (!m_isWritten || !m_file.finish())
        return false;
    const bool mayReplace = isWhole && !m_predecessorIsNeeded;
    if ((mayReplace || !m_file.hasPredecessor()) && m_file.takePlace())
        return true;
    if (m_isEmpty)
        return true;
    if (!m_file.takePlaceBeside())
        return false;
    Diagnostics::error(Text::tr("%1 stays as it is, since it may hold what was neither stored nor "
                                "refused; the rejects are in %2")
                           .arg(terminalText(m_wanted), terminalText(m_file.path())));
    return true;
}
