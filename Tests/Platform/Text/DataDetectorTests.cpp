#include "Orrenby/Platform/Text/DataDetector.hpp"

#include "Orrenby/Platform/Text/UTF16.hpp"
#include "Tests/Support/DetectorCorpus.hpp"
#include <algorithm>
#include <future>
#include <gmock/gmock.h>

using namespace orrenby;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Le;

namespace {

const DataDetector everything(DataKind::All);

std::vector<std::string> texts(const DataDetector& detector, std::string_view text)
{
    std::vector<std::string> result;
    for (const auto& match : detector.matches(text))
        result.emplace_back(match.in(text));
    return result;
}

std::vector<std::string> urls(std::string_view text)
{
    std::vector<std::string> result;
    for (const auto& match : DataDetector(DataKind::Link).matches(text))
        result.push_back(match.url ? match.url->absoluteString() : "none");
    return result;
}

/// So many bytes of a text over and over.
std::string repeated(std::string_view unit, std::size_t bytes)
{
    std::string result;
    while (result.size() < bytes)
        result += unit;
    return result;
}

/// How many bytes the detector looks at for each byte of the text.
std::size_t workPerByte(std::string_view text)
{
    DataDetector::Scan scan(everything, text);
    while (scan.next()) {}
    return scan.work() / text.size();
}

} // namespace

TEST(DataDetector, FindsLinksNumbersAndAddressesFromLeftToRight)
{
    //! [Finding data]
    const std::string text = "Birkenweg 7, 10115 Berlin, Tel. 030 1234567, see example.com";

    const auto matches = DataDetector(DataKind::All).matches(text);

    EXPECT_EQ(matches[0].kind, DataKind::Address);
    EXPECT_EQ(matches[0].in(text), "Birkenweg 7, 10115 Berlin");
    EXPECT_EQ(matches[1].kind, DataKind::PhoneNumber);
    EXPECT_EQ(matches[1].range, (NSRange{.location = 32, .length = 11}));
    EXPECT_EQ(matches[2].url, "http://example.com"_url);
    //! [Finding data]
    EXPECT_EQ(matches.size(), 3U);
}

TEST(DataDetector, FindsNothingInTheEmptyText)
{
    EXPECT_THAT(everything.matches(""), IsEmpty());
    EXPECT_EQ(everything.firstMatch(""), std::nullopt);
}

TEST(DataDetector, ReportsOnlyTheKindsAskedFor)
{
    const std::string text = "Birkenweg 7 or 030 1234567 or a@b.co";

    EXPECT_THAT(texts(DataDetector(DataKind::Address), text), ElementsAre("Birkenweg 7"));
    EXPECT_THAT(texts(DataDetector(DataKind::PhoneNumber), text), ElementsAre("030 1234567"));
    EXPECT_THAT(texts(DataDetector(DataKind::Link), text), ElementsAre("a@b.co"));
    EXPECT_THAT(
        texts(DataDetector(DataKind::Address | DataKind::Link), text), ElementsAre("Birkenweg 7", "a@b.co"));
    EXPECT_THAT(texts(DataDetector(DataKind::None), text), IsEmpty());
}

TEST(DataDetector, FindsOfOneKindWhatItFindsOfThatKindAmongAll)
{
    for (const auto& line : orrenby::testing::detectorCorpus())
        for (const auto kind : {DataKind::Address, DataKind::Link, DataKind::PhoneNumber}) {
            auto ofAll = everything.matches(line.text);
            std::erase_if(ofAll, [&](const DataMatch& match) { return match.kind != kind; });

            EXPECT_EQ(DataDetector(kind).matches(line.text), ofAll) << line.file << ":" << line.number;
        }
}

TEST(DataDetector, TakesTheMatchThatBeginsFirst)
{
    EXPECT_THAT(
        texts(everything, "http://example.com/030-1234567"), ElementsAre("http://example.com/030-1234567"));
    EXPECT_THAT(texts(DataDetector(DataKind::PhoneNumber), "http://example.com/030-1234567"), IsEmpty());
}

TEST(DataDetector, TakesTheLongerOfTwoThatBeginTogether)
{
    EXPECT_THAT(texts(everything, "555-234-5678@example.com"), ElementsAre("555-234-5678@example.com"));
}

TEST(DataDetector, CountsRangesInUTF16Units)
{
    const std::string text = "\U0001F426 \u00E9 example.com \U0001F426 a@b.co";

    const auto matches = everything.matches(text);

    ASSERT_EQ(matches.size(), 2U);
    EXPECT_EQ(matches[0].range, (NSRange{.location = 5, .length = 11}));
    EXPECT_EQ(matches[1].range, (NSRange{.location = 20, .length = 6}));
    EXPECT_EQ(matches[0].byteOffset, 8U);
    EXPECT_EQ(UTF16View(text).slice(matches[1].range), "a@b.co");
}

TEST(DataDetector, GivesEachLinkAURLWithAScheme)
{
    EXPECT_THAT(urls("HTTPS://a.de www.a.de a@a.de MAILTO:a@a.de"),
        ElementsAre("HTTPS://a.de", "http://www.a.de", "mailto:a@a.de", "MAILTO:a@a.de"));
    EXPECT_EQ(DataDetector(DataKind::Link).firstMatch("MAILTO:a@a.de")->scheme(), "MAILTO");
}

TEST(DataDetector, GivesOtherKindsNoURL)
{
    const auto match = everything.firstMatch("030 1234567");

    ASSERT_TRUE(match.has_value());
    EXPECT_EQ(match->url, std::nullopt);
    EXPECT_EQ(match->scheme(), "");
}

