#include "Orrenby/Platform/Text/UTF16.hpp"

#include <gmock/gmock.h>
#include <string>

using namespace orrenby;

namespace {

/// One of each length: 1, 2, 3 and 4 bytes; 1, 1, 1 and 2 units.
constexpr std::string_view mixed = "aé€😀b";

std::optional<NSRange> range(std::size_t location, std::size_t length)
{
    return NSRange{.location = location, .length = length};
}

/// Long enough for several entries of the table, with every length of scalar value at every offset.
std::string longText()
{
    std::string text;
    for (int count = 0; count < 97; ++count)
        text += "xyé€z😀";
    return text;
}

} // namespace

TEST(UTF16View, ConvertsRanges)
{
    //! [Converting ranges]
    const std::string caption = "Hello 👋 there";
    const UTF16View view(caption);

    EXPECT_EQ(view.slice({.location = 6, .length = 2}), "👋"); // two units, four bytes
    EXPECT_EQ(view.range(std::string_view(caption).substr(caption.find("there"))), range(9, 5));
    EXPECT_EQ(view.slice({.location = 7, .length = 1}), std::nullopt); // half of a pair
    //! [Converting ranges]
}

TEST(UTF16View, CountsUnits)
{
    EXPECT_EQ(utf16Length(""), 0U);
    EXPECT_EQ(utf16Length("plain text of more than one word"), 32U);
    EXPECT_EQ(utf16Length(mixed), 6U);
    EXPECT_EQ(UTF16View(mixed).length(), 6U);
    EXPECT_EQ(UTF16View(mixed).fullRange(), range(0, 6));
}

TEST(UTF16View, HasTwoUnitsForACharacterOutsideTheBasicPlane) { EXPECT_EQ(utf16Length("\U0001F600"), 2U); }

TEST(UTF16View, CountsWhatIsNoUTF8AsItsReplacement)
{
    EXPECT_EQ(utf16Length("a\xF0\x9F\x99z"), 3U);
    EXPECT_EQ(utf16Length("\xFF\xFF"), 2U);
    EXPECT_EQ(utf16FromUTF8("a\xF0\x9F\x99z"), u"a\uFFFDz");
}

TEST(UTF16View, GivesEveryPlaceItsCounterpart)
{
    const UTF16View view(mixed);
    const std::pair<std::size_t, std::size_t> places[] = {{0, 0}, {1, 1}, {3, 2}, {6, 3}, {10, 5}, {11, 6}};

    for (const auto& [bytes, units] : places) {
        EXPECT_EQ(view.byteOffset(units), bytes);
        EXPECT_EQ(view.utf16Offset(bytes), units);
    }
}

TEST(UTF16View, CountsASCIIInBytes)
{
    const UTF16View view("plain");

    for (const std::size_t place : {0U, 3U, 5U}) {
        EXPECT_EQ(view.byteOffset(place), place);
        EXPECT_EQ(view.utf16Offset(place), place);
    }
    EXPECT_EQ(view.byteOffset(6), std::nullopt);
    EXPECT_EQ(view.utf16Offset(6), std::nullopt);
}

TEST(UTF16View, HasNoPlaceInsideAScalarValue)
{
    const UTF16View view(mixed);

    EXPECT_EQ(view.byteOffset(4), std::nullopt);
    for (const std::size_t inside : {2U, 4U, 5U, 7U, 8U, 9U})
        EXPECT_EQ(view.utf16Offset(inside), std::nullopt) << inside;
}

TEST(UTF16View, HasNoPlaceBeyondTheEnd)
{
    for (const auto text : {std::string_view("abc"), mixed, std::string_view()}) {
        const UTF16View view(text);
        EXPECT_EQ(view.byteOffset(view.length() + 1), std::nullopt);
        EXPECT_EQ(view.utf16Offset(text.size() + 1), std::nullopt);
        EXPECT_EQ(view.slice({.location = view.length() + 1, .length = 0}), std::nullopt);
        EXPECT_EQ(view.slice({.location = 0, .length = view.length() + 1}), std::nullopt);
        EXPECT_EQ(view.range(0, text.size() + 1), std::nullopt);
    }
}

