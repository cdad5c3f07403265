#include "Examples/Fieldbook/Compose/ComposeFlow.hpp"

#include "Examples/Fieldbook/Report/ReportDecoding.hpp"
#include "Examples/Fieldbook/Tests/OwnFolder.hpp"
#include "Examples/Fieldbook/Tests/SessionTest.hpp"
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace fieldbook;
using orrenby::operator""_email;
using ::testing::EndsWith;
using Outcome = ComposeFlow::Outcome;

class ComposeFlowTest : public SessionTest {
protected:
    void SetUp() override
    {
        session.folder = folder.path();
        session.user = "ada@hut.example"_email;
        flow = orrenby::make<ComposeFlow>(session);
        flow->start();
    }

    OwnFolder folder;
    orrenby::Ref<ComposeFlow> flow;
};

TEST_F(ComposeFlowTest, WritesWhatWasTypedIntoTheFolder)
{
    for (const auto* const line :
        {"title Rope frayed", "place  Quay ", "severity high", "body At the [third] bollard."})
        EXPECT_EQ(flow->take(line), Outcome::goesOn) << line;

    EXPECT_EQ(flow->take("save"), Outcome::isOver);

    EXPECT_EQ(decodedReport(contentOf(folder.file("report-1.json"))).unwrap(),
        (Report{
            "Rope frayed", "Quay", "ada@hut.example", Severity::high, Passage("At the [third] bollard.")}));
    EXPECT_THAT(printed(), EndsWith("= saved as report-1.json\n"));
}

TEST_F(ComposeFlowTest, TakesANameThatIsFree)
{
    folder.file("report-1.json", "x");
    flow->take("title Rope frayed");
    flow->take("place Quay");

    flow->take("save");

    EXPECT_EQ(contentOf(folder.file("report-1.json")), "x");
    EXPECT_TRUE(decodedReport(contentOf(folder.file("report-2.json"))).isSuccess());
}

TEST_F(ComposeFlowTest, SaysWhatIsMissingAndGoesOn)
{
    flow->take("title Rope frayed");

    EXPECT_EQ(flow->take("save"), Outcome::goesOn);
    EXPECT_THAT(printed(), ::testing::HasSubstr("! place, line "));
    EXPECT_FALSE(std::filesystem::exists(folder.file("report-1.json")));

    flow->take("place Quay");
    EXPECT_EQ(flow->take("save"), Outcome::isOver);
}

TEST_F(ComposeFlowTest, RefusesTextsThatCannotBeShownOrRead)
{
    flow->take("place Quay");
    flow->take("title \x1B[2J");
    EXPECT_EQ(flow->take("save"), Outcome::goesOn);
    flow->take("title \xFF");
    EXPECT_EQ(flow->take("save"), Outcome::goesOn);

    EXPECT_THAT(printed(), EndsWith("! it is no text in UTF-8\n"));
    EXPECT_FALSE(std::filesystem::exists(folder.file("report-1.json")));
}

TEST_F(ComposeFlowTest, RefusesASeverityThatIsNone)
{
    EXPECT_EQ(flow->take("severity grave"), Outcome::goesOn);

    EXPECT_THAT(printed(), EndsWith("! a severity is low, medium or high\n"));
}

TEST_F(ComposeFlowTest, LeavesOtherLinesToOthers)
{
    for (const auto* const line : {"", "titles", "title", "upload", "sort place", "saved"})
        EXPECT_EQ(flow->take(line), Outcome::notTaken) << line;
}

TEST_F(ComposeFlowTest, CanBeDiscarded)
{
    flow->take("title Rope frayed");

    EXPECT_EQ(flow->take("discard"), Outcome::isOver);

    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TEST_F(ComposeFlowTest, SaysWhyItCannotWrite)
{
    session.folder = folder.file("missing");
    flow->take("title Rope frayed");
    flow->take("place Quay");

    EXPECT_EQ(flow->take("save"), Outcome::goesOn);

    EXPECT_THAT(printed(), EndsWith("! report-1.json: No such file or directory\n"));
}

} // namespace
