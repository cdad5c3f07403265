#pragma once

/// @file
/// The comparison of keys. Not in the umbrella header: part of the coders' own workings.

#include "Orrenby/Platform/Export.hpp"
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI::detail {

template <class Word> bool isSameWord(const char* first, const char* second) noexcept
{
    Word left = 0;
    Word right = 0;
    std::memcpy(&left, first, sizeof left);
    std::memcpy(&right, second, sizeof right);
    return left == right;
}

/// Whether `size` bytes are the same, which are one to two words: by their first and their last, which may
/// overlap.
template <class Word> bool areSameEnds(const char* first, const char* second, std::size_t size) noexcept
{
    const auto last = size - sizeof(Word);
    return isSameWord<Word>(first, second) && isSameWord<Word>(first + last, second + last);
}

/// The same as `==`, without a call: keys are short, and their comparison is most of a lookup.
inline bool isSameKey(std::string_view first, std::string_view second) noexcept
{
    const auto size = first.size();
    if (size != second.size())
        return false;
    if (size > 2 * sizeof(std::uint64_t))
        return std::memcmp(first.data(), second.data(), size) == 0;
    if (size >= sizeof(std::uint64_t))
        return areSameEnds<std::uint64_t>(first.data(), second.data(), size);
    if (size >= sizeof(std::uint32_t))
        return areSameEnds<std::uint32_t>(first.data(), second.data(), size);
    if (size >= sizeof(std::uint16_t))
        return areSameEnds<std::uint16_t>(first.data(), second.data(), size);
    return size == 0 || first.front() == second.front();
}

} // namespace orrenby::inline ORRENBY_ABI::detail
