#include "Tests/Foundation/Requests/GoldenBodies.hpp"

#include "Tests/Support/TemporaryFolder.hpp"
#include <filesystem>
#include <gmock/gmock.h>
#include <set>

using namespace orrenby;
using orrenby::tests::bodyText;
using orrenby::tests::contentOf;
using orrenby::tests::goldenBodies;

namespace {

const std::filesystem::path folder = ORRENBY_GOLDEN_BODIES;

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
