#pragma once

/// @file
/// Ordered sets of values of any kind as arrays of one type.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/NSOrderedSet.hpp"
#include <optional>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// The members as an array of `T`, in order. Empty when there is no set, or when one of its members is no
/// `T`: all or nothing. What counts as a `T` is decided by `Any::cast`.
///
/// @snippet Tests/Utilities/OrderedSetArrayValueTests.cpp Members of one type
///
/// Linear. Safe to use from several threads.
template <class T> std::vector<T> arrayValue(const std::optional<NSOrderedSet>& set)
{
    std::vector<T> values;
    if (!set)
        return values;
    values.reserve(set->size());
    for (const Any& member : *set) {
        auto value = member.cast<T>();
        if (!value)
            return {};
        values.push_back(*std::move(value));
    }
    return values;
}

} // namespace orrenby
