#pragma once

/// @file
/// The printed forms of values: `describe` for readers, `debugDescribe` for logs.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/TypeName.hpp"
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// The printed form of a value.
///
/// - Text stands plain, booleans are `true` and `false`, integers decimal.
/// - Floating numbers have the fewest digits that read back as the same number. From 1e-4 up to 2^53
/// (`float`: 2^24) they are written out, with
///   ".0" when integral; beyond, with an exponent of at least two digits: `1e-05`, `1.5e+20`. Also `-0.0`,
///   `inf`, `-inf`, `nan`.
/// - Lists are `[1, "a"]`, dictionaries `["k": 1]` and, when empty, `[:]`; pairs and tuples `(1, "a")`. What
/// they contain stands in debug form.
///   Keys are sorted; sets are written like lists, sorted by printed form.
/// - Optionals, variants and pointers print what they hold or refer to, and `none` when they are empty. Bytes
/// print as `3 bytes`.
/// - A type of one's own answers `description()`; an enumeration may have a function `description(value)`
/// beside it. Without that
///   an exception prints its `what()`, an enumeration as `Level(2)`, and anything else its type name.
///
/// @snippet Tests/Platform/Objects/DescribeTests.cpp Describing values
///
/// Linear in what it prints; not meant for values that contain themselves. Safe to use from several threads.
template <class T> std::string describe(const T& value);

/// The printed form that names what it prints.
///
/// As `describe`, except: text is quoted, with `\"`, `\\`, `\n`, `\t`, `\r`, `\0` and `\u{1B}` for what
/// cannot be seen. A type of one's own answers `debugDescription()`; without that it prints as
/// `TypeName(description)`, and as `TypeName` alone when it has neither.
template <class T> std::string debugDescribe(const T& value);

namespace detail {

ORRENBY_EXPORT std::string describeInteger(std::int64_t value);
ORRENBY_EXPORT std::string describeInteger(std::uint64_t value);
ORRENBY_EXPORT std::string describeFloating(double value);
ORRENBY_EXPORT std::string describeFloating(float value);
ORRENBY_EXPORT std::string describeFloating(long double value);
ORRENBY_EXPORT std::string describeAddress(const void* address);
ORRENBY_EXPORT std::string describeByteCount(std::size_t count);
ORRENBY_EXPORT std::string quoted(std::string_view text);
/// `opening`, the items with ", " between them, `closing`.
ORRENBY_EXPORT std::string joined(char opening, const std::vector<std::string>& items, char closing);
ORRENBY_EXPORT std::string joinedSet(std::vector<std::string> items);
ORRENBY_EXPORT std::string joinedDictionary(
    std::vector<std::pair<std::string, std::string>> members, bool areSorted);

template <class T>
concept HasDescription
    = std::convertible_to<decltype(std::declval<const T&>().description()), std::string_view>;
template <class T>
concept HasDebugDescription
    = std::convertible_to<decltype(std::declval<const T&>().debugDescription()), std::string_view>;
template <class T>
concept DescribedEnumeration
    = std::is_enum_v<T> && std::convertible_to<decltype(description(std::declval<T>())), std::string_view>;
template <class T>
concept OptionalLike = requires(const T& value)
{
    value.has_value();
    *value;
};
template <class T>
concept PointerLike = requires(const T& value)
{
    *value;
    value.get();
    static_cast<bool>(value);
};
template <class T>
concept VariantLike = requires(const T& value)
{
    value.index();
    value.valueless_by_exception();
};
/// Not what consists of its own kind, as file-system paths do: that would never end.
template <class T>
concept ListLike = OtherThan<decltype(*std::declval<const T&>().begin()), T> && requires(const T& value)
{
    value.end();
};
template <class T>
concept MapLike = ListLike<T> && requires
{
    typename T::key_type;
    typename T::mapped_type;
};
template <class T>
concept SetLike = ListLike<T> && requires
{
    typename T::key_type;
};
template <class T>
concept TupleLike = requires
{
    std::tuple_size<T>::value;
};

template <class T> std::string describeAs(const T& value, bool inDebugForm)
{
    return inDebugForm ? debugDescribe(value) : describe(value);
}

/// What prints the same in both forms, or differs only in what it holds.
template <class T> std::string describeStructure(const T& value, bool inDebugForm)
{
    if constexpr (OptionalLike<T>)
        return value.has_value() ? describeAs(*value, inDebugForm) : "none";
    else if constexpr (PointerLike<T>)
        return value ? describeAs(*value, inDebugForm) : "none";
    else if constexpr (std::is_same_v<T, std::vector<std::byte>>)
        return describeByteCount(value.size());
    else if constexpr (MapLike<T>) {
        std::vector<std::pair<std::string, std::string>> members;
        for (const auto& [key, member] : value)
            members.emplace_back(debugDescribe(key), debugDescribe(member));
        return joinedDictionary(
            std::move(members), requires { typename T::key_compare; });
    } else if constexpr (VariantLike<T>) {
        const auto describeContent = [&](const auto& content) { return describeAs(content, inDebugForm); };
        return value.valueless_by_exception() ? "none" : visit(describeContent, value);
    } else if constexpr (ListLike<T>) {
        std::vector<std::string> items;
        for (const auto& item : value)
            items.push_back(debugDescribe(item));
        return SetLike<T> ? joinedSet(std::move(items)) : joined('[', items, ']');
    } else if constexpr (TupleLike<T>)
        return std::apply(
            [](const auto&... items) { return joined('(', {debugDescribe(items)...}, ')'); }, value);
    else
        return orrenby::typeName(value);
}

template <class T> std::string describeScalar(const T& value)
{
    if constexpr (std::is_same_v<T, bool>)
        return value ? "true" : "false";
    else if constexpr (std::is_same_v<T, std::byte>)
        return describeInteger(static_cast<std::uint64_t>(value));
    else if constexpr (std::is_enum_v<T>)
        return typeName<T>() + "(" + describeScalar(static_cast<std::underlying_type_t<T>>(value)) + ")";
    else if constexpr (std::is_floating_point_v<T>)
        return describeFloating(value);
    else if constexpr (std::is_signed_v<T>)
        return describeInteger(static_cast<std::int64_t>(value));
    else
        return describeInteger(static_cast<std::uint64_t>(value));
}

template <class T> constexpr bool isScalar = std::is_arithmetic_v<T> || std::is_enum_v<T>;

/// Whether the text is a pointer to nothing.
template <class T> bool isNullText(const T& text)
{
    if constexpr (std::is_pointer_v<T>)
        return text == nullptr;
    else
        return false;
}

} // namespace detail

