#pragma once

/// @file
/// What the services of these tests send.

#include "Orrenby/Platform/Coding/AggregateCoding.hpp"
#include "Orrenby/Utilities/ServiceDecoder/ServiceDecoder.hpp"
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

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

/// Who is in it.
inline const auto ann = User{"Ann", 41};

/// What arrived, in order.
struct Arrived {
    std::vector<User> users;
    std::vector<Settings> settings;
};

inline void registerBoth(ServiceDecoder& services, Arrived& arrived)
{
    services.register_<User>("user", [&](const User& user) { arrived.users.push_back(user); });
    services.register_<Settings>(
        "settings", [&](const Settings& settings) { arrived.settings.push_back(settings); });
}

} // namespace orrenby::testing
