#pragma once

/// @file
/// Simple values as bytes and back, unchanged.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Concepts.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include "Orrenby/Utilities/LosslessDataConvertibleError.hpp"
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

/// Customisation point: `static std::string description(const T&)` gives the text of a value, and
/// `static std::optional<T> make(std::string_view)` the value of such a text, or nothing.
///
/// Holds for integers, `float`, `double`, `bool`, and for classes with a member `description()` and a static
/// `make(std::string_view)` that gives an optional. Specialise it for others. What `make` reads it gives
/// back: `make(description(value))` is the value.
template <class T> struct LosslessText {};

namespace detail {

template <class T>
concept LosslessInteger
    = std::is_integral_v<T> && OtherThan<T, bool> && !Character<T> && (sizeof(T) <= sizeof(std::int64_t));

template <class T>
concept ReadsItsDescription = HasDescription<T> && requires(std::string_view text)
{
    {
        T::make(text)
        } -> std::same_as<std::optional<T>>;
};

ORRENBY_EXPORT std::optional<std::int64_t> losslessSigned(std::string_view text) noexcept;
ORRENBY_EXPORT std::optional<std::uint64_t> losslessUnsigned(std::string_view text) noexcept;
ORRENBY_EXPORT std::optional<double> losslessDouble(std::string_view text);
ORRENBY_EXPORT std::optional<float> losslessFloat(std::string_view text);

} // namespace detail

/// Decimal digits. Read with an optional sign and any number of zeros in front, if the type holds the number.
template <detail::LosslessInteger T> struct LosslessText<T> {
    /// The text, and the value that a text stands for; nothing for other texts.
    static std::string description(T value) { return describe(value); }
    static std::optional<T> make(std::string_view text) noexcept
    {
        if (const auto value = detail::losslessSigned(text); value && std::in_range<T>(*value))
            return static_cast<T>(*value);
        if constexpr (std::is_unsigned_v<T>)
            if (const auto value = detail::losslessUnsigned(text); value && std::in_range<T>(*value))
                return static_cast<T>(*value);
        return std::nullopt;
    }
};

/// The fewest digits that read back as the same number, in the forms of `describe`. Read in every form of the
/// C language whatever the locale is: `1.5`, `+.5e3`, `0x1p-3`, `inf`, `nan`; nothing may stand before or
/// after it. What is beyond the largest number is infinity. The sign and the bits of a "not a number" are
/// lost.
template <> struct LosslessText<double> {
    /// The text, and the value that a text stands for; nothing for other texts.
    static std::string description(double value) { return describe(value); }
    static std::optional<double> make(std::string_view text) { return detail::losslessDouble(text); }
};

template <> struct LosslessText<float> {
    /// The text, and the value that a text stands for; nothing for other texts.
    static std::string description(float value) { return describe(value); }
    static std::optional<float> make(std::string_view text) { return detail::losslessFloat(text); }
};

/// `true` or `false`, and nothing else.
template <> struct LosslessText<bool> {
    /// The text, and the value that a text stands for; nothing for other texts.
    static std::string description(bool value) { return describe(value); }
    static std::optional<bool> make(std::string_view text) noexcept
    {
        if (text == "true")
            return true;
        return text == "false" ? std::optional(false) : std::nullopt;
    }
};

/// The text itself.
template <> struct LosslessText<std::string> {
    static const std::string& description(const std::string& value) noexcept { return value; }
    static std::optional<std::string> make(std::string_view text) { return std::string(text); }
};

template <detail::ReadsItsDescription T> struct LosslessText<T> {
    /// What `describe` gives, and what the type's own `make` does.
    static std::string description(const T& value) { return describe(value); }
    static std::optional<T> make(std::string_view text) { return T::make(text); }
};

/// A value that has a text from which it can be made again.
template <class T>
concept LosslessDataConvertible = requires(const T& value, std::string_view text)
{
    {
        LosslessText<T>::description(value)
        } -> std::convertible_to<std::string_view>;
    {
        LosslessText<T>::make(text)
        } -> std::same_as<std::optional<T>>;
};

/// The value as bytes: its text in UTF-8, so that there is no byte order and no width to agree on.
///
/// @snippet Tests/Utilities/LosslessDataConvertibleTests.cpp Storing values as bytes
template <LosslessDataConvertible T> Data losslessData(const T& value)
{
    return dataFromText(LosslessText<T>::description(value));
}
inline Data losslessData(std::string_view text) { return dataFromText(text); }

/// The value that the bytes were made from, or why there is none. Throws nothing but what a type's own `make`
/// throws.
template <LosslessDataConvertible T>
Result<T, LosslessDataConvertibleError> tryFromLosslessData(std::span<const std::byte> data)
{
    using Outcome = Result<T, LosslessDataConvertibleError>;
    auto text = textFromData(data);
    if (!text)
        return Outcome::failure(
            LosslessDataConvertibleError::failedToConvertFromData({data.begin(), data.end()}));
    if constexpr (std::is_same_v<T, std::string>)
        return Outcome::success(*std::move(text));
    else {
        if (auto value = LosslessText<T>::make(*text))
            return Outcome::success(*std::move(value));
        return Outcome::failure(LosslessDataConvertibleError::failedToConvertFromString(*std::move(text)));
    }
}

/// The value that the bytes were made from. Throws `LosslessDataConvertibleError` when they are not valid
/// UTF-8, or when the text is not that of a `T`.
template <LosslessDataConvertible T> T fromLosslessData(std::span<const std::byte> data)
{
    return tryFromLosslessData<T>(data).unwrap();
}

} // namespace orrenby
