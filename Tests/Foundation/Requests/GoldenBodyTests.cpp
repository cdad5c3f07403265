#include "Tests/Foundation/Requests/GoldenBodies.hpp"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <iterator>
#include <set>

using namespace orrenby;
using orrenby::tests::bodyText;
using orrenby::tests::goldenBodies;

namespace {

const std::filesystem::path folder = ORRENBY_GOLDEN_BODIES;

std::string contentOf(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

TEST(GoldenBody, IsWhatEachFormWrites)
{
    for (const auto& [name, request] : goldenBodies())
        EXPECT_EQ(bodyText(request), contentOf(folder / name)) << name;
}

TEST(GoldenBody, HasAFormForEachFile)
{
    std::set<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (entry.path().filename() != ".gitattributes")
            files.insert(entry.path().filename().string());
    std::set<std::string> forms;
    for (const auto& body : goldenBodies())
        forms.emplace(body.name);

    EXPECT_EQ(forms, files);
}

} // namespace
