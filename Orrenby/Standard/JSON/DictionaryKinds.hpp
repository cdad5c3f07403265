#pragma once

/// @file
/// What the kinds of dictionaries have in common. Not in the umbrella header: part of Dictionaries.hpp.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include <concepts>
#include <functional>
#include <set>
#include <string>
#include <type_traits>
#include <unordered_set>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

template <class T>
concept SortedMap = StandardMap<T> && requires
{
    typename T::key_compare;
};
template <class T>
concept HashedMap = StandardMap<T> && requires
{
    typename T::hasher;
};
/// Not maps that hold several values under one key.
template <class T>
concept DictionaryKind = std::same_as<T, Dictionary> ||(
    (SortedMap<T> || HashedMap<T>)&&requires { typename T::insert_return_type; });

template <class D> struct KeySetOf {
    using type = std::set<std::string>;
};
template <SortedMap D> struct KeySetOf<D> {
    using type = std::set<typename D::key_type, typename D::key_compare>;
};
template <HashedMap D> struct KeySetOf<D> {
    using type = std::unordered_set<typename D::key_type, typename D::hasher, typename D::key_equal>;
};
template <class D> using KeySet = typename KeySetOf<D>::type;

template <class D> struct EntryTypes {
    using Key = typename D::key_type;
    using Value = typename D::mapped_type;
};
template <> struct EntryTypes<Dictionary> {
    using Key = std::string;
    using Value = Any;
};

template <class D, class F>
concept EntryPredicate = DictionaryKind<D> && std::predicate<F&, const typename EntryTypes<D>::Key&,
    const typename EntryTypes<D>::Value&>;

template <class D, class Key, class Value> void setEntry(D& dictionary, const Key& key, const Value& value)
{
    if constexpr (std::same_as<D, Dictionary>)
        dictionary.set(key, value);
    else
        dictionary.insert_or_assign(key, value);
}

} // namespace orrenby::inline ORRENBY_ABI::detail
