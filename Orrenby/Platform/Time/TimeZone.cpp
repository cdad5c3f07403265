#include "Orrenby/Platform/Time/TimeZone.hpp"

#include "Orrenby/Platform/Time/Milliseconds.hpp"
#include "Orrenby/Platform/World/World.hpp"
#include <cmath>
#include <unicode/basictz.h>
#include <unicode/timezone.h>
#include <unicode/tztrans.h>
#include <unicode/ucal.h>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace {

constexpr std::int64_t secondsPerDay = 86'400;

std::string nameOf(const icu::TimeZone& zone)
{
    icu::UnicodeString id;
    std::string name;
    return zone.getID(id).toUTF8String(name);
}

std::unique_ptr<const icu::TimeZone> zoneOf(std::string_view name)
{
    return std::unique_ptr<const icu::TimeZone>(
        icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(name)));
}

/// ICU takes a sign inside of an offset ("GMT+-2:00", "GMT+-20") for a part of the number, and gives the zone
/// a name that names none, or another one.
bool isMisnamed(const icu::TimeZone& zone, const std::string& name)
{
    const bool isOffset = name.starts_with("GMT+") || name.starts_with("GMT-");
    return isOffset && *zoneOf(name) != zone;
}

/// What `date` is to ICU, which cannot tell offsets where there is no moment.
double momentOf(Date date)
{
    const auto moment = detail::milliseconds(date);
    return std::isnan(moment) ? 0 : moment;
}

} // namespace

struct TimeZone::Contents {
    explicit Contents(std::unique_ptr<const icu::TimeZone> newZone)
        : zone(std::move(newZone))
        , name(nameOf(*zone))
    {}

    std::unique_ptr<const icu::TimeZone> zone;
    std::string name;
};

TimeZone::TimeZone(std::shared_ptr<const Contents> contents) noexcept
    : m_contents(std::move(contents))
{}

std::optional<TimeZone> TimeZone::fromName(std::string_view name)
{
    auto zone = zoneOf(name);
    const auto found = nameOf(*zone);
    if (found == UCAL_UNKNOWN_ZONE_ID || isMisnamed(*zone, found))
        return std::nullopt;
    return TimeZone(std::make_shared<const Contents>(std::move(zone)));
}

std::optional<TimeZone> TimeZone::fromSecondsFromGMT(std::int64_t seconds)
{
    if (seconds <= -secondsPerDay || seconds >= secondsPerDay)
        return std::nullopt;
    const auto magnitude = seconds < 0 ? -seconds : seconds;
    const auto twoDigits = [](std::int64_t number) {
        return std::string{static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)};
    };
    auto name = std::string("GMT");
    if (seconds != 0)
        name += (seconds < 0 ? '-' : '+') + twoDigits(magnitude / 3600) + ':'
            + twoDigits(magnitude / 60 % 60);
    if (magnitude % 60 != 0)
        name += ':' + twoDigits(magnitude % 60);
    return fromName(name);
}

TimeZone TimeZone::gmt()
{
    static const auto& zone = *new TimeZone(std::make_shared<const Contents>(
        std::unique_ptr<const icu::TimeZone>(icu::TimeZone::getGMT()->clone())));
    return zone;
}

TimeZone TimeZone::system() { return World::current().timeZone(); }

void TimeZone::setSystem(TimeZone zone)
{
    auto world = World::current();
    world.setTimeZone(std::move(zone));
    World::setCurrent(std::move(world));
}

TimeZone TimeZone::host()
{
    static const auto& zone = *new TimeZone([] {
        const std::unique_ptr<const icu::TimeZone> found(icu::TimeZone::createDefault());
        return fromName(nameOf(*found)).value_or(gmt());
    }());
    return zone;
}

const std::string& TimeZone::name() const noexcept { return m_contents->name; }

std::int64_t TimeZone::secondsFromGMT(Date date) const
{
    std::int32_t offset = 0;
    std::int32_t saving = 0;
    UErrorCode status = U_ZERO_ERROR;
    m_contents->zone->getOffset(momentOf(date), false, offset, saving, status);
    return (offset + saving) / 1'000;
}

bool TimeZone::isDaylightSavingTime(Date date) const
{
    std::int32_t offset = 0;
    std::int32_t saving = 0;
    UErrorCode status = U_ZERO_ERROR;
    m_contents->zone->getOffset(momentOf(date), false, offset, saving, status);
    return saving != 0;
}

std::optional<Date> TimeZone::nextTransition(Date date) const
{
    const auto* zone = dynamic_cast<const icu::BasicTimeZone*>(m_contents->zone.get());
    icu::TimeZoneTransition transition;
    if (!zone || !zone->getNextTransition(momentOf(date), false, transition))
        return std::nullopt;
    return detail::dateFromMilliseconds(transition.getTime());
}

} // namespace orrenby
