#pragma once

/// @file
/// Ordered sets to try things with.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Utilities/OrderedSet.hpp"
#include <cstddef>
#include <functional>
#include <string>

namespace orrenby::inline ORRENBY_ABI::testing {

using Numbers = OrderedSet<int>;
using Texts = OrderedSet<std::string>;

/// Equal by its number alone, so that a test can tell which of two equal members was kept.
struct Noted {
    int number = 0;
    std::string note;
    friend bool operator==(const Noted& first, const Noted& second) { return first.number == second.number; }
};

/// The set `{1, 2, 3}` after its first member was set to its last one: 3, 2, 3.
inline Numbers withADuplicate()
{
    auto set = Numbers{1, 2, 3};
    set[0] = 3;
    return set;
}

} // namespace orrenby::testing

template <> struct std::hash<orrenby::testing::Noted> {
    std::size_t operator()(const orrenby::testing::Noted& value) const
    {
        return static_cast<std::size_t>(value.number);
    }
};
