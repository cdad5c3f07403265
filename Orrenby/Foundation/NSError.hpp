#pragma once

/// @file
/// Making platform errors: from fixed texts, and from values that may or may not be errors.

#include "Orrenby/Platform/Errors/ErrorValue.hpp"
#include "Orrenby/Platform/Errors/NSError.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Platform/Objects/StaticText.hpp"
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

namespace orrenby::inline ORRENBY_ABI {

/// A literal, or none. An empty literal is a text.
///
/// A plain value. Not synchronised.
class OptionalStaticText {
public:
    /// None.
    constexpr OptionalStaticText(std::nullopt_t = std::nullopt) {}

    /// A literal that was kept.
    constexpr OptionalStaticText(StaticText text)
        : m_text(text)
    {}

    /// A literal; anything else does not compile.
    template <std::size_t N>
    consteval OptionalStaticText(const char (&text)[N])
        : m_text(StaticText(text))
    {}

    /// The literal, or nothing.
    constexpr std::optional<StaticText> get() const noexcept { return m_text; }

private:
    std::optional<StaticText> m_text;
};

/// What `makeNSError` makes an error from.
struct NSErrorOptions {
    StaticText domain = ""; ///< Whose codes these are.
    std::int64_t code = 0;  ///< What the domain calls it.
    /// Without one the domain's text stands in its place.
    OptionalStaticText description = std::nullopt;
    std::optional<Dictionary> userInfo = std::nullopt; ///< Further entries; none without it.
};

/// Makes an error from literals, whose entries in a log can be grouped by their texts.
///
/// Its user information is that of `options` with the description under `NSLocalizedDescriptionKey`, where it
/// replaces whatever was there.
///
/// @snippet Tests/Foundation/NSErrorTests.cpp Making an error
///
/// Never fails. Safe to use from several threads.
ORRENBY_EXPORT NSError makeNSError(NSErrorOptions options);

namespace detail {

ORRENBY_EXPORT std::optional<NSError> validatedException(
    const std::exception& exception, std::string_view file);
ORRENBY_EXPORT std::optional<NSError> validatedThrown(
    const std::exception_ptr& thrown, std::string_view file);
ORRENBY_EXPORT std::optional<NSError> validatedAny(const Any& value, std::string_view file);
ORRENBY_EXPORT void refuseAsNSError(const std::string& printedValue, std::string_view file);

} // namespace detail

/// A copy of the platform error that a value is or declares to be, or nothing.
///
/// - `NSError`, its subclasses, and error types that declare domain, code and user information themselves
/// give such a copy.
/// - Any other error value is refused with one entry in `Log` at level `critical`.
/// - What is no error gives nothing, and no entry.
///
/// An `Any`, an `AnyError`, a `std::exception_ptr`, an optional or a reference stands for what it holds.
///
/// @snippet Tests/Foundation/NSErrorTests.cpp Validating a value
///
/// @param file  The caller's source file, for the entry.
///
/// Safe to use from several threads.
template <class T> std::optional<NSError> validatedNSError(const T& value, StaticText file)
{
    if constexpr (std::derived_from<T, std::exception>)
        return detail::validatedException(value, file);
    else if constexpr (ErrorValue<T>) {
        detail::refuseAsNSError(debugDescribe(value), file);
        return std::nullopt;
    } else if constexpr (std::same_as<T, std::exception_ptr>)
        return detail::validatedThrown(value, file);
    else if constexpr (std::same_as<T, Any> || detail::AnyReference<T> || detail::AnyOptional<T>)
        return detail::validatedAny(value, file);
    else
        return std::nullopt;
}

/// The same for an error value that may be absent: without one there is nothing, and no entry.
template <ErrorValue E>
std::optional<NSError> validatedNSError(const std::optional<E>& value, StaticText file)
{
    return value ? validatedNSError(*value, file) : std::nullopt;
}

} // namespace orrenby
