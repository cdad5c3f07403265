#pragma once

/// @file
/// What the library knows of the world outside the process, in one replaceable place.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/World/Bundle.hpp"
#include "Orrenby/Platform/World/OperatingSystemVersion.hpp"
#include <memory>

namespace orrenby::inline ORRENBY_ABI {

class Clock;
class Executor;
class Locale;
class RandomSource;
class TimeZone;
class UUIDSource;

/// The sources of time, chance, names and facts about the platform that the library reads.
///
/// Everything that waits, dates, draws or names goes through `World::current()`, so a test can hold the clock
/// and know the random numbers. A world does not change once it is current; to change something, copy it and
/// put the copy in its place.
///
/// @snippet Tests/Platform/World/WorldTests.cpp Replacing a source
///
/// A value of shared sources. Not synchronised, but any number of threads may read one that nobody changes;
/// see `setCurrent` and `Override` for when to replace the current one.
class ORRENBY_EXPORT World {
public:
    /// The platform's own sources, version 13.0.0, a main bundle without identifier, and the locale and the
    /// time zone of the environment.
    World();
    World(const World&);
    World& operator=(const World&);
    ~World();

    /// The one everything is read through. Costs one load.
    static const World& current() noexcept;

    /// Replaces the current world for the rest of the process: at start-up, before other threads read it.
    /// Each one set is kept for ever, because someone may still be reading it.
    static void setCurrent(World world);

    /// What tells the time. The reference lives as long as this world or a copy of it has the clock. Setting
    /// a null pointer is a programming error, as it is for the next three.
    Clock& clock() const noexcept { return *m_clock; }
    void setClock(std::shared_ptr<Clock> clock);

    /// What runs the work of concurrent queues, and the waits of all queues.
    Executor& executor() const noexcept { return *m_executor; }
    void setExecutor(std::shared_ptr<Executor> executor);

    /// Where random numbers come from.
    RandomSource& random() const noexcept { return *m_random; }
    void setRandom(std::shared_ptr<RandomSource> random);

    /// Where new identifiers come from.
    UUIDSource& uuids() const noexcept { return *m_uuids; }
    void setUUIDs(std::shared_ptr<UUIDSource> uuids);

    /// Which system the program believes to run on; it decides between the engines of streams.
    OperatingSystemVersion operatingSystemVersion() const noexcept { return m_operatingSystemVersion; }
    void setOperatingSystemVersion(OperatingSystemVersion version) noexcept
    {
        m_operatingSystemVersion = version;
    }

    /// The program's own bundle; it has no identifier until one is set.
    Bundle mainBundle() const { return m_mainBundle; }
    void setMainBundle(Bundle bundle);

    /// What texts for people follow: `Locale::system()` unless another was set.
    Locale locale() const;
    void setLocale(Locale locale);

    /// What clocks on the wall follow: `TimeZone::host()` unless another was set.
    TimeZone timeZone() const;
    void setTimeZone(TimeZone zone);

    class Override;

private:
    std::shared_ptr<Clock> m_clock;
    std::shared_ptr<Executor> m_executor;
    std::shared_ptr<RandomSource> m_random;
    std::shared_ptr<UUIDSource> m_uuids;
    OperatingSystemVersion m_operatingSystemVersion;
    Bundle m_mainBundle;
    std::shared_ptr<const Locale> m_locale; ///< None stands for the system's: most programs ask for no text.
    std::shared_ptr<const TimeZone> m_timeZone; ///< None stands for the host's.
};

/// Replaces the current world while it lives, for tests.
///
/// Several nest like the scopes they stand in. Threads that read the world must have started after it and be
/// done before it ends.
class ORRENBY_EXPORT World::Override {
public:
    /// The world that holds from now until the end of the scope.
    explicit Override(World world);
    Override(const Override&) = delete;
    Override& operator=(const Override&) = delete;
    ~Override();

private:
    World m_world;
    const World* m_previous;
};

} // namespace orrenby
