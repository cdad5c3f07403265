#include "Examples/Fieldbook/Service/ReportKeeper.hpp"

#include "Examples/Fieldbook/Tests/OwnFolder.hpp"
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>

namespace {

using namespace fieldbook;
using orrenby::operator""_email;
using ::testing::ElementsAre;

class KeepReportTest : public ::testing::Test {
protected:
    static ReceivedReport received(std::string text, std::optional<ServicePart> photo = {})
    {
        return {4, "ada@hut.example"_email, {"Rope frayed", "Quay", "Nils", Severity::low, {}},
            std::move(photo), std::move(text)};
    }

    std::set<std::string> files() const
    {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
            names.insert(entry.path().filename().string());
        return names;
    }

    OwnFolder folder;
};

TEST_F(KeepReportTest, WritesTheBytesAsTheyCame)
{
    const auto bytes = std::string("\x89PNG\0\r\n\xFF", 8);

    EXPECT_EQ(keepReport(received("{ }\r\n", ServicePart{"photo", "a", "image/png", bytes}), folder.path()),
        std::nullopt);

    EXPECT_THAT(files(), ElementsAre("4.json", "4.png"));
    EXPECT_EQ(contentOf(folder.file("4.json")), "{ }\r\n");
    EXPECT_EQ(contentOf(folder.file("4.png")), bytes);
}

TEST_F(KeepReportTest, NamesPhotosByTheirKind)
{
    const auto filesWith = [this](const char* type) {
        EXPECT_EQ(
            keepReport(received("{}", ServicePart{"photo", "a", type, "x"}), folder.path()), std::nullopt);
        return files();
    };

    EXPECT_THAT(filesWith("image/png"), ElementsAre("4.json", "4.png"));
    EXPECT_THAT(filesWith("image/jpeg"), ElementsAre("4.jpg", "4.json"));
    EXPECT_THAT(filesWith("image/../../x"), ElementsAre("4.json", "4.photo"));
}

TEST_F(KeepReportTest, RemovesAPhotoThatTheReportHasNoLonger)
{
    keepReport(received("{}", ServicePart{"photo", "a", "image/png", "x"}), folder.path());

    EXPECT_EQ(keepReport(received("{ }"), folder.path()), std::nullopt);

    EXPECT_THAT(files(), ElementsAre("4.json"));
    EXPECT_EQ(contentOf(folder.file("4.json")), "{ }");
}

TEST_F(KeepReportTest, SaysWhyItCannot)
{
    EXPECT_EQ(keepReport(received("{}"), folder.file("missing")), "No such file or directory");
}

} // namespace
