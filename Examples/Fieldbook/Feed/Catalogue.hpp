#pragma once

/// @file
/// The reports of the folder under numbers that people can type.

#include "Report/Report.hpp"
#include <map>
#include <string>
#include <vector>

namespace fieldbook {

/// In which order reports are listed.
enum class SortOrder { byNumber, bySeverity, byPlace };

/// A report and its number.
struct NumberedReport {
    int number = 0;
    Report report;

    friend bool operator==(const NumberedReport&, const NumberedReport&) = default;
};

/// Gives each file a number when it is first met, from 1, and keeps it for the session, also when the file
/// goes away and comes back. Numbers of earlier sessions are told to it.
///
/// Not synchronised.
class Catalogue {
public:
    int numberOf(const std::string& file);

    /// The number that the file had before, which no other file has. New ones are above it.
    void restore(const std::string& file, int number);

    void put(const std::string& file, const Report& report);
    void take(const std::string& file);

    /// The readable report of this number. Empty if there is none at the moment. Valid until the next change.
    const Report* find(int number) const;

    /// The file of this number, whether it is readable or not. Empty if the number was not given.
    std::string fileOf(int number) const;

    /// Whether there is no readable report at the moment.
    bool isEmpty() const { return m_reports.empty(); }

    /// All readable reports. Those that are equal in that order stand by their numbers.
    std::vector<NumberedReport> sorted(SortOrder order) const;

private:
    std::map<std::string, int> m_numbers; ///< By the name of the file.
    std::map<int, Report> m_reports;
    int m_latestNumber = 0;
};

} // namespace fieldbook
