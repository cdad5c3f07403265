#include "Orrenby/Foundation/NSAttributedString.hpp"

#include "Orrenby/Platform/Text/NSMutableAttributedString.hpp"
#include <chrono>
#include <gmock/gmock.h>
#include <initializer_list>
#include <string>
#include <utility>

using namespace orrenby;

namespace {

const TextAttributes plain{{TextAttribute::font, Font({.size = 17, .capHeight = 12})}};
const TextAttributes strong{{TextAttribute::font, Font::boldSystem(17)}};
const TextAttributes blue{{TextAttribute::foregroundColor, Color::rgb(0x0000FF)}};

const std::vector lineEnds{"\n", "\v", "\f", "\r", "\r\n", "\u0085", "\u2028", "\u2029"};

using Pieces = std::initializer_list<std::pair<std::string_view, TextAttributes>>;

NSAttributedString joined(Pieces pieces)
{
    NSMutableAttributedString text;
    for (const auto& [piece, attributes] : pieces)
        text.append(piece, attributes);
    return std::move(text).attributedString();
}

NSAttributedString emphasised(std::string_view text)
{
    return makeAttributedString(text, {.normalAttributes = plain, .markdownAttributes = strong}).value();
}

NSAttributedString illustrated(std::string_view text, std::vector<Image> images)
{
    return makeAttributedString(text, {.normalAttributes = plain, .images = std::move(images)}).value();
}

NSAttributedString linked(std::string_view text, std::vector<URL> links = {})
{
    return makeAttributedString(
        text, {.normalAttributes = plain, .linkAttributes = blue, .links = std::move(links)})
        .value();
}

TextAttributes linkTo(std::string_view target)
{
    return blue.setting(TextAttribute::link, URL::make(target).value());
}

/// Where the image of that height stands in a font of that cap height.
double lowerSide(double capHeight, double height)
{
    const TextAttributes attributes{{TextAttribute::font, Font({.capHeight = capHeight})}};
    const auto text = makeAttributedString(
        "[]", {.normalAttributes = attributes, .images = {Image({1, height})}});
    return text->attributes(0).get(TextAttribute::attachment).value().bounds.origin.y;
}

/// An image as it is placed in `plain`, whose capitals are 12 high.
NSAttributedString placed(const Image& image, double y)
{
    return NSAttributedString(NSTextAttachment{.image = image, .bounds = {{0, y}, image.size()}});
}

} // namespace

TEST(EmphasisMarkup, PutsBracketsIntoAttributesOfTheirOwn)
{
    //! [Emphasising]
    const TextAttributes bold{{TextAttribute::font, Font::boldSystem(17)}};
    const auto text = makeAttributedString("Ring [now]!", {.markdownAttributes = bold});

    ASSERT_TRUE(text);
    EXPECT_EQ(text->string(), "Ring now!");
    EXPECT_EQ(text->runs()[1].range, (NSRange{.location = 5, .length = 3}));
    EXPECT_EQ(text->runs()[1].attributes, bold);
    //! [Emphasising]
}

TEST(EmphasisMarkup, LeavesATextWithoutBracketsOneStretch)
{
    EXPECT_EQ(emphasised("no brackets"), NSAttributedString("no brackets", plain));
    EXPECT_EQ(emphasised(""), NSAttributedString());
}

TEST(EmphasisMarkup, PutsNothingBetweenNeighbours)
{
    EXPECT_EQ(emphasised("[a][b]"), NSAttributedString("ab", strong));
    EXPECT_EQ(emphasised("[a] [b]"), joined({{"a", strong}, {" ", plain}, {"b", strong}}));
}

TEST(EmphasisMarkup, DropsEmptyBrackets)
{
    EXPECT_EQ(emphasised("[]"), NSAttributedString());
    EXPECT_EQ(emphasised("a[]b"), NSAttributedString("ab", plain));
}

TEST(EmphasisMarkup, LeavesBracketsWithoutPartner)
{
    for (const auto* text : {"[", "]", "][", "a [b", "a] b", "]a[b", "[[[", "]]]"})
        EXPECT_EQ(emphasised(text), NSAttributedString(text, plain)) << text;
    EXPECT_EQ(emphasised("[a]]"), joined({{"a", strong}, {"]", plain}}));
    EXPECT_EQ(emphasised("[a] [b"), joined({{"a", strong}, {" [b", plain}}));
}

