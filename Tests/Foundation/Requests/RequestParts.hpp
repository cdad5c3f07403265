#pragma once

/// @file
/// What the tests of requests share.

#include "Orrenby/Platform/Net/URLRequest.hpp"
#include "Orrenby/Platform/World/World.hpp"
#include "Orrenby/Testing/CountedUUIDs.hpp"
#include <memory>
#include <string>

namespace orrenby::tests {

inline URLRequest reportRequest() { return URLRequest("https://example.org/reports"_url); }

/// The body's bytes as text; what no test expects when there is none.
inline std::string bodyText(const URLRequest& request)
{
    const auto& body = request.httpBody();
    return body ? std::string(reinterpret_cast<const char*>(body->data()), body->size()) : "(no body)";
}

/// While it lives, new identifiers are counted: see `CountedUUIDs`.
class CountedNames {
public:
    CountedNames()
        : m_override(world())
    {}

private:
    static World world()
    {
        auto world = World::current();
        world.setUUIDs(std::make_shared<testing::CountedUUIDs>());
        return world;
    }

    World::Override m_override;
};

/// The text of the identifier that is counted so.
inline std::string counted(int number)
{
    const auto digits = std::to_string(number);
    return "00000000-0000-4000-8000-" + std::string(12 - digits.size(), '0') + digits;
}

} // namespace orrenby::tests
