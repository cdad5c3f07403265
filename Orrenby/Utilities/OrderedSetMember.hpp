#pragma once

/// @file
/// What may be a member of an ordered set, and what a set may be made of.

#include "Orrenby/Platform/Export.hpp"
#include <concepts>
#include <cstddef>
#include <functional>
#include <iterator>
#include <string>
#include <string_view>
#include <type_traits>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Can be copied, compared and hashed; its `==` agrees with its hash.
template <class T>
concept OrderedSetMember = std::copyable<T> && std::equality_comparable<T> && requires(const T& value)
{
    // clang-format off
    { std::hash<T>{}(value) } -> std::convertible_to<std::size_t>;
    // clang-format on
};

/// What members are looked up by: text by a view, anything else by itself.
template <class T>
using OrderedSetKey = std::conditional_t<std::is_same_v<T, std::string>, std::string_view, const T&>;

/// Anything that a range-for loop takes and that gives what a `T` can be made of.
template <class Sequence, class T>
concept SequenceOf = requires(Sequence& sequence)
{
    // clang-format off
    { *std::begin(sequence) } -> std::convertible_to<T>;
    // clang-format on
    std::end(sequence);
};

} // namespace orrenby::detail
