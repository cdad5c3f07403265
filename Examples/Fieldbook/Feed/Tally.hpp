#pragma once

/// @file
/// The figures of a session.

#include "Report/Report.hpp"
#include <array>
#include <cstddef>
#include <map>
#include <set>
#include <string>

namespace fieldbook {

/// How often what happened, and what the readable reports of the folder say at this moment.
struct Tally {
    std::size_t added = 0;
    std::size_t changed = 0;
    std::size_t removed = 0;
    std::size_t unreadable = 0;

    /// Numbers of reports. Nobody and no place stands here with 0.
    std::array<std::size_t, 3> bySeverity{};
    std::map<std::string, std::size_t> byObserver;
    std::map<std::string, std::size_t> byPlace;
    std::set<std::string> unreadableFiles;

    /// Counts one report among those of the folder.
    void put(const Report& report);

    /// Takes back what `put` did with an equal report.
    void take(const Report& report);

    friend bool operator==(const Tally&, const Tally&) = default;
};

} // namespace fieldbook
