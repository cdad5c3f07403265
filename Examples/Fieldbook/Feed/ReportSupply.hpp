#pragma once

/// @file
/// Reports that come from elsewhere than the folder.

#include "Feed/FeedNews.hpp"
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fieldbook {

/// What the names of the station's reports begin with, and those of the service's. No file of the folder has
/// such a name.
inline constexpr std::string_view stationPrefix = "station/";
inline constexpr std::string_view servicePrefix = "service/";

/// Remembers which reports a source had, and tells what is different about its next list. A report is known
/// by its place in the list: `station/1`, `station/2`.
///
/// @snippet Examples/Fieldbook/Tests/Feed/ReportSupplyTests.cpp Telling what is different
///
/// Not synchronised.
class ReportSupply {
public:
    /// @param prefix  Lives as long as the supply.
    /// @param remembered  Told in an earlier run. Those under other names are passed over.
    ReportSupply(std::string_view prefix, const std::map<std::string, Report>& remembered);

    /// What was added and changed, then what the list does not reach any more, both in the order of places.
    /// Of an empty place nothing is told, and what was known of it stays.
    std::vector<FeedNews> take(const std::vector<std::optional<Report>>& list);

private:
    /// Places, not letters: `station/10` comes after `station/9`.
    struct ByPlace {
        bool operator()(const std::string& left, const std::string& right) const
        {
            return left.size() != right.size() ? left.size() < right.size() : left < right;
        }
    };

    std::string_view m_prefix;
    std::map<std::string, Report, ByPlace> m_known; ///< By name.
};

} // namespace fieldbook
