#pragma once

/// @file
/// What the services of these tests send.

#include "Orrenby/Platform/Coding/AggregateCoding.hpp"
#include "Orrenby/Utilities/ServiceDecoder/ServiceKey.hpp"
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orrenby::testing {

struct User {
    std::string name;
    std::int64_t age = 0;

    friend bool operator==(const User&, const User&) = default;
};

struct Settings {
    bool isDark = false;
    std::optional<std::int64_t> fontSize;

    static ServiceKey serviceKey() { return "settings"; }
    friend bool operator==(const Settings&, const Settings&) = default;
};

inline constexpr std::string_view wholeResponse
    = R"({"user": {"name": "Ann", "age": 41}, "extra": [1, {}], "settings": {"isDark": true}})";

} // namespace orrenby::testing
