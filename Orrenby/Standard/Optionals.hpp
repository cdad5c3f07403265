#pragma once

/// @file
/// What optional values lack.

#include "Orrenby/Platform/Export.hpp"
#include <concepts>
#include <functional>
#include <iterator>
#include <optional>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

/// Calls with the value when there is one, else not at all. What the callable throws passes through.
///
/// @snippet Tests/Standard/OptionalsTests.cpp Working with optional values
template <class Value, std::invocable<const Value&> F>
void withValue(const std::optional<Value>& optional, F&& perform)
{
    if (optional)
        std::invoke(std::forward<F>(perform), *optional);
}

/// Whether there is no collection, or one without elements.
template <class Collection> bool isEmpty(const std::optional<Collection>& optional)
{
    return !optional || std::empty(*optional);
}

} // namespace orrenby
