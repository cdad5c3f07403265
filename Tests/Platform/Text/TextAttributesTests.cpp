#include "Orrenby/Platform/Text/TextAttributes.hpp"

#include "Orrenby/Platform/Drawing/Color.hpp"
#include "Orrenby/Platform/Drawing/Font.hpp"
#include "Orrenby/Platform/Net/URL.hpp"
#include <cstdint>
#include <gmock/gmock.h>
#include <string>
#include <type_traits>

using namespace orrenby;
using testing::ElementsAre;

namespace {

constexpr TextAttributeKey<std::int64_t> footnote{"footnote"};
constexpr TextAttributeKey<std::string> footnoteText{"footnote"};
constexpr TextAttributeKey<Any> anything{"anything"};

const TextAttributes underlined{{TextAttribute::underline, true}};

template <class Key, class Value>
concept CanStandUnder = std::is_constructible_v<TextAttributes::Entry, const Key&, Value>;

} // namespace

TEST(TextAttributes, GiveTypedValues)
{
    //! [Describing how a text looks]
    TextAttributes caption{
        {TextAttribute::font, Font::system(13)}, {TextAttribute::foregroundColor, Color::rgb(0x336699)}};
    caption.set(TextAttribute::link, "https://hut.example"_url);

    EXPECT_EQ(caption.get(TextAttribute::font), Font::system(13));
    EXPECT_EQ(caption.get(TextAttribute::underline), std::nullopt);
    EXPECT_EQ(caption.removing(TextAttribute::link).size(), 2U);
    //! [Describing how a text looks]
    EXPECT_EQ(caption.get(TextAttribute::link), "https://hut.example"_url);
}

TEST(TextAttributes, TakeNoValueOfAnotherType)
{
    using Link = TextAttributeKey<URL>;
    using Underline = TextAttributeKey<bool>;

    EXPECT_TRUE((CanStandUnder<Link, URL>));
    EXPECT_FALSE((CanStandUnder<Link, const char*>)) << "a text may be no URL";
    EXPECT_FALSE((CanStandUnder<Link, Color>));
    EXPECT_TRUE((CanStandUnder<Underline, bool>));
    EXPECT_FALSE((CanStandUnder<Underline, const char*>)) << "an address is not true";
    EXPECT_TRUE((CanStandUnder<TextAttributeKey<std::string>, const char*>));
}

TEST(TextAttributes, KeepValuesUnderKeysOfOnesOwn)
{
    const TextAttributes attributes{{footnote, 3}, {anything, "text"}};

    EXPECT_EQ(attributes.get(footnote), 3);
    EXPECT_EQ(attributes.get(anything), Any("text"));
    EXPECT_EQ(attributes.get(TextAttributeKey<int>("footnote")), 3) << "an integer is read in any width";
}

TEST(TextAttributes, GiveNothingForAValueOfAnotherTypeUnderTheSameName)
{
    const TextAttributes attributes{{footnote, 3}};

    EXPECT_EQ(attributes.get(footnoteText), std::nullopt);
    EXPECT_TRUE(attributes.contains(footnoteText));
    EXPECT_EQ(*attributes.find("footnote"), Any(3));
    EXPECT_EQ(attributes.find("other"), nullptr);
}

TEST(TextAttributes, LetTheLastOfSeveralValuesHold)
{
    const TextAttributes attributes{{footnote, 3}, {TextAttribute::underline, true}, {footnote, 4}};

    EXPECT_EQ(attributes.get(footnote), 4);
    EXPECT_THAT(attributes.values().keys(), ElementsAre("footnote", "underline"));
}

TEST(TextAttributes, CanBeEmpty)
{
    const TextAttributes attributes;

    EXPECT_TRUE(attributes.empty());
    EXPECT_EQ(attributes.get(footnote), std::nullopt);
    EXPECT_EQ(attributes, TextAttributes({}));
    EXPECT_EQ(describe(attributes), "[:]");
}

TEST(TextAttributes, AreErasedOneByOne)
{
    auto attributes = underlined;

    EXPECT_FALSE(attributes.erase(footnote));
    EXPECT_TRUE(attributes.erase(TextAttribute::underline));
    EXPECT_FALSE(attributes.erase(TextAttribute::underline));
    EXPECT_EQ(attributes, TextAttributes());
    EXPECT_EQ(attributes.hash(), TextAttributes().hash());
}

TEST(TextAttributes, LeaveCopiesAloneWhenChanged)
{
    auto attributes = underlined;
    const auto copy = attributes;

    attributes.set(footnote, 1);
    attributes.erase(TextAttribute::underline);

    EXPECT_EQ(copy, underlined);
    EXPECT_EQ(attributes, (TextAttributes{{footnote, 1}}));
    EXPECT_EQ(copy.setting(footnote, 2).size(), 2U);
    EXPECT_EQ(copy, underlined);
}

TEST(TextAttributes, MergeWithThoseThatHold)
{
    const TextAttributes others{{TextAttribute::underline, false}, {footnote, 1}};

    EXPECT_EQ(underlined.merging(others), others);
    EXPECT_EQ(others.merging(underlined), (TextAttributes{{TextAttribute::underline, true}, {footnote, 1}}));
    EXPECT_EQ(TextAttributes().merging(underlined), underlined);
    EXPECT_EQ(underlined.merging({}), underlined);
}

TEST(TextAttributes, CompareWithoutRegardToOrder)
{
    const TextAttributes first{{footnote, 1}, {TextAttribute::underline, true}};
    const TextAttributes second{{TextAttribute::underline, true}, {footnote, 1}};

    EXPECT_EQ(first, second);
    EXPECT_EQ(std::hash<TextAttributes>{}(first), std::hash<TextAttributes>{}(second));
    EXPECT_NE(first, underlined);
}

TEST(TextAttributes, Print)
{
    const TextAttributes attributes{
        {TextAttribute::underline, true}, {TextAttribute::font, Font::system(17)}};

    EXPECT_EQ(describe(attributes), R"(["font": Font(System 17.0), "underline": true])");
    EXPECT_EQ(debugDescribe(attributes), describe(attributes));
}
