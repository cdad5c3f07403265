#include "Orrenby/Testing/LocaleOverride.hpp"

#include "Orrenby/Platform/Time/Locale.hpp"
#include "Orrenby/Platform/Time/TimeZone.hpp"
#include "Orrenby/Platform/World/World.hpp"
#include "Orrenby/Testing/FreshDateFormatters.hpp"
#include <stdexcept>

namespace orrenby::inline ORRENBY_ABI::testing {

namespace {

World worldOf(const LocaleOverrideOptions& options)
{
    const auto zone = TimeZone::fromName(options.timeZone);
    if (!zone)
        throw std::invalid_argument("LocaleOverride: there is no time zone \"" + options.timeZone + "\"");
    auto world = World::current();
    world.setLocale(Locale(options.locale));
    world.setTimeZone(*zone);
    return world;
}

} // namespace

struct LocaleOverride::Parts {
    explicit Parts(const LocaleOverrideOptions& options)
        : world(worldOf(options))
    {}

    World::Override world;
    FreshDateFormatters formatters;
};

LocaleOverride::LocaleOverride(const LocaleOverrideOptions& options)
    : m_parts(std::make_unique<Parts>(options))
{}

LocaleOverride::~LocaleOverride() = default;

} // namespace orrenby::testing