template <class T> std::string describe(const T& value)
{
    if constexpr (detail::HasDescription<T>)
        return std::string(std::string_view(value.description()));
    else if constexpr (detail::DescribedEnumeration<T>)
        return std::string(std::string_view(description(value)));
    else if constexpr (std::is_same_v<T, char>)
        return std::string(1, value);
    else if constexpr (std::is_null_pointer_v<T>)
        return "none";
    else if constexpr (detail::isScalar<T>)
        return detail::describeScalar(value);
    else if constexpr (detail::isTextType<T>)
        return detail::isNullText(value) ? "none" : std::string(std::string_view(value));
    else if constexpr (std::is_pointer_v<T> && std::is_object_v<std::remove_pointer_t<T>>)
        return value != nullptr ? describe(*value) : "none";
    else if constexpr (std::is_pointer_v<T> && std::is_void_v<std::remove_pointer_t<T>>)
        return detail::describeAddress(value);
    else if constexpr (std::is_base_of_v<std::exception, T>)
        return value.what();
    else
        return detail::describeStructure(value, false);
}

template <class T> std::string debugDescribe(const T& value)
{
    if constexpr (detail::HasDebugDescription<T>)
        return std::string(std::string_view(value.debugDescription()));
    else if constexpr (detail::HasDescription<T>)
        return orrenby::typeName(value) + "(" + describe(value) + ")";
    else if constexpr (detail::DescribedEnumeration<T>)
        return typeName<T>() + "(" + describe(value) + ")";
    else if constexpr (std::is_same_v<T, char>)
        return detail::quoted(std::string_view(&value, 1));
    else if constexpr (detail::isScalar<T>)
        return detail::describeScalar(value);
    else if constexpr (detail::isTextType<T>)
        return detail::isNullText(value) ? "none" : detail::quoted(value);
    else if constexpr (std::is_pointer_v<T> && std::is_object_v<std::remove_pointer_t<T>>)
        return value != nullptr ? debugDescribe(*value) : "none";
    else if constexpr (std::is_pointer_v<T> || std::is_null_pointer_v<T>)
        return describe(value);
    else if constexpr (std::is_base_of_v<std::exception, T>)
        return orrenby::typeName(value) + "(" + value.what() + ")";
    else
        return detail::describeStructure(value, true);
}

} // namespace orrenby
