#include "Examples/Fieldbook/Feed/Listing.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace {

using namespace fieldbook;
using ::testing::ElementsAre;

class ListingTest : public ::testing::Test {
protected:
    ListingTest()
    {
        put("a", "west", Severity::low);
        put("b", "north", Severity::medium);
        put("c", "east", Severity::high);
    }

    void put(const std::string& file, const std::string& place, Severity severity)
    {
        catalogue.put(file, {"Title " + file, place, "o", severity, {}});
    }

    Terminal terminal{-1, false};
    Catalogue catalogue;
    Listing listing{terminal, catalogue};
};

TEST_F(ListingTest, GivesAllReportsInTheirOrder)
{
    EXPECT_THAT(listing.all(SortOrder::bySeverity),
        ElementsAre(
            "  #3 high    Title c, east", "  #2 medium  Title b, north", "  #1 low     Title a, west"));
}

TEST_F(ListingTest, TellsNothingBeforeAnythingWasShown)
{
    EXPECT_FALSE(listing.isShown());
    EXPECT_THAT(listing.news(), ElementsAre());
}

TEST_F(ListingTest, TellsNothingWhenNoRowChanged)
{
    listing.all(SortOrder::bySeverity);

    put("a", "elsewhere", Severity::low);

    EXPECT_THAT(listing.news(), ElementsAre());
}

TEST_F(ListingTest, GivesAllReportsForAnOrderWhenNoneWasShown)
{
    EXPECT_THAT(listing.sorted(SortOrder::byNumber),
        ElementsAre(
            "  #1 low     Title a, west", "  #2 medium  Title b, north", "  #3 high    Title c, east"));
}

TEST_F(ListingTest, TellsOnlyTheRowsThatAnotherOrderMoves)
{
    listing.all(SortOrder::bySeverity);

    put("d", "far", Severity::low);
    listing.news();

    EXPECT_THAT(listing.sorted(SortOrder::byPlace), ElementsAre("  row 4 → 2   #4 low     Title d, far"));
}

TEST_F(ListingTest, TellsNoRowThatStayedWhileOthersMovedAroundIt)
{
    listing.all(SortOrder::byNumber);

    EXPECT_THAT(listing.sorted(SortOrder::bySeverity), ElementsAre("  row 1 → 3   #1 low     Title a, west"));
}

TEST_F(ListingTest, TellsInWhichRowAReportCameIn)
{
    listing.all(SortOrder::bySeverity);

    put("d", "far", Severity::medium);

    EXPECT_THAT(listing.news(), ElementsAre("  row 3 in    #4"));
}

TEST_F(ListingTest, TellsWhichRowWentOut)
{
    listing.all(SortOrder::bySeverity);

    catalogue.take("b");

    EXPECT_THAT(listing.news(), ElementsAre("  row 2 out   #2"));
}

TEST_F(ListingTest, TellsFromWhichRowToWhichAReportMoved)
{
    listing.all(SortOrder::bySeverity);

    put("c", "east", Severity::low);

    EXPECT_THAT(listing.news(), ElementsAre("  row 1 → 3   #3"));
}

TEST_F(ListingTest, TellsEachChangeOnce)
{
    listing.all(SortOrder::byNumber);
    catalogue.take("b");
    listing.news();

    EXPECT_THAT(listing.news(), ElementsAre());
}

TEST_F(ListingTest, TellsWhatWentMovedAndCameInThatOrder)
{
    listing.all(SortOrder::bySeverity);

    catalogue.take("a");
    put("c", "east", Severity::low);
    put("d", "far", Severity::high);

    EXPECT_THAT(listing.news(), ElementsAre("  row 3 out   #1", "  row 1 → 3   #3", "  row 1 in    #4"));
}

TEST_F(ListingTest, KeepsItsColumnsInLongLists)
{
    for (auto number = 4; number <= 120; ++number)
        put(std::to_string(number), "p", Severity::low);
    listing.all(SortOrder::bySeverity);

    put("120", "p", Severity::high);
    put("119", "p", Severity::medium);

    EXPECT_THAT(listing.news(), ElementsAre("  row 119 → 4 #119", "  row 120 → 2 #120"));
}

} // namespace
