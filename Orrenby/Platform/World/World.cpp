#include "Orrenby/Platform/World/World.hpp"

#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Platform/Time/Locale.hpp"
#include "Orrenby/Platform/Time/TimeZone.hpp"
#include "Orrenby/Platform/World/Clock.hpp"
#include "Orrenby/Platform/World/Executor.hpp"
#include "Orrenby/Platform/World/RandomSource.hpp"
#include "Orrenby/Platform/World/UUIDSource.hpp"
#include <atomic>
#include <deque>
#include <mutex>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace {

/// Never destroyed: worlds are read until the process is gone.
std::atomic<const World*>& currentWorld()
{
    static const auto& first = *new World(); // stays known when it is replaced, or it would count as leaked
    static auto& current = *new std::atomic<const World*>(&first);
    return current;
}

template <class Source> void replace(std::shared_ptr<Source>& place, std::shared_ptr<Source> source)
{
    if (!source)
        fatalError("A world needs every source", "Platform/World/World", 27);
    place = std::move(source);
}

} // namespace

World::World()
    : m_clock(Clock::system())
    , m_executor(Executor::system())
    , m_random(RandomSource::system())
    , m_uuids(UUIDSource::system())
    , m_operatingSystemVersion{13, 0, 0}
{}

World::World(const World&) = default;
World& World::operator=(const World&) = default;
World::~World() = default;

const World& World::current() noexcept { return *currentWorld().load(std::memory_order_acquire); }

void World::setCurrent(World world)
{
    static auto& mutex = *new std::mutex;
    static auto& worlds = *new std::deque<World>;
    const auto lock = std::lock_guard(mutex);
    currentWorld().store(&worlds.emplace_back(std::move(world)), std::memory_order_release);
}

void World::setClock(std::shared_ptr<Clock> clock) { replace(m_clock, std::move(clock)); }

void World::setExecutor(std::shared_ptr<Executor> executor) { replace(m_executor, std::move(executor)); }

void World::setRandom(std::shared_ptr<RandomSource> random) { replace(m_random, std::move(random)); }

void World::setUUIDs(std::shared_ptr<UUIDSource> uuids) { replace(m_uuids, std::move(uuids)); }

void World::setMainBundle(Bundle bundle) { m_mainBundle = std::move(bundle); }

Locale World::locale() const { return m_locale ? *m_locale : Locale::system(); }

void World::setLocale(Locale locale) { m_locale = std::make_shared<const Locale>(std::move(locale)); }

TimeZone World::timeZone() const { return m_timeZone ? *m_timeZone : TimeZone::host(); }

void World::setTimeZone(TimeZone zone) { m_timeZone = std::make_shared<const TimeZone>(std::move(zone)); }

World::Override::Override(World world)
    : m_world(std::move(world))
    , m_previous(currentWorld().exchange(&m_world, std::memory_order_acq_rel))
{}

World::Override::~Override() { currentWorld().store(m_previous, std::memory_order_release); }

} // namespace orrenby
