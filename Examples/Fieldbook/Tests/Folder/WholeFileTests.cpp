#include "Examples/Fieldbook/Folder/WholeFile.hpp"

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

namespace {

using namespace fieldbook;

class WriteWholeTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_NE(::mkdtemp(folder.data()), nullptr); }
    void TearDown() override { std::filesystem::remove_all(folder); }

    std::string content() const
    {
        std::ifstream stream(folder + "/a.json", std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    std::string folder = ::testing::TempDir() + "whole-XXXXXX";
};

TEST_F(WriteWholeTest, ReplacesWhatTheFileHeld)
{
    EXPECT_EQ(writeWhole(folder + "/a.json", "a longer text"), std::nullopt);
    EXPECT_EQ(writeWhole(folder + "/a.json", std::string_view("\0\n", 2)), std::nullopt);

    EXPECT_EQ(content(), std::string("\0\n", 2));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);
}

TEST_F(WriteWholeTest, WritesAnEmptyFile)
{
    EXPECT_EQ(writeWhole(folder + "/a.json", ""), std::nullopt);
    EXPECT_EQ(std::filesystem::file_size(folder + "/a.json"), 0U);
}

TEST_F(WriteWholeTest, SaysWhyItCannot)
{
    EXPECT_EQ(writeWhole(folder + "/missing/a.json", "x"), "No such file or directory");
    std::filesystem::create_directory(folder + "/a.json");
    EXPECT_EQ(writeWhole(folder + "/a.json", "x"), "Is a directory");
}

} // namespace
