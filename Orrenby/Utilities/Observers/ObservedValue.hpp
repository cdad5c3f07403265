#pragma once

/// @file
/// From what an object tells its observers back to a typed value.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/RawRepresentable.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include <concepts>
#include <optional>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Gives the typed value, or nothing when there is none or one of another type.
template <typename Value> struct ObservedValue {
    static std::optional<Value> from(const Any& value) { return value.cast<Value>(); }
};

/// Raw-representable values are told as their raw value, which may stand for none of them.
template <RawRepresentable Value> struct ObservedValue<Value> {
    static std::optional<Value> from(const Any& value)
    {
        using Representation = RawRepresentation<Value>;
        const auto raw = value.cast<typename Representation::RawValue>();
        return raw ? Representation::make(*raw) : std::nullopt;
    }
};

/// How a value is told: those that can be empty are always there.
template <typename Value> struct ToldValue {
    using Wrapped = Value;
    static std::optional<Value> from(const std::optional<Any>& value)
    {
        return value ? ObservedValue<Value>::from(*value) : std::nullopt;
    }
};
template <typename Value> struct ToldValue<std::optional<Value>> {
    using Wrapped = Value;
    static std::optional<std::optional<Value>> from(const std::optional<Any>& value)
    {
        using Result = std::optional<std::optional<Value>>;
        return Result(std::in_place, value ? ObservedValue<Value>::from(*value) : std::nullopt);
    }
};
template <typename T> struct ToldValue<Ref<T>> {
    using Wrapped = Ref<T>;
    static std::optional<Ref<T>> from(const std::optional<Any>& value)
    {
        return value ? value->object<T>() : nullptr;
    }
};

template <typename Base, typename Derived>
concept BaseOf = std::derived_from<Derived, Base>;

/// Values that can be compared, and so can what they are told as.
template <typename Value>
concept Comparable = std::equality_comparable<Value> &&(
    !RawRepresentable<typename ToldValue<Value>::Wrapped> || requires {
        requires std::equality_comparable<
            typename RawRepresentation<typename ToldValue<Value>::Wrapped>::RawValue>;
    });

} // namespace orrenby::inline ORRENBY_ABI::detail