TEST(UTF16View, RefusesRangesWhoseEndOverflows)
{
    constexpr auto highest = static_cast<std::size_t>(-1);
    const UTF16View view(mixed);

    EXPECT_EQ(view.slice({.location = 1, .length = highest}), std::nullopt);
    EXPECT_EQ(view.slice({.location = highest, .length = 2}), std::nullopt);
    EXPECT_EQ(view.range(1, highest), std::nullopt);
    EXPECT_EQ(view.range(highest, 2), std::nullopt);
}

TEST(UTF16View, GivesEmptyRangesAtBothEnds)
{
    const UTF16View view(mixed);

    EXPECT_EQ(view.slice({.location = 0, .length = 0}), "");
    EXPECT_EQ(view.slice({.location = 6, .length = 0}), "");
    EXPECT_EQ(view.range(11, 0), range(6, 0));
    EXPECT_EQ(UTF16View("").slice({.location = 0, .length = 0}), "");
}

TEST(UTF16View, FindsAPieceByItsAddressOnly)
{
    const std::string text(mixed);
    const UTF16View view(text);

    EXPECT_EQ(view.range(std::string_view(text).substr(6, 4)), range(3, 2));
    EXPECT_EQ(view.range(std::string_view(text).substr(6, 3)), std::nullopt);
    EXPECT_EQ(view.range(std::string("b")), std::nullopt);
    EXPECT_EQ(view.range(std::string_view()), std::nullopt);
}

TEST(UTF16View, AgreesWithAWalkThroughALongText)
{
    const auto text = longText();
    const UTF16View view(text);
    std::size_t units = 0;

    for (std::size_t bytes = 0; bytes < text.size(); ++bytes) {
        const bool isInside = (static_cast<unsigned char>(text[bytes]) & 0xC0U) == 0x80U;
        ASSERT_EQ(view.utf16Offset(bytes), isInside ? std::nullopt : std::optional(units)) << bytes;
        if (isInside)
            continue;
        ASSERT_EQ(view.byteOffset(units), bytes);
        const bool isPair = static_cast<unsigned char>(text[bytes]) >= 0xF0U;
        if (isPair) {
            ASSERT_EQ(view.byteOffset(units + 1), std::nullopt);
        }
        units += isPair ? 2 : 1;
    }
    EXPECT_EQ(view.length(), units);
    EXPECT_EQ(view.byteOffset(units), text.size());
}

TEST(UTF16View, KeepsThePlacesOfTextThatIsNoUTF8)
{
    constexpr std::string_view text = "é\xFF\xE2\x82z";
    const UTF16View view(text);

    EXPECT_EQ(view.length(), 4U);
    EXPECT_EQ(view.slice({.location = 1, .length = 2}), "\xFF\xE2\x82");
    EXPECT_EQ(view.utf16Offset(4), std::nullopt);
    EXPECT_EQ(UTF16View("\xFF\xFE").slice({.location = 1, .length = 1}), "\xFE");
}

TEST(UTF16Text, CarriesTextThereAndBack)
{
    EXPECT_EQ(utf16FromUTF8(mixed), u"aé€😀b");
    EXPECT_EQ(utf8FromUTF16(u"aé€😀b"), mixed);
    EXPECT_EQ(utf8FromUTF16(utf16FromUTF8(longText())), longText());
    EXPECT_EQ(utf16FromUTF8(""), u"");
    EXPECT_EQ(utf8FromUTF16(u""), "");
}

TEST(UTF16Text, CarriesTheFirstAndTheLastOfEachLength)
{
    for (const auto* text : {"\x7F", "\u0080", "\u07FF", "\u0800", "\uFFFF", "\U00010000", "\U0010FFFF"})
        EXPECT_EQ(utf8FromUTF16(utf16FromUTF8(text)), text);
}

TEST(UTF16Text, ReplacesSurrogatesWithoutAPartner)
{
    EXPECT_EQ(utf8FromUTF16(std::u16string{0xD83D}), "\uFFFD");
    EXPECT_EQ(utf8FromUTF16(std::u16string{0xDE00, u'a'}), "\uFFFDa");
    EXPECT_EQ(utf8FromUTF16(std::u16string{0xD83D, 0xD83D, 0xDE00}), "\uFFFD😀");
}
