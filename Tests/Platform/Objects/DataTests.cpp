#include "Orrenby/Platform/Objects/Data.hpp"

#include <gmock/gmock.h>

using namespace orrenby;

TEST(Data, CarriesTextThereAndBack)
{
    const auto data = dataFromText("Zoë");

    EXPECT_EQ(data.size(), 4U);
    EXPECT_EQ(textFromData(data), "Zoë");
}

TEST(Data, TakesEmptyText)
{
    EXPECT_EQ(dataFromText(""), Data());
    EXPECT_EQ(textFromData(Data()), "");
}

TEST(Data, KeepsNULsAndAByteOrderMark)
{
    const auto text = std::string("\xEF\xBB\xBF"
                                  "a\0b",
        6);

    EXPECT_EQ(textFromData(dataFromText(text)), text);
}

TEST(Data, GivesNoTextForInvalidUTF8)
{
    EXPECT_EQ(textFromData(Data{std::byte(0xFF)}), std::nullopt);
    EXPECT_EQ(textFromData(dataFromText("long enough text \x80 with a stray byte")), std::nullopt);
}

TEST(Data, AcceptsTheLimitsOfEachSequenceLength)
{
    for (const auto* text : {"", "\x7F", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF",
             "\xEE\x80\x80", "\xEF\xBF\xBF", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"})
        EXPECT_TRUE(isValidUTF8(text)) << testing::PrintToString(text);
}

TEST(Data, RejectsOverlongFormsSurrogatesAndWhatIsTooLarge)
{
    for (const auto* text : {"\xC0\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF", "\xED\xA0\x80",
             "\xED\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFE", "\xFF"})
        EXPECT_FALSE(isValidUTF8(text)) << testing::PrintToString(text);
}

TEST(Data, RejectsStrayAndMissingContinuations)
{
    for (const auto* text : {"\x80", "\xBF", "\xC2",
             "\xC2"
             "a",
             "\xE2\x82",
             "\xE2\x82"
             "a",
             "\xF0\x9F\x99",
             "\xF0\x9F\x99"
             "a"})
        EXPECT_FALSE(isValidUTF8(text)) << testing::PrintToString(text);
}

TEST(Data, FindsAnInvalidByteAtEveryPlaceOfALongText)
{
    const std::string text(40, 'a');

    for (std::size_t place = 0; place < text.size(); ++place) {
        auto broken = text;
        broken[place] = '\xFF';
        EXPECT_FALSE(isValidUTF8(broken)) << "byte " << place;
    }
}
