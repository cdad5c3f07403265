#include "Examples/Fieldbook/Folder/WholeFile.hpp"

#include "Examples/Fieldbook/Tests/OwnFolder.hpp"
#include <gtest/gtest.h>
#include <iterator>

namespace {

using namespace fieldbook;

class WriteWholeTest : public ::testing::Test {
protected:
    auto fileCount() const { return std::distance(std::filesystem::directory_iterator(folder.path()), {}); }

    OwnFolder folder;
    std::string file = folder.file("a.json");
};

TEST_F(WriteWholeTest, ReplacesWhatTheFileHeld)
{
    EXPECT_EQ(writeWhole(file, "a longer text"), std::nullopt);
    EXPECT_EQ(writeWhole(file, std::string_view("\0\n", 2)), std::nullopt);

    EXPECT_EQ(contentOf(file), std::string("\0\n", 2));
    EXPECT_EQ(fileCount(), 1);
}

TEST_F(WriteWholeTest, WritesAnEmptyFile)
{
    EXPECT_EQ(writeWhole(file, ""), std::nullopt);
    EXPECT_EQ(std::filesystem::file_size(file), 0U);
}

TEST_F(WriteWholeTest, SaysWhyItCannot)
{
    EXPECT_EQ(writeWhole(folder.file("missing/a.json"), "x"), "No such file or directory");
    std::filesystem::create_directory(file);
    EXPECT_EQ(writeWhole(file, "x"), "Is a directory");
    EXPECT_EQ(fileCount(), 1); // the draft is gone
}

} // namespace
