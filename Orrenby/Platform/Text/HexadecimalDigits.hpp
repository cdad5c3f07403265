#pragma once

/// @file
/// The value of a hexadecimal digit. Not in the umbrella header: part of Hexadecimal.cpp.

#include "Orrenby/Platform/Export.hpp"

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

/// 0 … 15, or −1 for what is no digit. Upper and lower case do.
constexpr int hexadecimalDigit(char character) noexcept
{
    if (character >= '0' && character <= '9')
        return character - '0';
    if (character >= 'a' && character <= 'f')
        return character - 'a' + 10;
    if (character >= 'A' && character <= 'F')
        return character - 'A' + 10;
    return -1;
}

} // namespace detail

} // namespace orrenby
