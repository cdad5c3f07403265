#pragma once

/// @file
/// Where the clocks on the wall show what.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Time/Date.hpp"
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// The offset from GMT of a place, at any moment.
///
/// The offsets are those of the zone tables that ICU carries, daylight saving time included. A zone knows no
/// days and no texts: those belong to `Calendar` and `DateFormatter`.
///
/// @snippet Tests/Platform/Time/TimeZoneTests.cpp Asking a zone
///
/// A value of one shared pointer; copies cost one atomic increment. Safe to use from several threads.
class ORRENBY_EXPORT TimeZone {
public:
    /// `Europe/Berlin`, `GMT`, or an offset such as `GMT+2` or `GMT-03:30`, which becomes `GMT+02:00`.
    ///
    /// Spelling counts, upper and lower case too. Nothing for a name that is not in the tables, and for an
    /// offset of a day or more. Reads the tables: microseconds.
    static std::optional<TimeZone> fromName(std::string_view name);

    /// The same offset all the time, seconds east of Greenwich. Nothing for a day or more.
    static std::optional<TimeZone> fromSecondsFromGMT(std::int64_t seconds);

    /// Offset 0.
    static TimeZone gmt();

    /// That of the current world, which is `host()` unless the application or a test chose another.
    ///
    /// @snippet Tests/Platform/Time/TimeZoneTests.cpp Choosing a zone
    static TimeZone system();

    /// Makes `zone` the system's for the rest of the process. What was made for the one before keeps that.
    /// See `World::setCurrent` for threads.
    static void setSystem(TimeZone zone);

    /// What the environment asks for (`TZ`) or the machine is set to, read once; GMT when that is not in the
    /// tables.
    static TimeZone host();

    /// As in the tables: `Europe/Berlin`.
    const std::string& name() const noexcept;

    /// Seconds to add to GMT to get what clocks there show at `date`; negative west of Greenwich. At
    /// no moment, that of 1970.
    std::int64_t secondsFromGMT(Date date) const;

    /// Whether `secondsFromGMT` has a seasonal part at `date`.
    bool isDaylightSavingTime(Date date) const;

    /// When the offset, or the season, changes next, after `date`. Nothing when it never does.
    std::optional<Date> nextTransition(Date date) const;

    /// The name.
    const std::string& description() const noexcept { return name(); }

    /// Whether both have the same name. Two names of one zone, such as `UTC` and `GMT`, differ.
    friend bool operator==(const TimeZone& first, const TimeZone& second) noexcept
    {
        return first.m_contents == second.m_contents || first.name() == second.name();
    }

private:
    struct Contents;
    explicit TimeZone(std::shared_ptr<const Contents> contents) noexcept;

    std::shared_ptr<const Contents> m_contents;
};

} // namespace orrenby

template <> struct std::hash<orrenby::TimeZone> {
    std::size_t operator()(const orrenby::TimeZone& zone) const noexcept
    {
        return std::hash<std::string>()(zone.name());
    }
};
