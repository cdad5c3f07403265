#include "Examples/Fieldbook/Folder/SampleFiles.hpp"

#include "Examples/Fieldbook/Folder/ReportFolder.hpp"
#include "Examples/Fieldbook/Folder/Samples.hpp"
#include "Examples/Fieldbook/Report/SampleReports.hpp"
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace fieldbook;
using ::testing::ElementsAre;
using ::testing::Optional;

class SampleFiles : public ::testing::Test {
protected:
    SampleFiles()
    {
        std::filesystem::remove_all(folder.path());
        std::filesystem::create_directory(folder.path());
    }

    TemporaryCopy folder{samplesFolder()};
};

TEST_F(SampleFiles, HoldTheReportsOfTheirSeed)
{
    ASSERT_EQ(writeSamples({2, "autumn"}, folder.path()).unwrap(), 2U);

    auto expected = SampleReports("autumn");
    for (const auto* file : {"sample-autumn-1.json", "sample-autumn-2.json"})
        EXPECT_EQ(readReport(folder.path() / file)->unwrap(), expected.next()) << file;
}

TEST_F(SampleFiles, AreWrittenInPlaceOfTheSameOnes)
{
    writeSamples({2, "autumn"}, folder.path()).unwrap();
    writeSamples({3, "autumn"}, folder.path()).unwrap();
    writeSamples({1, "winter"}, folder.path()).unwrap();

    EXPECT_THAT(listReports(folder.path()),
        Optional(ElementsAre(
            "sample-autumn-1.json", "sample-autumn-2.json", "sample-autumn-3.json", "sample-winter-1.json")));
}

TEST_F(SampleFiles, LeaveNoDraftBehind)
{
    writeSamples({1}, folder.path()).unwrap();

    EXPECT_FALSE(std::filesystem::exists(folder.path() / ".sample"));
}

TEST_F(SampleFiles, CannotBeWrittenWhereThereIsNoFolder)
{
    const auto outcome = writeSamples({1}, folder.path() / "missing");

    ASSERT_TRUE(outcome.isFailure());
    EXPECT_EQ(*outcome.error(),
        "no samples: " + (folder.path() / "missing/sample-demo-1.json").string()
            + ": No such file or directory");
}

TEST(SampleRequest, HasACountAndPossiblyASeed)
{
    EXPECT_EQ(sampleRequestIn("5"), (SampleRequest{5, "demo"}));
    EXPECT_EQ(sampleRequestIn("1000 Autumn-2"), (SampleRequest{1000, "Autumn-2"}));
    EXPECT_EQ(sampleRequestIn("5,autumn", ','), (SampleRequest{5, "autumn"}));
}

TEST(SampleRequest, IsRefusedOtherwise)
{
    for (const auto* text : {"", "0", "-1", "1001", "5 ", "5 a b", "5 ../x", "5 ø", "autumn", " 5"})
        EXPECT_EQ(sampleRequestIn(text), std::nullopt) << text;
    EXPECT_EQ(sampleRequestIn("1 " + std::string(33, 'a')), std::nullopt);
    EXPECT_NE(sampleRequestIn("1 " + std::string(32, 'a')), std::nullopt);
}

} // namespace
