#pragma once

/// @file
/// What dictionaries lack: joining, comparing keys, separating, and reading from JSON text.

#include "Orrenby/Platform/Errors/AnyError.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include "Orrenby/Standard/JSON/DictionaryKinds.hpp"
#include "Orrenby/Standard/SequenceOperation.hpp"
#include <cstddef>
#include <functional>
#include <span>
#include <type_traits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

// "Dictionary" means `Dictionary` as well as the maps of the standard library, ordered and unordered. All
// operations are linear; none is synchronised.

/// The entries of a dictionary for which a predicate held, and those for which it did not.
template <class AnyDictionary> struct SeparatedEntries {
    AnyDictionary matching;    ///< Those for which it held, in their order.
    AnyDictionary notMatching; ///< The others, in their order.

    friend bool operator==(const SeparatedEntries&, const SeparatedEntries&) = default;
};

/// The entries of both. Where both have a key, it keeps its place among those of the first and takes the
/// value of the second.
///
/// @snippet Tests/Standard/JSON/DictionariesTests.cpp Working with dictionaries
ORRENBY_EXPORT Dictionary operator+(Dictionary first, const Dictionary& second);

/// The same for the maps of the standard library. Their own namespace has no such operator: where `orrenby`
/// is not used as a whole, `using orrenby::operator+;` lets it be found.
///
/// @snippet Tests/Standard/JSON/DictionariesTests.cpp Joining standard maps
template <template <class...> class Map, class... Parameter>
    requires detail::DictionaryKind<Map<Parameter...>> Map<Parameter...>
operator+(Map<Parameter...> first, const Map<Parameter...>& second)
{
    for (const auto& [key, value] : second)
        first.insert_or_assign(key, value);
    return first;
}

/// The keys that both have: a `std::set`, for unordered maps a `std::unordered_set`.
template <detail::DictionaryKind D>
detail::KeySet<D> sharedKeys(const D& first, const std::type_identity_t<D>& second)
{
    detail::KeySet<D> result;
    for (const auto& [key, value] : first)
        if (second.contains(key))
            result.insert(key);
    return result;
}

/// Splits by a predicate on key and value; both parts keep the order. What it throws passes through.
///
/// With a predicate on the whole entry, Sequences.hpp gives the entries as two lists instead.
template <Sequence D, class F>
    requires detail::EntryPredicate<std::remove_cvref_t<D>, F>
auto separate(D&& dictionary, F&& predicate)
{
    SeparatedEntries<std::remove_cvref_t<D>> result;
    for (const auto& [key, value] : dictionary)
        detail::setEntry(
            std::invoke(predicate, key, value) ? result.matching : result.notMatching, key, value);
    return result;
}

/// The JSON object that the bytes are, in the order of its members. See `NSJSONSerialization` for encodings
/// and numbers. A member that is null holds the null marker.
///
/// Throws `JSONError::invalidData` for a list, and what the reader throws for everything else that is no
/// object: `JSONReadError` or `DecodingError`.
///
/// @snippet Tests/Standard/JSON/DictionariesTests.cpp Reading a dictionary
///
/// Safe to use from several threads.
ORRENBY_EXPORT Dictionary makeDictionary(std::span<const std::byte> data);

/// The same as an outcome, which throws nothing.
ORRENBY_EXPORT Result<Dictionary, AnyError> tryMakeDictionary(std::span<const std::byte> data);

} // namespace orrenby
