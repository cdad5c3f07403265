#pragma once

/// @file
/// What a station answers: one JSON object with a member for each of these.

#include "Orrenby/Utilities/ServiceDecoder/ServiceKey.hpp"
#include "Report/ShownText.hpp"
#include "Settings/Settings.hpp"
#include <optional>
#include <vector>

namespace fieldbook {

/// Who is signed in, and where.
struct User {
    Line name;
    Line post;

    static orrenby::ServiceKey serviceKey() { return "user"; }
};

/// What the user has chosen elsewhere. Whatever is missing stays as it is.
struct ChosenSettings {
    std::optional<SortOrder> sortOrder;
    std::optional<bool> isDetailed;

    static orrenby::ServiceKey serviceKey() { return "settings"; }
};

/// Lists have no type of their own that could name its key.
inline const orrenby::ServiceKey reportsKey = "reports";
inline const orrenby::ServiceKey announcementsKey = "announcements";

using StationReports = std::vector<Report>;
using Announcements = std::vector<Line>;

} // namespace fieldbook
