#include "Examples/Fieldbook/Service/ReportKeeper.hpp"

#include <cstdlib>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <set>

namespace {

using namespace fieldbook;
using orrenby::operator""_email;
using ::testing::ElementsAre;

class KeepReportTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_NE(::mkdtemp(folder.data()), nullptr); }
    void TearDown() override { std::filesystem::remove_all(folder); }

    static ReceivedReport received(std::string text, std::optional<ServicePart> photo = {})
    {
        return {4, "ada@hut.example"_email, {"Rope frayed", "Quay", "Nils", Severity::low, {}},
            std::move(photo), std::move(text)};
    }

    std::set<std::string> files() const
    {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            names.insert(entry.path().filename().string());
        return names;
    }

    std::string contentOf(const char* file) const
    {
        std::ifstream stream(folder + '/' + file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    std::string folder = ::testing::TempDir() + "kept-XXXXXX";
};

TEST_F(KeepReportTest, WritesTheBytesAsTheyCame)
{
    const auto bytes = std::string("\x89PNG\0\r\n\xFF", 8);

    EXPECT_EQ(
        keepReport(received("{ }\r\n", ServicePart{"photo", "a", "image/png", bytes}), folder), std::nullopt);

    EXPECT_THAT(files(), ElementsAre("4.json", "4.png"));
    EXPECT_EQ(contentOf("4.json"), "{ }\r\n");
    EXPECT_EQ(contentOf("4.png"), bytes);
}

TEST_F(KeepReportTest, NamesPhotosByTheirKind)
{
    for (const auto* const type : {"image/png", "image/jpeg", "image/../../x"}) {
        keepReport(received("{}", ServicePart{"photo", "a", type, "x"}), folder);
        EXPECT_EQ(files().size(), 2U) << type;
    }
    EXPECT_THAT(files(), ElementsAre("4.json", "4.photo"));
}

TEST_F(KeepReportTest, RemovesAPhotoThatTheReportHasNoLonger)
{
    keepReport(received("{}", ServicePart{"photo", "a", "image/png", "x"}), folder);

    EXPECT_EQ(keepReport(received("{ }"), folder), std::nullopt);

    EXPECT_THAT(files(), ElementsAre("4.json"));
    EXPECT_EQ(contentOf("4.json"), "{ }");
}

TEST_F(KeepReportTest, SaysWhyItCannot)
{
    EXPECT_EQ(keepReport(received("{}"), folder + "/missing"), "No such file or directory");
}

} // namespace
