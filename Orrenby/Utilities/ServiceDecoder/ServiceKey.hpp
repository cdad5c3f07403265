#pragma once

/// @file
/// Under what a service's member stands in a response.

#include "Orrenby/Platform/Export.hpp"
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// Names a service and its member of a response. A text literal serves as one.
///
/// A coding key: containers can be keyed by it. It never stands for an integer.
///
/// A plain value, equal by its text. Not synchronised.
struct ORRENBY_EXPORT ServiceKey {
    /// The key of this text; the empty text is a key like any other.
    template <std::convertible_to<std::string_view> Text>
    ServiceKey(const Text& text)
        : stringValue(std::string_view(text))
    {}

    /// Always nothing: no integer is a service's key.
    static std::optional<ServiceKey> make(std::int64_t intValue);

    /// Always nothing.
    std::optional<std::int64_t> intValue() const noexcept { return std::nullopt; }

    const std::string& description() const noexcept { return stringValue; }

    /// `ServiceKey(stringValue: "user", intValue: none)`
    std::string debugDescription() const;

    friend bool operator==(const ServiceKey&, const ServiceKey&) = default;

    std::string stringValue; ///< The name of the member.
};

} // namespace orrenby

template <> struct std::hash<orrenby::ServiceKey> {
    std::size_t operator()(const orrenby::ServiceKey& key) const noexcept
    {
        return std::hash<std::string>()(key.stringValue);
    }
};
