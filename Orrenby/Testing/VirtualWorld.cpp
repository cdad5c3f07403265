#include "Orrenby/Testing/VirtualWorld.hpp"

#include "Orrenby/Platform/Scheduling/RunLoop.hpp"
#include "Orrenby/Platform/Time/Locale.hpp"
#include "Orrenby/Platform/Time/TimeZone.hpp"
#include "Orrenby/Platform/World/World.hpp"
#include "Orrenby/Testing/CountedUUIDs.hpp"
#include "Orrenby/Testing/FreshDateFormatters.hpp"
#include "Orrenby/Testing/SeededRandomSource.hpp"
#include "Orrenby/Testing/TestAccess.hpp"
#include "Orrenby/Testing/VirtualClock.hpp"
#include "Orrenby/Testing/VirtualExecutor.hpp"
#include <cmath>
#include <limits>
#include <stdexcept>

namespace orrenby::inline ORRENBY_ABI::testing {

namespace {

constexpr auto infinity = std::numeric_limits<double>::infinity();
constexpr auto anyNumber = std::numeric_limits<std::size_t>::max();

/// So that ten times 0.1 is 1.
double wholeNanoseconds(double seconds)
{
    constexpr auto perSecond = 1e9;
    return std::round(seconds * perSecond) / perSecond;
}

} // namespace

struct VirtualWorld::Parts {
    explicit Parts(const VirtualWorldOptions& options)
        : clock(std::make_shared<VirtualClock>(options.start))
        , executor(std::make_shared<VirtualExecutor>(clock, options.patience))
        , override(worldOf(options))
    {}

    World worldOf(const VirtualWorldOptions& options) const
    {
        auto world = World::current();
        world.setClock(clock);
        world.setExecutor(executor);
        world.setRandom(std::make_shared<SeededRandomSource>(options.seed));
        world.setUUIDs(std::make_shared<CountedUUIDs>());
        world.setLocale(Locale(options.locale));
        world.setTimeZone(TimeZone::fromName(options.timeZone).value());
        return world;
    }

    std::shared_ptr<VirtualClock> clock;
    std::shared_ptr<VirtualExecutor> executor;
    World::Override override;
    FreshDateFormatters formatters;
};

VirtualWorld::VirtualWorld(VirtualWorldOptions options)
    : m_parts(std::make_unique<Parts>(options))
{}

VirtualWorld::~VirtualWorld()
{
    // What is dropped may hand over more on its way out.
    do {
        m_parts->executor->discardAll();
        TestAccess::discardAll(RunLoop::current());
    } while (m_parts->executor->pendingCount() > 0);
}

Date VirtualWorld::now() const { return m_parts->clock->now(); }

double VirtualWorld::elapsed() const { return m_parts->clock->monotonicSeconds(); }

void VirtualWorld::advance(double seconds)
{
    if (seconds == infinity)
        runAll();
    else if (seconds > 0)
        m_parts->executor->drive(wholeNanoseconds(elapsed() + seconds), anyNumber);
    else
        runUntilIdle();
}

void VirtualWorld::advanceTo(Date date) { advance(date - m_parts->clock->start() - elapsed()); }

void VirtualWorld::runUntilIdle() { m_parts->executor->drive(elapsed(), anyNumber); }

void VirtualWorld::runAll(std::size_t limit)
{
    if (!m_parts->executor->drive(infinity, limit))
        throw std::runtime_error("VirtualWorld::runAll: something is still pending after "
            + std::to_string(limit) + " jumps of the clock");
}

std::size_t VirtualWorld::pendingCount() const { return m_parts->executor->pendingCount(); }

} // namespace orrenby::testing