TEST(EmphasisMarkup, ClosesAtTheFirstBracketThatCloses)
{
    EXPECT_EQ(emphasised("[[a]"), NSAttributedString("[a", strong));
    EXPECT_EQ(emphasised("[[a]]"), joined({{"[a", strong}, {"]", plain}}));
    EXPECT_EQ(emphasised("[a[b]c]"), joined({{"a[b", strong}, {"c]", plain}}));
}

TEST(EmphasisMarkup, DoesNotReachBeyondALine)
{
    for (const std::string end : lineEnds) {
        const auto text = "[a" + end + "b] [c]";
        EXPECT_EQ(emphasised(text), joined({{"[a" + end + "b] ", plain}, {"c", strong}})) << end;
    }
    EXPECT_EQ(emphasised("[a\n[b]\n]"), joined({{"[a\n", plain}, {"b", strong}, {"\n]", plain}}));
}

TEST(EmphasisMarkup, ReachesBeyondCharactersThatLookLikeALineEnd)
{
    for (const std::string_view character : {"\t", "\u0084", "\u0086", "\u2027", "\u202A", "\u00C5", "\0"})
        EXPECT_EQ(emphasised("[a" + std::string(character) + "b]"),
            NSAttributedString("a" + std::string(character) + "b", strong));
}

TEST(EmphasisMarkup, CountsEmojiAndCombiningCharactersInUTF16)
{
    const auto text = emphasised("👩‍🌾[e\u0301👍🏽]ï");

    EXPECT_EQ(text, joined({{"👩‍🌾", plain}, {"e\u0301👍🏽", strong}, {"ï", plain}}));
    EXPECT_EQ(text.runs()[1].range, (NSRange{.location = 5, .length = 6}));
    EXPECT_EQ(emphasised("[a]\u0301"), joined({{"a", strong}, {"\u0301", plain}}))
        << "a mark glued to a bracket";
    EXPECT_EQ(emphasised("[\u0301]"), NSAttributedString("\u0301", strong));
}

TEST(EmphasisMarkup, ReplacesWhatIsNoUTF8)
{
    EXPECT_EQ(emphasised("a\xFF[\xE2\x82]"), joined({{"a\uFFFD", plain}, {"\uFFFD", strong}}));
    EXPECT_EQ(emphasised("[\xC2]"), NSAttributedString("\uFFFD", strong)) << "the front of a line end";
}

TEST(EmphasisMarkup, HalvesPercentSigns)
{
    EXPECT_EQ(emphasised("100 %% [50%%]"), joined({{"100 % ", plain}, {"50%", strong}}));
    EXPECT_EQ(emphasised("%%%%"), NSAttributedString("%%", plain));
    EXPECT_EQ(emphasised("%%%"), NSAttributedString("%%", plain));
}

TEST(EmphasisMarkup, LeavesEveryOtherPercentSign)
{
    for (const auto* text : {"%", "5 %", "%@", "%d %s", "%1$@", "%[a"})
        EXPECT_EQ(emphasised(text), NSAttributedString(text, plain)) << text;
}

TEST(EmphasisMarkup, MergesWhatLooksAlike)
{
    EXPECT_EQ(makeAttributedString("a[b]c", EmphasisMarkup{}), NSAttributedString("abc"));
}

TEST(EmphasisMarkup, TakesLinearTimeForBracketsThatAreNeverClosed)
{
    const std::string opening(1'000'000, '[');
    const auto start = std::chrono::steady_clock::now();

    EXPECT_EQ(emphasised(opening).string(), opening);
    EXPECT_EQ(linked(opening).string(), opening);
    EXPECT_EQ(linked("](a" + opening + ")").string(), "](a" + opening + ")");
    EXPECT_EQ(linked("[a](b)](" + opening + ")").string(), "a](" + opening + ")");

    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10))
        << "quadratic time is minutes";
}

TEST(EmphasisMarkup, TakesALongTextInOnePairOfBrackets)
{
    const std::string inner(1'000'000, 'x');

    EXPECT_EQ(emphasised("[" + inner + "]"), NSAttributedString(inner, strong));
}

