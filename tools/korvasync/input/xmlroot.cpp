// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "xmlroot.h"

#include <cctype>

namespace {

bool isStartTag(std::string_view name)
{
    return !name.empty() && std::isalpha(static_cast<unsigned char>(name.front()));
}

} // namespace

void XmlRoot::noteOther(std::string_view name)
{
    m_hasOther = m_hasOther || (!m_root.isEmpty() && isStartTag(name));
}

bool XmlRoot::noteTag(std::string_view name)
{
    const QByteArray bytes(name.data(), static_cast<int>(name.size()));
    if (!m_root.isEmpty() && bytes == '/' + m_root)
        m_isClosed = true;
    if (!m_root.isEmpty() || m_isBackup || !isStartTag(name))
        return false;
    m_root = bytes;
    m_isBackup = m_root == "smses" || m_root == "allsms" || m_root == "calls";
    return true;
}
