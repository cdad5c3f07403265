#pragma once

/// @file
/// The keys under which values are coded.

#include "Orrenby/Platform/Export.hpp"
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// One step on the way from the root of a document to a value: the key of a member, or a place in a list.
///
/// It prints as its text. A place in a list has the text `Index 2` and the integer 2.
///
/// A plain value. Not synchronised.
class ORRENBY_EXPORT CodingKey {
public:
    /// The key of a member. It has no integer, also where the text is one.
    template <std::convertible_to<std::string_view> Text>
    CodingKey(const Text& stringValue)
        : m_stringValue(std::string_view(stringValue))
    {}

    /// The key of a member that is known by a number as well.
    CodingKey(std::string_view stringValue, std::optional<std::int64_t> intValue)
        : m_stringValue(stringValue)
        , m_intValue(intValue)
    {}

    /// The key of an integer, whose text is its decimal digits.
    static CodingKey integer(std::int64_t value);

    /// The place `index` in a list, counted from 0.
    static CodingKey place(std::int64_t index);

    /// The member's name as it is looked up and written.
    const std::string& stringValue() const noexcept { return m_stringValue; }

    /// The number of the key or of the place; nothing for most members.
    std::optional<std::int64_t> intValue() const noexcept { return m_intValue; }

    const std::string& description() const noexcept { return m_stringValue; }

    /// `CodingKey(stringValue: "id", intValue: none)`
    std::string debugDescription() const;

    friend bool operator==(const CodingKey&, const CodingKey&) = default;

private:
    std::string m_stringValue;
    std::optional<std::int64_t> m_intValue;
};

namespace detail {

template <class Key>
concept KeyWithTextField = requires(const Key& key)
{
    {
        key.stringValue
        } -> std::convertible_to<std::string_view>;
};
template <class Key>
concept KeyWithTextGetter = requires(const Key& key)
{
    {
        key.stringValue()
        } -> std::convertible_to<std::string_view>;
};

template <class Key> std::string_view codingKeyText(const Key& key)
{
    if constexpr (KeyWithTextField<Key>)
        return key.stringValue;
    else if constexpr (KeyWithTextGetter<Key>)
        return key.stringValue();
    else
        return key;
}

} // namespace detail

/// A type of one's own that can key a container: it has a text `stringValue`, as a field or as a member
/// function that returns one by reference, and is made from a text by its constructor or by a static
/// `make(std::string_view)` that gives an optional.
///
/// Such a type keeps keys of different responses apart; everywhere else a text literal serves as key.
template <class Key>
concept CodingKeyType = detail::KeyWithTextField<Key> || detail::KeyWithTextGetter<Key>;

} // namespace orrenby

template <> struct std::hash<orrenby::CodingKey> {
    std::size_t operator()(const orrenby::CodingKey& key) const noexcept
    {
        return std::hash<std::string>()(key.stringValue());
    }
};
