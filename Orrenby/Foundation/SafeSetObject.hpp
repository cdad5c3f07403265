#pragma once

/// @file
/// Setting a member of a dictionary only when there is something to set.

#include "Orrenby/Foundation/AnyEntries.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include <concepts>
#include <cstddef>
#include <optional>
#include <string_view>
#include <type_traits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

/// Whether there is a value: an empty optional, an empty reference and a null pointer are none.
template <class T> bool isPresent(const T& value)
{
    if constexpr (std::is_same_v<T, std::nullptr_t> || std::is_same_v<T, std::nullopt_t>)
        return false;
    else if constexpr (AnyReference<T> || std::is_pointer_v<T>)
        return value != nullptr;
    else if constexpr (AnyOptional<T>)
        return value.has_value() && detail::isPresent(*value);
    else
        return true;
}

ORRENBY_EXPORT void setPresent(AnyEntries& entries, Any object, Any key);

} // namespace detail

/// Sets the object under the key when both are there, else does nothing.
///
/// Absent are an empty optional, an empty reference and a null pointer. A null marker is an object like any
/// other and is set.
///
/// @snippet Tests/Foundation/SafeSetObjectTests.cpp Setting what is there
///
/// @param key  Text, an optional text, a pointer to one.
///
/// Costs what `Dictionary::set` costs. Not synchronised.
template <class Object, class Key>
    requires std::convertible_to<const Key&, std::optional<std::string_view>>
void safeSetObject(Dictionary& dictionary, Object&& object, const Key& key)
{
    if (detail::isPresent(object) && detail::isPresent(key))
        dictionary.set(*std::optional<std::string_view>(key), Any(std::forward<Object>(object)));
}

/// As above with a key of any kind: the first entry whose key is equal takes the object, else a new entry is
/// added at the end. Linear.
template <class Object, class Key> void safeSetObject(AnyEntries& entries, Object&& object, Key&& key)
{
    if (detail::isPresent(object) && detail::isPresent(key))
        detail::setPresent(entries, Any(std::forward<Object>(object)), Any(std::forward<Key>(key)));
}

} // namespace orrenby
