#include "Orrenby/Platform/Text/Hexadecimal.hpp"

#include <array>
#include <cstdio>
#include <gmock/gmock.h>

using namespace orrenby;

namespace {

Data everyByte()
{
    Data bytes;
    for (unsigned value = 0; value < 256; ++value)
        bytes.push_back(static_cast<std::byte>(value));
    return bytes;
}

std::string printed(std::span<const std::byte> bytes)
{
    std::string text;
    for (const std::byte byte : bytes) {
        std::array<char, 3> digits{};
        std::snprintf(digits.data(), digits.size(), "%02x", std::to_integer<unsigned>(byte));
        text += digits.data();
    }
    return text;
}

} // namespace

TEST(Hexadecimal, WritesBytesAsDigits)
{
    //! [Writing bytes as digits]
    const Data bytes{std::byte(0x00), std::byte(0xAB)};

    EXPECT_EQ(hexadecimalText(bytes), "00ab");
    EXPECT_EQ(bytesFromHexadecimal("00AB"), bytes);
    //! [Writing bytes as digits]
}

TEST(Hexadecimal, GivesEmptyTextForNoBytes)
{
    EXPECT_EQ(hexadecimalText({}), "");
    EXPECT_EQ(bytesFromHexadecimal(""), Data());
}

TEST(Hexadecimal, WritesEveryByteAsPrintfDoes)
{
    EXPECT_EQ(hexadecimalText(everyByte()), printed(everyByte()));
}

TEST(Hexadecimal, ReadsWhatItWrote)
{
    EXPECT_EQ(bytesFromHexadecimal(hexadecimalText(everyByte())), everyByte());
}

TEST(Hexadecimal, ReadsNothingFromAnOddNumberOfDigits)
{
    EXPECT_EQ(bytesFromHexadecimal("a"), std::nullopt);
    EXPECT_EQ(bytesFromHexadecimal("00abc"), std::nullopt);
}

TEST(Hexadecimal, ReadsNothingFromOtherCharacters)
{
    for (const auto* text : {"0x", "g0", "0G", " 1", "1 ", "-1", "\xFF\xFF", "/0", ":0", "@0", "`0"})
        EXPECT_EQ(bytesFromHexadecimal(text), std::nullopt) << text;
    EXPECT_EQ(bytesFromHexadecimal(std::string_view("0\0", 2)), std::nullopt);
}
