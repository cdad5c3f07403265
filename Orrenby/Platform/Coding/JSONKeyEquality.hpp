#pragma once

/// @file
/// The comparison of keys. Not in the umbrella header: part of the coders' own workings.

#include "Orrenby/Platform/Export.hpp"
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Whether `size` bytes, at least as many as a `Word` has, are the same: by words, the last of which may
/// overlap.
template <class Word> bool areSameWords(const char* first, const char* second, std::size_t size) noexcept
{
    const auto differs = [&](std::size_t place) {
        Word left = 0;
        Word right = 0;
        std::memcpy(&left, first + place, sizeof left);
        std::memcpy(&right, second + place, sizeof right);
        return left != right;
    };
    for (std::size_t place = 0; place + sizeof(Word) < size; place += sizeof(Word))
        if (differs(place))
            return false;
    return !differs(size - sizeof(Word));
}

/// The same as `==`, without a call: keys are short, and their comparison is most of a lookup.
inline bool isSameKey(std::string_view first, std::string_view second) noexcept
{
    if (first.size() != second.size())
        return false;
    if (first.size() >= sizeof(std::uint64_t))
        return areSameWords<std::uint64_t>(first.data(), second.data(), first.size());
    if (first.size() >= sizeof(std::uint16_t))
        return areSameWords<std::uint16_t>(first.data(), second.data(), first.size());
    return first.empty() || first.front() == second.front();
}

} // namespace orrenby::inline ORRENBY_ABI::detail
