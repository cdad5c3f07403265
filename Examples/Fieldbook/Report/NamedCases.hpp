#pragma once

/// @file
/// Enumerations that stand for texts.

#include "Orrenby/Platform/Objects/RawRepresentable.hpp"
#include <optional>
#include <string>
#include <string_view>

namespace fieldbook {

/// The raw values of an enumeration that lists its cases and has a function `nameOf`: their names. That is
/// all that the library needs to decode one from a text.
template <class T> struct NamedCases {
    using RawValue = std::string;

    static std::string rawValue(T value) { return std::string(nameOf(value)); }

    static std::optional<T> make(std::string_view name)
    {
        for (const auto value : orrenby::allCases<T>)
            if (nameOf(value) == name)
                return value;
        return std::nullopt;
    }
};

} // namespace fieldbook