TEST(ImageMarkup, PutsImagesIntoTheMiddleOfCapitals)
{
    //! [Placing images]
    const TextAttributes body{{TextAttribute::font, Font({.size = 17, .capHeight = 12})}};
    const Image bird({.width = 30, .height = 24});
    const auto text = makeAttributedString("A [bird] again", {.normalAttributes = body, .images = {bird}});

    ASSERT_TRUE(text);
    EXPECT_EQ(text->string(), "A \uFFFC again");
    EXPECT_EQ(text->attributes(2).get(TextAttribute::attachment),
        (NSTextAttachment{.image = bird, .bounds = {{0, -6}, {30, 24}}}));
    //! [Placing images]
}

TEST(ImageMarkup, TakesTheImagesInOrder)
{
    const Image first({1, 12});
    const Image second({2, 12});

    NSMutableAttributedString wanted(NSAttributedString("a ", plain));
    wanted.append(placed(first, 0));
    wanted.append(placed(second, 0));
    wanted.append(" b", plain);
    EXPECT_EQ(illustrated("a [1][2] b", {first, second}), wanted.attributedString());
}

TEST(ImageMarkup, PutsEqualNeighboursIntoOneStretch)
{
    const auto text = illustrated("[a][b]", {Image({1, 12}), Image({1, 12})});

    EXPECT_EQ(text.string(), "\uFFFC\uFFFC");
    EXPECT_EQ(text.runs().size(), 1U);
    EXPECT_EQ(text.attributes(1), text.attributes(0));
}

TEST(ImageMarkup, GivesAnImageNoOtherAttributes)
{
    EXPECT_EQ(illustrated("[]", {Image({1, 12})}).attributes(0).size(), 1U);
}

TEST(ImageMarkup, DropsBracketsForWhichThereIsNoImage)
{
    NSMutableAttributedString wanted(placed(Image({1, 12}), 0));
    wanted.append("bd", plain);

    EXPECT_EQ(illustrated("[a]b[c]d", {Image({1, 12})}), wanted.attributedString());
    EXPECT_EQ(illustrated("a[b]c", {}), NSAttributedString("ac", plain));
}

TEST(ImageMarkup, LeavesOutImagesForWhichThereAreNoBrackets)
{
    EXPECT_EQ(illustrated("a[", {Image({1, 1})}), NSAttributedString("a[", plain));
    EXPECT_EQ(illustrated("[]", {Image({1, 12}), Image({2, 2})}), placed(Image({1, 12}), 0));
}

TEST(ImageMarkup, RoundsTwiceAndAwayFromZero)
{
    EXPECT_EQ(lowerSide(12, 24), -6);
    EXPECT_EQ(lowerSide(11.9, 24), -6) << "-12.1 becomes -12";
    EXPECT_EQ(lowerSide(11.4, 24), -7) << "-12.6 becomes -13, and half of that -6.5";
    EXPECT_EQ(lowerSide(12.5, 24), -6) << "-11.5 becomes -12";
    EXPECT_EQ(lowerSide(24, 11), 7) << "6.5 becomes 7";
    EXPECT_EQ(lowerSide(12, 11), 1);
    EXPECT_EQ(lowerSide(12, 11.6), 0);
    EXPECT_EQ(lowerSide(12, 12), 0);
}

TEST(ImageMarkup, CountsCapitalsAsZeroWithoutAFont)
{
    const Image image({4, 10});

    EXPECT_EQ(makeAttributedString("[]", {.images = {image}}), placed(image, -5));
}

TEST(ImageMarkup, HalvesPercentSigns)
{
    EXPECT_EQ(illustrated("5 %%[]", {}), NSAttributedString("5 %", plain));
}

TEST(ImageMarkup, DoesNotReachBeyondALine)
{
    for (const std::string end : lineEnds)
        EXPECT_EQ(illustrated("[" + end + "]", {Image({1, 1})}), NSAttributedString("[" + end + "]", plain));
}

TEST(LinkMarkup, LinksToTheTargetsThatItIsGiven)
{
    //! [Linking]
    const auto rules = "https://hut.example/rules"_url;
    const TextAttributes blueLetters{{TextAttribute::foregroundColor, Color::rgb(0x0000FF)}};
    const auto text = makeAttributedString(
        "Read [the rules](%@)!", {.linkAttributes = blueLetters, .links = {rules}});

    ASSERT_TRUE(text);
    EXPECT_EQ(text->string(), "Read the rules!");
    EXPECT_EQ(text->attributes(5).get(TextAttribute::link), rules);
    EXPECT_EQ(text->attributes(5).get(TextAttribute::foregroundColor), Color::rgb(0x0000FF));
    EXPECT_EQ(text->attributes(0), TextAttributes());
    //! [Linking]
}

