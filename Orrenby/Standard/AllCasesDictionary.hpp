#pragma once

/// @file
/// Dictionaries made of all cases of an enumeration.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Platform/Objects/RawRepresentable.hpp"
#include <functional>
#include <map>
#include <type_traits>
#include <unordered_map>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

/// Keys without an order are hashed.
template <class Key, class Value> struct CasesDictionary {
    using type = std::unordered_map<Key, Value>;
};
template <class Key, class Value>
    requires requires(const Key& key) { std::less<>()(key, key); }
struct CasesDictionary<Key, Value> {
    using type = std::map<Key, Value>;
};

} // namespace detail

/// Calls with every case of an enumeration that lists them (`allCases`), in the order in which it lists them.
/// The callable gives a pair of key and value. Two cases with one key are a programming error and end the
/// process; what the callable throws passes through.
///
/// The result is a `std::map`, or a `std::unordered_map` when the keys have no order.
///
/// @snippet Tests/Standard/AllCasesDictionaryTests.cpp A dictionary of all cases
template <class Enumeration, std::invocable<Enumeration> F>
    requires detail::ListsItsCases<Enumeration>
auto allCasesDictionary(F&& transform)
{
    using Pair = std::remove_cvref_t<std::invoke_result_t<F&, Enumeration>>;
    using Key = std::remove_cvref_t<typename Pair::first_type>;
    using Value = std::remove_cvref_t<typename Pair::second_type>;
    typename detail::CasesDictionary<Key, Value>::type dictionary;
    for (const Enumeration value : allCases<Enumeration>)
        if (!dictionary.insert(std::invoke(transform, value)).second)
            fatalError("Two cases have the same key", "Standard/AllCasesDictionary", 31);
    return dictionary;
}

} // namespace orrenby
