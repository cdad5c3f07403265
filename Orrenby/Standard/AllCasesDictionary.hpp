#pragma once

/// @file
/// Dictionaries made of all cases of an enumeration.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Platform/Objects/RawRepresentable.hpp"
#include <functional>
#include <map>
#include <type_traits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

/// Calls with every case of an enumeration that lists them (`allCases`), in the order in which it lists them.
/// The callable gives a pair of key and value. Two cases with one key are a programming error and end the
/// process; what the callable throws passes through.
///
/// @snippet Tests/Standard/AllCasesDictionaryTests.cpp A dictionary of all cases
template <class Enumeration, std::invocable<Enumeration> F>
    requires detail::ListsItsCases<Enumeration>
auto allCasesDictionary(F&& transform)
{
    using Pair = std::remove_cvref_t<std::invoke_result_t<F&, Enumeration>>;
    std::map<std::remove_cvref_t<typename Pair::first_type>, std::remove_cvref_t<typename Pair::second_type>>
        dictionary;
    for (const Enumeration value : allCases<Enumeration>)
        if (!dictionary.insert(std::invoke(transform, value)).second)
            fatalError("Two cases have the same key", "Standard/AllCasesDictionary", 31);
    return dictionary;
}

} // namespace orrenby