TEST(LinkMarkup, LeavesATextWithoutLinksOneStretch)
{
    EXPECT_EQ(linked("no link"), NSAttributedString("no link", plain));
    EXPECT_EQ(linked(""), NSAttributedString());
}

TEST(LinkMarkup, LeavesWhatIsNoWholeLink)
{
    for (const auto* text :
        {"[a]", "[a] (b)", "[a](b", "(b)", "[a(b)", "a](b)", "[a]\n(b)", "[a](\n)", "[a](b]"})
        EXPECT_EQ(linked(text), NSAttributedString(text, plain)) << text;
}

TEST(LinkMarkup, TakesTargetsThatStandInTheText)
{
    EXPECT_EQ(linked("[a](http://a.example)[b](c)"),
        joined({{"a", linkTo("http://a.example")}, {"b", linkTo("c")}}));
}

TEST(LinkMarkup, FillsPlaceholdersInOrder)
{
    EXPECT_EQ(linked("[a](%@) [b](%@)", {"http://a"_url, "http://b"_url}),
        joined({{"a", linkTo("http://a")}, {" ", plain}, {"b", linkTo("http://b")}}));
}

TEST(LinkMarkup, FillsPlaceholdersAnywhere)
{
    EXPECT_EQ(linked("%@ [%@](%@)", {"http://a"_url, "http://b"_url, "http://c"_url}),
        joined({{"http://a ", plain}, {"http://b", linkTo("http://c")}}));
}

TEST(LinkMarkup, WritesNullForALinkThatIsMissing)
{
    EXPECT_EQ(linked("%@"), NSAttributedString("(null)", plain));
    // The target ends at the first parenthesis, which is that of the null.
    EXPECT_EQ(linked("[a](%@) [b](%@)", {"http://a"_url}),
        joined({{"a", linkTo("http://a")}, {" ", plain}, {"b", linkTo("(null")}, {")", plain}}));
}

TEST(LinkMarkup, LeavesOutSurplusLinks)
{
    EXPECT_EQ(
        linked("[a](%@)", {"http://a"_url, "http://b"_url}), NSAttributedString("a", linkTo("http://a")));
    EXPECT_EQ(linked("a", {"http://a"_url}), NSAttributedString("a", plain));
}

TEST(LinkMarkup, HalvesPercentSignsAndLeavesTheOthers)
{
    EXPECT_EQ(linked("5 %% %d %", {"http://a"_url}), NSAttributedString("5 % %d %", plain));
    EXPECT_EQ(linked("%%@", {"http://a"_url}), NSAttributedString("%@", plain));
    EXPECT_EQ(linked("%%%@", {"http://a"_url}), NSAttributedString("%http://a", plain));
    EXPECT_EQ(linked("%1$@", {"http://a"_url}), NSAttributedString("%1$@", plain));
}

TEST(LinkMarkup, LeavesPercentSignsAndPlaceholdersInLinksAlone)
{
    EXPECT_EQ(linked("[a](%@)%@", {"http://a/%40%25?b=%20"_url, "http://b"_url}),
        joined({{"a", linkTo("http://a/%40%25?b=%20")}, {"http://b", plain}}));
}

TEST(LinkMarkup, EndsATargetAtItsFirstParenthesis)
{
    EXPECT_EQ(linked("[a](%@)", {"http://a/b_(c)_d"_url}),
        joined({{"a", linkTo("http://a/b_(c")}, {"_d)", plain}}));
}

TEST(LinkMarkup, TakesBracketsInFrontOfALinkForPartOfIt)
{
    EXPECT_EQ(linked("[a] [b](c)"), NSAttributedString("a] [b", linkTo("c")));
    EXPECT_EQ(linked("[[a](b)"), NSAttributedString("[a", linkTo("b")));
    EXPECT_EQ(linked("[a](b](c)"), NSAttributedString("a", blue)) << "b](c is no URL";
}

