#include "Examples/Fieldbook/Upload/Photo.hpp"

#include "Examples/Fieldbook/Tests/OwnFolder.hpp"
#include <filesystem>
#include <gtest/gtest.h>

namespace {

using namespace fieldbook;
namespace fs = std::filesystem;

class PhotoTest : public ::testing::Test {
protected:
    fs::path put(const char* file) const { return folder.file(file, "x"); }

    OwnFolder folder;
};

TEST_F(PhotoTest, StandsBesideItsReport)
{
    const auto file = put("ford.png");
    put("other.png");

    EXPECT_EQ(photoOf(folder.path(), "ford.json"), (Photo{file, "image/png"}));
}

TEST_F(PhotoTest, MayBeOfThreeForms)
{
    const auto jpeg = put("ford.jpeg");
    EXPECT_EQ(photoOf(folder.path(), "ford.json"), (Photo{jpeg, "image/jpeg"}));
    const auto jpg = put("ford.jpg");
    EXPECT_EQ(photoOf(folder.path(), "ford.json"), (Photo{jpg, "image/jpeg"}));
    const auto png = put("ford.png");
    EXPECT_EQ(photoOf(folder.path(), "ford.json"), (Photo{png, "image/png"}));
}

TEST_F(PhotoTest, MayBeMissing)
{
    fs::create_directory(folder.path() / "ford.png");

    EXPECT_EQ(photoOf(folder.path(), "ford.json"), std::nullopt);
}

TEST_F(PhotoTest, IsNotLookedForOutsideOfTheFolder)
{
    fs::create_directory(folder.path() / "station");
    put("station/1.png");
    put("1.png");

    EXPECT_EQ(photoOf(folder.path(), "station/1"), std::nullopt);
    EXPECT_EQ(photoOf(folder.path(), "station/1.json"), std::nullopt);
    EXPECT_EQ(photoOf(folder.path() / "station", "../1.json"), std::nullopt);
    EXPECT_EQ(photoOf(folder.path(), ""), std::nullopt);
}

} // namespace
