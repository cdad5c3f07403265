#pragma once

/// @file
/// What a notification is called.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Concepts.hpp"
#include <concepts>
#include <cstddef>
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

/// A text that is no `Self` already.
template <class Text, class Self>
concept TextFor = OtherThan<Text, Self> && std::convertible_to<const Text&, std::string_view>;

} // namespace detail

/// The name by which posters and observers of a notification find each other.
///
/// Names are texts that compare byte by byte; the empty text is a name like any other. Keep the name that a
/// library announces in one place: `inline const NotificationName draftWasSaved = "DraftWasSaved";`.
///
/// A plain value that knows its hash, so that a post does not read the text to look it up. Not synchronised.
class NotificationName {
public:
    /// Any text; two of one text are one name.
    template <detail::TextFor<NotificationName> Text>
    NotificationName(const Text& rawValue)
        : m_rawValue(std::string_view(rawValue))
        , m_hash(std::hash<std::string_view>{}(m_rawValue))
    {}

    /// The text that it was made of.
    const std::string& rawValue() const noexcept { return m_rawValue; }
    const std::string& description() const noexcept { return m_rawValue; }
    std::size_t hash() const noexcept { return m_hash; }

    friend bool operator==(const NotificationName& first, const NotificationName& second) noexcept
    {
        return first.m_hash == second.m_hash && first.m_rawValue == second.m_rawValue;
    }

private:
    std::string m_rawValue;
    std::size_t m_hash;
};

} // namespace orrenby

template <> struct std::hash<orrenby::NotificationName> {
    std::size_t operator()(const orrenby::NotificationName& name) const noexcept { return name.hash(); }
};
