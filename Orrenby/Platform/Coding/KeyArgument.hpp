#pragma once

/// @file
/// How containers take their keys. Not in the umbrella header: part of the coders' own workings.

#include "Orrenby/Platform/Coding/CodingKey.hpp"
#include "Orrenby/Platform/Export.hpp"
#include <concepts>
#include <string_view>
#include <type_traits>

namespace orrenby::inline ORRENBY_ABI::detail {

/// A key's text, without a copy of it: what a container keyed by `CodingKey` takes.
class KeyText {
public:
    template <std::convertible_to<std::string_view> Text>
    KeyText(const Text& text) noexcept
        : m_text(text)
    {}
    KeyText(const CodingKey& key) noexcept
        : m_text(key.stringValue())
    {}

    std::string_view stringValue() const noexcept { return m_text; }

private:
    std::string_view m_text;
};

template <class Key> using KeyArgument = std::conditional_t<std::is_same_v<Key, CodingKey>, KeyText, Key>;

} // namespace orrenby::inline ORRENBY_ABI::detail
