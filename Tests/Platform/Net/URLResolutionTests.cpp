#include "Orrenby/Platform/Net/URL.hpp"

#include <gmock/gmock.h>
#include <random>
#include <string>

using namespace orrenby;

namespace {

std::string resolved(std::string_view text, std::string_view base)
{
    const auto url = URL::make(text, *URL::make(base));
    return url ? url->absoluteString() : "nothing";
}

struct Example {
    const char* text;
    const char* expected;
};

// RFC 3986, section 5.4.
constexpr Example normalExamples[] = {
    {"g:h", "g:h"},
    {"g", "http://a/b/c/g"},
    {"./g", "http://a/b/c/g"},
    {"g/", "http://a/b/c/g/"},
    {"/g", "http://a/g"},
    {"//g", "http://g"},
    {"?y", "http://a/b/c/d;p?y"},
    {"g?y", "http://a/b/c/g?y"},
    {"#s", "http://a/b/c/d;p?q#s"},
    {"g#s", "http://a/b/c/g#s"},
    {"g?y#s", "http://a/b/c/g?y#s"},
    {";x", "http://a/b/c/;x"},
    {"g;x", "http://a/b/c/g;x"},
    {"g;x?y#s", "http://a/b/c/g;x?y#s"},
    {"", "http://a/b/c/d;p?q"},
    {".", "http://a/b/c/"},
    {"./", "http://a/b/c/"},
    {"..", "http://a/b/"},
    {"../", "http://a/b/"},
    {"../g", "http://a/b/g"},
    {"../..", "http://a/"},
    {"../../", "http://a/"},
    {"../../g", "http://a/g"},
};
constexpr Example abnormalExamples[] = {
    {"../../../g", "http://a/g"},
    {"../../../../g", "http://a/g"},
    {"/./g", "http://a/g"},
    {"/../g", "http://a/g"},
    {"g.", "http://a/b/c/g."},
    {".g", "http://a/b/c/.g"},
    {"g..", "http://a/b/c/g.."},
    {"..g", "http://a/b/c/..g"},
    {"./../g", "http://a/b/g"},
    {"./g/.", "http://a/b/c/g/"},
    {"g/./h", "http://a/b/c/g/h"},
    {"g/../h", "http://a/b/c/h"},
    {"g;x=1/./y", "http://a/b/c/g;x=1/y"},
    {"g;x=1/../y", "http://a/b/c/y"},
    {"g?y/./x", "http://a/b/c/g?y/./x"},
    {"g?y/../x", "http://a/b/c/g?y/../x"},
    {"g#s/./x", "http://a/b/c/g#s/./x"},
    {"g#s/../x", "http://a/b/c/g#s/../x"},
    {"http:g", "http:g"},
};

} // namespace

TEST(URLResolution, DoesWhatTheStandardsNormalExamplesSay)
{
    for (const auto& [text, expected] : normalExamples)
        EXPECT_EQ(resolved(text, "http://a/b/c/d;p?q"), expected) << text;
}

TEST(URLResolution, DoesWhatTheStandardsAbnormalExamplesSay)
{
    for (const auto& [text, expected] : abnormalExamples)
        EXPECT_EQ(resolved(text, "http://a/b/c/d;p?q"), expected) << text;
}

TEST(URLResolution, DropsTheFragmentOfTheBase)
{
    EXPECT_EQ(resolved("", "http://a/b?q#f"), "http://a/b?q");
    EXPECT_EQ(resolved("#s", "http://a/b?q#f"), "http://a/b?q#s");
}

TEST(URLResolution, PutsASlashBehindABareHost)
{
    EXPECT_EQ(resolved("g", "http://a"), "http://a/g");
    EXPECT_EQ(resolved("../g", "http://a?q"), "http://a/g");
    EXPECT_EQ(resolved("?y", "http://a"), "http://a?y");
}

TEST(URLResolution, KeepsUserPortAndEmptyParts)
{
    EXPECT_EQ(resolved("g", "http://u:p@a:81/b"), "http://u:p@a:81/g");
    EXPECT_EQ(resolved("?#", "http://a/b?q"), "http://a/b?#");
    EXPECT_EQ(resolved("g", "file:///b"), "file:///g");
}

TEST(URLResolution, LeavesAnAbsoluteTextAsItIs)
{
    EXPECT_EQ(resolved("HTTP://x/a/../b", "http://a/b"), "HTTP://x/a/../b");
    EXPECT_EQ(resolved("mailto:a@b.co", "relative/base"), "mailto:a@b.co");
}

TEST(URLResolution, GivesNothingWithoutAnyScheme)
{
    EXPECT_EQ(resolved("g", "/a/b"), "nothing");
    EXPECT_EQ(resolved("//host/g", "//a/b"), "nothing");
    EXPECT_EQ(resolved("", ""), "nothing");
}

TEST(URLResolution, GivesNothingForWhatIsNoURL)
{
    EXPECT_EQ(resolved("a b", "http://a/b"), "nothing");
    EXPECT_EQ(resolved("%", "http://a/b"), "nothing");
}

TEST(URLResolution, WorksOnPathsWithoutSlashes)
{
    EXPECT_EQ(resolved("c", "x:a/b"), "x:a/c");
    EXPECT_EQ(resolved("c", "x:a"), "x:c");
    EXPECT_EQ(resolved("../c", "x:a/b"), "x:/c");
    EXPECT_EQ(resolved("./c:d", "x:a"), "x:c:d");
}

TEST(URLResolution, NeverMakesAHostOfAPath)
{
    EXPECT_EQ(resolved("/.//c", "x:/a"), "x:/.//c");
    EXPECT_EQ(resolved("..//c", "x:/a/b"), "x:/.//c");
    EXPECT_EQ(URL::make("..//c", "x:/a/b"_url)->host(), std::nullopt);
}

TEST(URLResolution, AlwaysGivesAURLThatResolvesToItself)
{
    std::mt19937 random(20261121);
    constexpr std::string_view characters = "aab/./..//:?#@;";
    const auto randomText = [&] {
        std::string text;
        for (auto count = random() % 12; count > 0; --count)
            text += characters[random() % characters.size()];
        return text;
    };

    int resolvedCount = 0;
    for (int round = 0; round < 100'000; ++round) {
        const auto base = URL::make((round % 2 == 0 ? "x:" : "x://h") + randomText());
        const auto text = randomText();
        const auto url = base ? URL::make(text, *base) : std::nullopt;
        if (!url)
            continue;

        ++resolvedCount;
        ASSERT_EQ(URL::make(url->absoluteString()), url) << text << " at " << base->absoluteString();
        ASSERT_EQ(URL::make(url->absoluteString(), *base), url) << text << " at " << base->absoluteString();
        ASSERT_TRUE(URL::make(text)->scheme()
            || url->host() == (text.starts_with("//") ? URL::make(text) : base)->host())
            << text << " at " << base->absoluteString();
    }
    EXPECT_GT(resolvedCount, 10'000);
}