TEST(DataDetector, EncodesWhatAURLCannotHold)
{
    EXPECT_THAT(
        urls("http://\u00E9.de/\u00E9?[1]#a#b"), ElementsAre("http://%C3%A9.de/%C3%A9?%5B1%5D#a%23b"));
    EXPECT_THAT(urls("http://[::1]:80/%41%4"), ElementsAre("http://[::1]:80/%41%254"));
}

TEST(DataDetector, EncodesWhatNoHostOrPortCanBe)
{
    EXPECT_THAT(urls("http://a.de:x/b"), ElementsAre("http://a.de%3Ax/b"));
    EXPECT_THAT(urls("http://[::1]:x/b"), ElementsAre("http://%5B%3A%3A1%5D%3Ax/b"));
    EXPECT_THAT(urls("http://[ab]/c"), ElementsAre("http://%5Bab%5D/c"));
    EXPECT_THAT(urls("http://a@b@c.de/d"), ElementsAre("http://a@b%40c.de/d"));
}

TEST(DataDetector, GivesURLsThatParseForAllLinks)
{
    int links = 0;
    for (const auto& line : orrenby::testing::detectorCorpus())
        for (const auto& match : DataDetector(DataKind::Link).matches(line.text)) {
            ++links;
            ASSERT_TRUE(match.url) << line.file << ":" << line.number;
            EXPECT_EQ(URL::make(match.url->absoluteString()), match.url) << line.file << ":" << line.number;
            EXPECT_TRUE(match.url->scheme()) << line.file << ":" << line.number;
        }
    EXPECT_GT(links, 100);
}

TEST(DataDetector, LeavesUnbalancedBracketsOutOfLinks)
{
    EXPECT_THAT(urls("http://a.de/(b) http://a.de/b) (http://a.de/b) http://a.de/(b"),
        ElementsAre("http://a.de/(b)", "http://a.de/b", "http://a.de/b", "http://a.de/"));
    EXPECT_THAT(
        urls("http://a.de/([b]c) http://a.de/([b)c]"), ElementsAre("http://a.de/(%5Bb%5Dc)", "http://a.de/"));
}

TEST(DataDetector, GivesMatchesOneByOne)
{
    //! [Finding data one by one]
    const std::string text = "a@b.co, c@d.co, e@f.co";
    DataDetector::Scan scan(DataDetector(DataKind::Link), text);

    const auto first = scan.next();
    const auto second = scan.next();
    //! [Finding data one by one]

    EXPECT_EQ(first->in(text), "a@b.co");
    EXPECT_EQ(second->in(text), "c@d.co");
    EXPECT_TRUE(scan.next().has_value());
    EXPECT_FALSE(scan.next().has_value());
    EXPECT_FALSE(scan.next().has_value());
}

TEST(DataDetector, GoesOnAfterAScanWasMoved)
{
    const std::string text = "a@b.co, c@d.co";
    DataDetector::Scan scan(DataDetector(DataKind::Link), text);
    (void)scan.next();

    auto moved = std::move(scan);

    EXPECT_EQ(moved.next()->in(text), "c@d.co");
}

TEST(DataDetector, SurvivesTextThatIsNotUTF8)
{
    const auto text = std::string("\xFF a@b.co \xC3 030 1234567\x80 http://a.de/\xE2\x82 \xED\xA0\x80", 40);

    EXPECT_THAT(texts(everything, text), ElementsAre("a@b.co", "030 1234567", "http://a.de/"));
}

TEST(DataDetector, EndsEverythingAtANull)
{
    EXPECT_THAT(texts(everything, std::string("http://a.de/b\0c a@b.co", 22)),
        ElementsAre("http://a.de/b", "a@b.co"));
}

TEST(DataDetector, FindsTheSameFromSeveralThreads)
{
    const std::string text = "Birkenweg 7 or 030 1234567 or a@b.co";
    const auto search = [&] { return everything.matches(text); };

    auto first = std::async(std::launch::async, search);
    auto second = std::async(std::launch::async, search);

    EXPECT_EQ(first.get(), second.get());
}

TEST(DataDetector, LooksAtEachByteABoundedNumberOfTimes)
{
    for (const std::string_view unit :
        {".", "@", "1", "/", "(", "[", ")", "()", "(]", ":", "+", "-", "a", "A ", "a.", "a@", "a@a.", "1 ",
            "0 ", "1-", "(1", "(1)", "+1", "a:", "a://", "http://", "http://a(", "(http://a", "http://a.b/([",
            "www.", "a.com/", "a.com,", "\u4E2D", "\xFF", "\xC3", "A'", "12 Main ", "12 A ", "Main Street ",
            "Stra\u00DFe ", "Rue de ", "PO ", "1, ", "A. ", "tel ", "+49 (0) ", "12 Main St, A A A A A A ",
            "1 A A A A ", "x.com:1", "030 ", "1234567890123456789 ", "10115 "}) {
        EXPECT_THAT(workPerByte(repeated(unit, 4'000)), Le(80U)) << unit;
        EXPECT_THAT(workPerByte(repeated(unit, 64'000)), Le(80U)) << unit;
    }
}

TEST(DataDetector, TakesMegabytesOfAnything)
{
    constexpr std::size_t size = 5'000'000;
    EXPECT_THAT(workPerByte(repeated(".", size)), Le(80U));
    EXPECT_THAT(workPerByte(repeated("a@a.", size / 5)), Le(80U));
    EXPECT_THAT(workPerByte("http://a/" + repeated("(", size / 2) + repeated(")", size / 2)), Le(80U));
}

TEST(DataDetector, FindsALinkOfMegabytes)
{
    const auto link = "http://a.de/" + std::string(1'000'000, 'a');

    EXPECT_EQ(DataDetector(DataKind::Link).firstMatch(link)->byteCount, link.size());
}
