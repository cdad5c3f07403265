#include "Examples/Fieldbook/Upload/Photo.hpp"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

namespace {

using namespace fieldbook;
namespace fs = std::filesystem;

class PhotoTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_NE(::mkdtemp(name.data()), nullptr); }
    void TearDown() override { fs::remove_all(name); }
    fs::path put(const std::string& file) const
    {
        std::ofstream(folder() / file) << "x";
        return folder() / file;
    }
    fs::path folder() const { return name; }

    std::string name = ::testing::TempDir() + "photos-XXXXXX";
};

TEST_F(PhotoTest, StandsBesideItsReport)
{
    const auto file = put("ford.png");
    put("other.png");

    EXPECT_EQ(photoOf(folder(), "ford.json"), (Photo{file, "image/png"}));
}

TEST_F(PhotoTest, MayBeOfThreeForms)
{
    const auto jpeg = put("ford.jpeg");
    EXPECT_EQ(photoOf(folder(), "ford.json"), (Photo{jpeg, "image/jpeg"}));
    const auto jpg = put("ford.jpg");
    EXPECT_EQ(photoOf(folder(), "ford.json"), (Photo{jpg, "image/jpeg"}));
    const auto png = put("ford.png");
    EXPECT_EQ(photoOf(folder(), "ford.json"), (Photo{png, "image/png"}));
}

TEST_F(PhotoTest, MayBeMissing)
{
    fs::create_directory(folder() / "ford.png");

    EXPECT_EQ(photoOf(folder(), "ford.json"), std::nullopt);
}

TEST_F(PhotoTest, IsNotLookedForOutsideOfTheFolder)
{
    fs::create_directory(folder() / "station");
    put("station/1.png");
    put("1.png");

    EXPECT_EQ(photoOf(folder(), "station/1"), std::nullopt);
    EXPECT_EQ(photoOf(folder(), "station/1.json"), std::nullopt);
    EXPECT_EQ(photoOf(folder() / "station", "../1.json"), std::nullopt);
    EXPECT_EQ(photoOf(folder(), ""), std::nullopt);
}

} // namespace
