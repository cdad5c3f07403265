#include "Examples/Fieldbook/Feed/Catalogue.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace fieldbook;
using ::testing::ElementsAre;

Report reportAt(const std::string& place, Severity severity) { return {"t", place, "o", severity, {}}; }

std::vector<int> numbers(const Catalogue& catalogue, SortOrder order)
{
    std::vector<int> result;
    for (const auto& [number, report] : catalogue.sorted(order))
        result.push_back(number);
    return result;
}

TEST(Catalogue, NumbersFilesInTheOrderOfFirstMeetingThem)
{
    auto catalogue = Catalogue();

    EXPECT_EQ(catalogue.numberOf("b"), 1);
    EXPECT_EQ(catalogue.numberOf("a"), 2);
    EXPECT_EQ(catalogue.numberOf("b"), 1);
}

TEST(Catalogue, KeepsTheNumberOfAFileThatComesBack)
{
    auto catalogue = Catalogue();
    catalogue.put("a", reportAt("p", Severity::low));
    catalogue.take("a");
    EXPECT_EQ(catalogue.find(1), nullptr);

    catalogue.put("a", reportAt("q", Severity::low));

    ASSERT_NE(catalogue.find(1), nullptr);
    EXPECT_EQ(catalogue.find(1)->place, Line("q"));
}

TEST(Catalogue, ListsTheGravestFirstThePlacesByNameAndEqualsByNumber)
{
    auto catalogue = Catalogue();
    catalogue.put("a", reportAt("west", Severity::low));
    catalogue.put("b", reportAt("east", Severity::high));
    catalogue.put("c", reportAt("west", Severity::high));

    EXPECT_THAT(numbers(catalogue, SortOrder::byNumber), ElementsAre(1, 2, 3));
    EXPECT_THAT(numbers(catalogue, SortOrder::bySeverity), ElementsAre(2, 3, 1));
    EXPECT_THAT(numbers(catalogue, SortOrder::byPlace), ElementsAre(2, 1, 3));
}

} // namespace
