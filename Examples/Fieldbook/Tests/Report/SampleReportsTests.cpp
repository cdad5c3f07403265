#include "Examples/Fieldbook/Report/SampleReports.hpp"

#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

namespace {

using namespace fieldbook;

std::vector<Report> reportsFrom(std::string_view seed, std::size_t count)
{
    auto samples = SampleReports(seed);
    std::vector<Report> reports;
    std::generate_n(std::back_inserter(reports), count, [&] { return samples.next(); });
    return reports;
}

TEST(SampleReports, AreTheSameWheneverTheSeedIs)
{
    //! [Making reports up]
    auto samples = SampleReports("autumn");
    auto again = SampleReports("autumn");

    EXPECT_EQ(samples.next(), again.next());
    EXPECT_EQ(samples.next(), again.next());
    //! [Making reports up]
    EXPECT_EQ(reportsFrom("autumn", 100), reportsFrom("autumn", 100));
}

TEST(SampleReports, AreOthersWhenTheSeedIs) { EXPECT_NE(reportsFrom("autumn", 5), reportsFrom("winter", 5)); }

TEST(SampleReports, ComeInAllSeveritiesAndFromEverybody)
{
    const auto reports = reportsFrom("demo", 200);

    for (const auto severity : orrenby::allCases<Severity>)
        EXPECT_TRUE(std::any_of(reports.begin(), reports.end(), [&](const Report& report) {
            return report.severity == severity;
        })) << nameOf(severity);
    for (const auto* name :
        {"Ines Calder", "Jonas Brandt", "Marit Lindqvist", "Sunniva Øye", "Tomé Ferreira"})
        EXPECT_TRUE(std::any_of(reports.begin(), reports.end(), [&](const Report& report) {
            return report.observer == Line(name);
        })) << name;
}

} // namespace
