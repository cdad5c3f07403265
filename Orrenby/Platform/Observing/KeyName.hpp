#pragma once

/// @file
/// The name of an observable value, as a part of its type.

#include "Orrenby/Platform/Export.hpp"
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// The key of a `Property` or a `Computed`, given as a template argument: `Property<int, "age">`.
///
/// Because the type carries the name, the object that finds a value by its name and the key path that names
/// it cannot disagree. A key is not empty and holds no dot, which separates the keys of a path; anything
/// else does not compile.
template <std::size_t Size> struct KeyName {
    /// Of a literal; an empty one, or one with a dot, does not compile.
    consteval KeyName(const char (&name)[Size])
    {
        static_assert(Size > 1, "a key is not empty");
        for (std::size_t index = 0; index < Size; ++index)
            text[index] = name[index];
        if (view().find('.') != std::string_view::npos)
            throw "a key holds no dot";
    }

    /// Without the NUL at its end.
    constexpr std::string_view view() const noexcept { return {text, Size - 1}; }

    /// Public only because a template argument has to be.
    char text[Size] = {};
};

namespace detail {

/// The bit of a key in an object's set of observed keys. Different keys may share one.
constexpr std::uint64_t keyBit(std::string_view key) noexcept
{
    std::uint32_t hash = 2166136261; // FNV-1a
    for (const char character : key)
        hash = (hash ^ static_cast<unsigned char>(character)) * 16777619;
    return std::uint64_t(1) << ((hash ^ (hash >> 16)) % 64);
}

/// What all values of one key share.
struct KeyDescription {
    std::string_view name;
    std::uint64_t bit;
};

template <KeyName Name>
inline constexpr KeyDescription keyDescription{.name = Name.view(), .bit = keyBit(Name.view())};

} // namespace detail

} // namespace orrenby
