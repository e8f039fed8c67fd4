// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QByteArrayList>

//! Names of senders that mean something to a query, a pattern or a shell, in UTF-8.
inline QByteArrayList oddNames()
{
    return {"Customer Service",
            "SelfService",
            "service",
            "McDonald's",
            "Bank+",
            "C++",
            "Info(1)",
            "Info(",
            "a\\b",
            "*Promo*",
            "50% off",
            "$hop",
            "[x]",
            "x]",
            "x{2}",
            "Q?",
            "a|b",
            "^top",
            "#1 Shop",
            "<b>",
            "\"Q\"",
            "O'Neil & Co",
            "a.b",
            "x'",
            "'x",
            "\\u0041bc",
            "%1",
            "\xF0\x9F\x98\x80x"};
}
