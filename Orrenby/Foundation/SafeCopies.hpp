#pragma once

/// @file
/// Copies of nested collections without null markers and empty containers.

#include "Orrenby/Foundation/DictionaryEntries.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Platform/Objects/NSSet.hpp"
#include "Orrenby/Platform/Objects/Pipeable.hpp"
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
ORRENBY_EXPORT DictionaryEntries safeDictionaryOf(DictionaryEntries entries, SafeDictionaryOptions options);
ORRENBY_EXPORT Array safeArrayOf(Array array);
ORRENBY_EXPORT NSSet safeSetOf(NSSet set);

/// `safeDictionary` has two kinds of subjects, so it is no plain pipeable operation.
struct SafeDictionary {
    struct Bound {
        SafeDictionaryOptions options;

        friend Dictionary operator|(Dictionary dictionary, Bound bound)
        {
            return safeDictionaryOf(std::move(dictionary), bound.options);
        }
        friend DictionaryEntries operator|(DictionaryEntries entries, Bound bound)
        {
            return safeDictionaryOf(std::move(entries), bound.options);
        }
    };

    Dictionary operator()(Dictionary dictionary, SafeDictionaryOptions options = {}) const
    {
        return safeDictionaryOf(std::move(dictionary), options);
    }
    DictionaryEntries operator()(DictionaryEntries entries, SafeDictionaryOptions options = {}) const
    {
        return safeDictionaryOf(std::move(entries), options);
    }
    [[nodiscard]] constexpr Bound operator()(SafeDictionaryOptions options) const { return {options}; }

    friend Dictionary operator|(Dictionary dictionary, SafeDictionary)
    {
        return safeDictionaryOf(std::move(dictionary), {});
    }
    friend DictionaryEntries operator|(DictionaryEntries entries, SafeDictionary)
    {
        return safeDictionaryOf(std::move(entries), {});
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
