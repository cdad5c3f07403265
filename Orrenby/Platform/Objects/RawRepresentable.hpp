#pragma once

/// @file
/// Values that stand for a simpler one.

#include "Orrenby/Platform/Export.hpp"
#include <concepts>
#include <optional>
#include <type_traits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

struct NoCases {};

} // namespace detail

/// Customisation point: all cases of an enumeration, as an array. C++ does not tell them by itself, and lets
/// a variable of an enumeration hold values that are none of its cases.
///
/// @snippet Tests/Platform/Objects/RawRepresentableTests.cpp Listing the cases
template <typename T> inline constexpr detail::NoCases allCases{};

namespace detail {

template <typename T>
concept ListsItsCases = !std::same_as<std::remove_cvref_t<decltype(allCases<T>)>, NoCases>;

template <typename T>
concept EnumerationWithCases = std::is_enum_v<T> && ListsItsCases<T>;

template <typename T>
concept ClassWithRawValue = requires(const T& value, const typename T::RawValue& raw)
{
    {
        value.rawValue()
        } -> std::convertible_to<typename T::RawValue>;
    {
        T::make(raw)
        } -> std::same_as<std::optional<T>>;
};

} // namespace detail

/// Customisation point: how a type is made from its raw value, and gives it.
///
/// Holds for enumerations that list their cases (`allCases`), whose raw value is that of the case, and for
/// classes with a type `RawValue`, a member `rawValue()` and a static `make(raw)` that gives an optional.
/// Specialise it for others, for instance for an enumeration that stands for texts.
template <typename T> struct RawRepresentation {};

template <detail::EnumerationWithCases T> struct RawRepresentation<T> {
    using RawValue = std::underlying_type_t<T>;

    /// The number of the case.
    static constexpr RawValue rawValue(T value) noexcept { return static_cast<RawValue>(value); }

    /// Nothing for a value that is none of the cases. Linear in their number.
    static constexpr std::optional<T> make(RawValue raw) noexcept
    {
        for (const T value : allCases<T>)
            if (rawValue(value) == raw)
                return value;
        return std::nullopt;
    }
};

template <detail::ClassWithRawValue T> struct RawRepresentation<T> {
    using RawValue = typename T::RawValue;

    /// The class's own `rawValue()`.
    static RawValue rawValue(const T& value) { return value.rawValue(); }

    /// The class's own `make`.
    static std::optional<T> make(const RawValue& raw) { return T::make(raw); }
};

/// A type with raw values: each value has one, and a raw value may stand for a value or for none.
template <typename T>
concept RawRepresentable = requires
{
    typename RawRepresentation<T>::RawValue;
};

} // namespace orrenby
