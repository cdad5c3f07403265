#pragma once

/// @file
/// Copies of nested collections without null markers and empty containers.

#include "Orrenby/Foundation/AnyEntries.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Platform/Objects/NSSet.hpp"
#include "Orrenby/Platform/Objects/Pipeable.hpp"
#include <concepts>
#include <type_traits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

/// What `safeDictionary` does with containers that hold nothing once they are cleaned.
struct SafeDictionaryOptions {
    /// Whether such a container leaves the dictionary, and every dictionary nested in it. Lists and sets
    /// always drop them.
    bool removeEmptyCollections = false;
};

namespace detail {

ORRENBY_EXPORT Dictionary safeDictionaryOf(Dictionary dictionary, SafeDictionaryOptions options);
ORRENBY_EXPORT AnyEntries safeDictionaryOf(AnyEntries entries, SafeDictionaryOptions options);
ORRENBY_EXPORT Array safeArrayOf(Array array);
ORRENBY_EXPORT NSSet safeSetOf(NSSet set);

template <class T>
concept DictionaryForm
    = std::same_as<std::remove_cvref_t<T>, Dictionary> || std::same_as<std::remove_cvref_t<T>, AnyEntries>;

/// `safeDictionary` has two kinds of subjects, so it is no plain pipeable operation. Templates throughout: no
/// list in braces is taken for a subject where options are meant.
struct SafeDictionary {
    struct Bound {
        SafeDictionaryOptions options;

        template <DictionaryForm D> friend std::remove_cvref_t<D> operator|(D&& dictionary, Bound bound)
        {
            return safeDictionaryOf(std::forward<D>(dictionary), bound.options);
        }
    };

    template <DictionaryForm D>
    std::remove_cvref_t<D> operator()(D&& dictionary, SafeDictionaryOptions options = {}) const
    {
        return safeDictionaryOf(std::forward<D>(dictionary), options);
    }
    [[nodiscard]] constexpr Bound operator()(SafeDictionaryOptions options) const { return {options}; }

    template <DictionaryForm D> friend std::remove_cvref_t<D> operator|(D&& dictionary, SafeDictionary)
    {
        return safeDictionaryOf(std::forward<D>(dictionary), {});
    }
};

} // namespace detail

/// The dictionary without its null markers, at every depth: `safeDictionary(members)`, `members |
/// safeDictionary`, `members | safeDictionary({.removeEmptyCollections = true})`.
///
/// A nested list or set takes the form that `safeArray` and `safeSet` give it, a nested dictionary its own
/// safe copy with the same options. So an empty list inside a list always goes; inside a dictionary it goes
/// only with `removeEmptyCollections`, which looks at what a container holds *after* it was cleaned. Keys and
/// the order of what stays are those of the subject. Containers of other types, `NSOrderedSet` among them,
/// are values like any other. A subject that ends up empty is given back empty.
///
/// @snippet Tests/Foundation/SafeCopiesTests.cpp Cleaning a nested collection
///
/// Linear in all that is nested, at any depth: it needs no stack of its own (that a value of many thousand
/// levels can be destroyed is up to `Any`). Nested containers without anything to remove are shared with the
/// subject; an rvalue subject is changed in place. Safe to use from several threads.
inline constexpr detail::SafeDictionary safeDictionary;

/// The list without its null markers, at every depth, and without nested containers that hold nothing once
/// they are cleaned: `safeArray(values)`, `values | safeArray`.
///
/// Nested dictionaries, too, lose whatever is empty in them. A subject that ends up empty is given back
/// empty.
///
/// @snippet Tests/Foundation/SafeCopiesTests.cpp Cleaning a list
///
/// Cost and threads as with `safeDictionary`.
inline constexpr auto safeArray = pipeable<Array>(
    [](Array array) { return detail::safeArrayOf(std::move(array)); });

/// The set of what `safeArray` makes of the members. Members that differed only in what was removed become
/// one, which stands where the first of them stood.
///
/// @snippet Tests/Foundation/SafeCopiesTests.cpp Cleaning a set
///
/// Cost and threads as with `safeDictionary`, and one hash of each member when any is changed.
inline constexpr auto safeSet = pipeable<NSSet>([](NSSet set) { return detail::safeSetOf(std::move(set)); });

} // namespace orrenby