TEST(LinkMarkup, KeepsTheLookWhereTheTargetIsNoURL)
{
    EXPECT_EQ(linked("[a](b c)"), NSAttributedString("a", blue));
    EXPECT_EQ(linked("[a](é)"), NSAttributedString("a", blue));
    EXPECT_EQ(linked("[a](%41)"), NSAttributedString("a", linkTo("%41"))) << "no placeholder";
    EXPECT_EQ(linked("[a](%4)"), NSAttributedString("a", blue));
}

TEST(LinkMarkup, TakesTheEmptyTargetForTheRelativeURLThatItIs)
{
    EXPECT_EQ(linked("[a]()"), NSAttributedString("a", linkTo("")));
}

TEST(LinkMarkup, ReplacesALinkAmongTheAttributes)
{
    const auto given = blue.setting(TextAttribute::link, "http://given"_url);

    EXPECT_EQ(makeAttributedString("[a](http://a)", {.linkAttributes = given, .links = {}}),
        NSAttributedString("a", linkTo("http://a")));
    EXPECT_EQ(makeAttributedString("[a](no url)", {.linkAttributes = given, .links = {}}),
        NSAttributedString("a", blue))
        << "not to another place than the text says";
}

TEST(LinkMarkup, DropsALinkWithoutVisibleText)
{
    EXPECT_EQ(linked("a[](http://a)b"), NSAttributedString("ab", plain));
}

TEST(LinkMarkup, DoesNotReachBeyondALine)
{
    for (const std::string end : lineEnds) {
        EXPECT_EQ(linked("[a" + end + "](b)"), NSAttributedString("[a" + end + "](b)", plain));
        EXPECT_EQ(linked("[a](b" + end + ")"), NSAttributedString("[a](b" + end + ")", plain));
        EXPECT_EQ(linked("[a" + end + "[b](c)"), joined({{"[a" + end, plain}, {"b", linkTo("c")}}));
    }
}

TEST(LinkMarkup, CountsEmojiAndCombiningCharactersInUTF16)
{
    const auto text = linked("😀[e\u0301😀](%@)é", {"http://a"_url});

    EXPECT_EQ(text, joined({{"😀", plain}, {"e\u0301😀", linkTo("http://a")}, {"é", plain}}));
    EXPECT_EQ(text.runs()[1].range, (NSRange{.location = 2, .length = 4}));
}

TEST(LinkMarkup, ReplacesWhatIsNoUTF8)
{
    EXPECT_EQ(linked("\xFF[\xFF](a)"), joined({{"\uFFFD", plain}, {"\uFFFD", linkTo("a")}}));
    EXPECT_EQ(linked("[a](\xFF)"), NSAttributedString("a", blue));
}

TEST(Attr, HasTwoAttributes)
{
    EXPECT_EQ(attr("a", Color::black(), Font::system(1)),
        NSAttributedString(
            "a", {{TextAttribute::foregroundColor, Color::black()}, {TextAttribute::font, Font::system(1)}}));
    EXPECT_EQ(attr("", Color::black(), Font::system(1)), NSAttributedString());
}

TEST(AttributedSum, PutsOneBehindTheOther)
{
    //! [Adding texts]
    const auto warning = attr("Adders: ", Color::rgb(0xCC0000), Font::boldSystem(17));
    const auto advice = attr("keep to the path", Color::black(), Font::system(17));
    const auto text = warning + advice;

    EXPECT_EQ(text.string(), "Adders: keep to the path");
    EXPECT_EQ(text.attributes(0).get(TextAttribute::foregroundColor), Color::rgb(0xCC0000));
    EXPECT_EQ(text.attributes(8), advice.attributes(0));
    //! [Adding texts]
    EXPECT_EQ(warning.string(), "Adders: ");
}

TEST(AttributedSum, ChangesNothingWithTheEmptyText)
{
    const NSAttributedString empty;
    const NSAttributedString text("x", strong);

    EXPECT_EQ(empty + text, text);
    EXPECT_EQ(text + empty, text);
    EXPECT_EQ(empty + empty, empty);
}

TEST(AttributedSum, MergesWhatLooksAlikeAcrossTheSeam)
{
    EXPECT_EQ(
        NSAttributedString("a", strong) + NSAttributedString("b", strong), NSAttributedString("ab", strong));
    EXPECT_EQ((NSAttributedString("a", strong) + NSAttributedString("b", blue)).runs().size(), 2U);
}
