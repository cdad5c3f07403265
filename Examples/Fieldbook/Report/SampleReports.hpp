#pragma once

/// @file
/// Reports that are made up.

#include "Orrenby/Utilities/SeededRandomNumberGenerator.hpp"
#include "Report/Report.hpp"
#include <string_view>
#include <vector>

namespace fieldbook {

/// Makes up one report after the other: the same ones in the same order whenever the seed is the same.
///
/// @snippet Examples/Fieldbook/Tests/Report/SampleReportsTests.cpp Making reports up
///
/// Not synchronised.
class SampleReports {
public:
    explicit SampleReports(std::string_view seed);

    Report next();

    /// So many of them.
    std::vector<Report> next(int count);

private:
    orrenby::SeededRandomNumberGenerator m_findings;
    orrenby::SeededRandomNumberGenerator m_places;
    orrenby::SeededRandomNumberGenerator m_observers;
    orrenby::SeededRandomNumberGenerator m_counts;
};

} // namespace fieldbook
