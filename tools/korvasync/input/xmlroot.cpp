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
    hasOther = hasOther || (!root.isEmpty() && isStartTag(name));
}

bool XmlRoot::noteTag(std::string_view name)
{
    const QByteArray bytes(name.data(), static_cast<int>(name.size()));
    if (!root.isEmpty() && bytes == '/' + root)
        isClosed = true;
    if (!root.isEmpty() || isBackup || !isStartTag(name))
        return false;
    root = bytes;
    isBackup = root == "smses" || root == "allsms" || root == "calls";
    return true;
}
