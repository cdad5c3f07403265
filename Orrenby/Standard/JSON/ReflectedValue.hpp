#pragma once

/// @file
/// What becomes of one property in a dictionary. Not in the umbrella header: part of JSONReflection.hpp.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Standard/JSON/AnyOptional.hpp"
#include "Orrenby/Standard/JSON/JSONSerializable.hpp"
#include <concepts>
#include <optional>
#include <type_traits>

namespace orrenby::inline ORRENBY_ABI {

template <ReflectedAsJSON T> Dictionary json(const T& value);

namespace detail {

/// What can be known of a value whose type is not known.
ORRENBY_EXPORT std::optional<Any> reflectedAny(const Any& value);

/// A value that is left out, whatever it is seen as.
ORRENBY_EXPORT bool isExcludedFromJSON(const Any& value);

template <class T> struct Held {
    using type = T;
};
template <AnyOptional T> struct Held<T> {
    using type = typename T::value_type;
};
template <AnyReference T> struct Held<T> {
    using type = std::remove_cv_t<typename T::element_type>;
};

/// A `JSONSerializable`, an optional one, or a reference to one.
template <class T>
concept HoldsSerializable = ReflectedAsJSON<typename Held<T>::type>;

template <class T>
concept ListOfSerializable = AnyList<T> && HoldsSerializable<typename T::value_type>;

/// The value as it is kept in the dictionary, or nothing when it is left out.
template <class T> std::optional<Any> reflectedValue(const T& value)
{
    if constexpr (std::derived_from<typename Held<T>::type, JSONSerializationExclusion>)
        return std::nullopt;
    else if constexpr (std::same_as<T, Any>)
        return reflectedAny(value);
    else if constexpr (AnyOptional<T>)
        return value.has_value() ? reflectedValue(*value) : std::nullopt;
    else if constexpr (AnyReference<T> && HoldsSerializable<T>)
        return value == nullptr || isExcludedFromJSON(value) ? std::nullopt
                                                             : std::optional<Any>(json(*value));
    else if constexpr (HoldsSerializable<T>)
        return Any(json(value));
    else if constexpr (ListOfSerializable<T>) {
        Array list;
        list.reserve(value.size());
        for (const auto& element : value)
            list.push_back(reflectedValue(element).value_or(Any()));
        return Any(std::move(list));
    } else
        return reflectedAny(Any(value));
}

} // namespace detail

} // namespace orrenby
