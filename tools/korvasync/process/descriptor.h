// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <unistd.h>
#include <utility>

//! An open file descriptor, closed in the end.
class Descriptor
{
public:
    explicit Descriptor(int number = -1)
        : number(number)
    {
    }
    Descriptor(Descriptor &&other) noexcept
        : number(std::exchange(other.number, -1))
    {
    }
    Descriptor &operator=(Descriptor &&other) noexcept
    {
        std::swap(number, other.number);
        return *this;
    }
    ~Descriptor()
    {
        if (isOpen())
            close(number);
    }

    bool isOpen() const { return number >= 0; }
    operator int() const { return number; }

private:
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    int number;
};
