#include "Examples/Fieldbook/Feed/ReportSupply.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace fieldbook;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

Report titled(const char* title) { return {title, "Quay", "Nils", Severity::low, {}}; }

TEST(ReportSupply, TellsWhatIsDifferentSinceTheLastList)
{
    //! [Telling what is different]
    auto supply = ReportSupply(stationPrefix, {});

    EXPECT_THAT(supply.take({titled("Rope frayed"), titled("Crane stuck")}),
        ElementsAre(FeedNews(Added{"station/1", titled("Rope frayed")}),
            FeedNews(Added{"station/2", titled("Crane stuck")})));
    EXPECT_THAT(supply.take({titled("Rope mended")}),
        ElementsAre(FeedNews(Changed{"station/1", titled("Rope mended")}),
            FeedNews(Removed{"station/2", titled("Crane stuck")})));
    //! [Telling what is different]
}

TEST(ReportSupply, TellsNothingOfAListThatIsTheSame)
{
    auto supply = ReportSupply(stationPrefix, {});
    supply.take({titled("Rope frayed")});

    EXPECT_THAT(supply.take({titled("Rope frayed")}), IsEmpty());
}

TEST(ReportSupply, BeginsWithItsOwnOfWhatIsRemembered)
{
    auto supply = ReportSupply(servicePrefix,
        {{"service/1", titled("Rope frayed")}, {"station/1", titled("Ice")},
            {"a.json", titled("Gate open")}});

    EXPECT_THAT(supply.take({titled("Rope mended")}),
        ElementsAre(FeedNews(Changed{"service/1", titled("Rope mended")})));
    EXPECT_THAT(supply.take({}), ElementsAre(FeedNews(Removed{"service/1", titled("Rope mended")})));
}

TEST(ReportSupply, KeepsWhatItKnewOfAReportThatCannotBeRead)
{
    auto supply = ReportSupply(servicePrefix, {});
    supply.take({titled("Rope frayed"), std::nullopt});

    EXPECT_THAT(supply.take({std::nullopt, std::nullopt}), IsEmpty());
    EXPECT_THAT(supply.take({titled("Rope frayed"), titled("Crane stuck")}),
        ElementsAre(FeedNews(Added{"service/2", titled("Crane stuck")})));
}

TEST(ReportSupply, TellsInTheOrderOfPlacesWhatIsGone)
{
    auto supply = ReportSupply(servicePrefix, {{"service/10", titled("Ice")}, {"service/9", titled("Fog")}});

    EXPECT_THAT(supply.take({}),
        ElementsAre(
            FeedNews(Removed{"service/9", titled("Fog")}), FeedNews(Removed{"service/10", titled("Ice")})));
}

TEST(ReportSupply, TellsNothingOfNothing)
{
    auto supply = ReportSupply(servicePrefix, {});

    EXPECT_THAT(supply.take({}), IsEmpty());
}

} // namespace
