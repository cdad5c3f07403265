#include "Orrenby/Platform/Text/DataDetectorText.hpp"

#include "Orrenby/Platform/Text/UTF8.hpp"
#include <iterator>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

struct Block {
    char32_t first;
    char32_t last;
};

/// Beyond ASCII, what is no part of a word.
constexpr Block blocksBetweenWords[] = {
    {0x0080, 0x00A9}, // controls, no-break space, signs
    {0x00AB, 0x00B4},
    {0x00B6, 0x00B9},
    {0x00BB, 0x00BF},
    {0x00D7, 0x00D7},
    {0x00F7, 0x00F7},
    {0x037E, 0x037E},
    {0x0387, 0x0387}, // Greek question mark, raised dot
    {0x055A, 0x055F},
    {0x0589, 0x058F}, // Armenian punctuation
    {0x05BE, 0x05BE},
    {0x05C0, 0x05C0},
    {0x05C3, 0x05C3}, // Hebrew punctuation
    {0x05F3, 0x05F4},
    {0x060C, 0x060D},
    {0x061B, 0x061F}, // Arabic punctuation
    {0x066A, 0x066D},
    {0x06D4, 0x06D4},
    {0x0964, 0x0965},
    {0x0E3F, 0x0E3F},
    {0x1680, 0x1680},
    {0x2000, 0x206F}, // spaces and punctuation
    {0x20A0, 0x20CF}, // currencies
    {0x2100, 0x214F}, // signs made of letters
    {0x2190, 0x2BFF}, // arrows, mathematics, boxes, pictures
    {0x2E00, 0x2E7F}, // more punctuation
    {0x3000, 0x3004},
    {0x3008, 0x3020},
    {0x3030, 0x3030},
    {0x303D, 0x303D},
    {0x30FB, 0x30FB},
    {0xD800, 0xF8FF}, // surrogates, private use
    {0xFE10, 0xFE1F},
    {0xFE30, 0xFE6F},
    {0xFEFF, 0xFEFF},
    {0xFF01, 0xFF0F},
    {0xFF1A, 0xFF20},
    {0xFF3B, 0xFF40},
    {0xFF5B, 0xFF65}, // wide punctuation
    {0xFFE0, 0xFFFF},
    {0x1F000, 0x1FAFF}, // pictures
    {0xE0000, 0x10FFFF},
};

} // namespace

bool isWordScalar(char32_t value) noexcept
{
    if (value < 128)
        return (detectorClasses[value] & static_cast<std::uint8_t>(DetectorClass::Word)) != 0;
    std::size_t low = 0, high = std::size(blocksBetweenWords);
    while (low < high) {
        const auto middle = (low + high) / 2;
        if (value > blocksBetweenWords[middle].last)
            low = middle + 1;
        else
            high = middle;
    }
    return low == std::size(blocksBetweenWords) || value < blocksBetweenWords[low].first;
}

char32_t loweredScalar(char32_t value) noexcept
{
    if (value < 0x80)
        return value >= 'A' && value <= 'Z' ? value + 32 : value;
    if (value < 0x100)
        return value >= 0xC0 && value <= 0xDE && value != 0xD7 ? value + 32 : value;
    if (value < 0x180) { // pairs, capital first; their parity changes twice
        if (value == 0x130)
            return 'i';
        const bool isOddFirst = (value >= 0x139 && value <= 0x148) || value >= 0x179;
        const bool isSingle = value == 0x131 || value == 0x138 || value == 0x149 || value >= 0x17F;
        if (value == 0x178)
            return 0xFF;
        return !isSingle && (value % 2 == 1) == isOddFirst ? value + 1 : value;
    }
    switch (value) { // Greek with accents
    case 0x386:
        return 0x3AC;
    case 0x388:
    case 0x389:
    case 0x38A:
        return value + 37;
    case 0x38C:
        return 0x3CC;
    case 0x38E:
    case 0x38F:
        return value + 63;
    default:
        break;
    }
    if ((value >= 0x391 && value <= 0x3AB) || (value >= 0x410 && value <= 0x42F))
        return value != 0x3A2 ? value + 32 : value; // a final sigma has no capital of its own
    if (value >= 0x400 && value <= 0x40F)
        return value + 80;
    if (value >= 0x460 && value <= 0x4BF && (value < 0x482 || value > 0x489))
        return value % 2 == 0 ? value + 1 : value;
    return value;
}

DetectorScalar DetectorText::scalarAt(std::size_t place) const noexcept
{
    if (place >= size())
        return {};
    const auto scalar = firstUTF8Scalar(m_text.substr(place));
    m_reads += scalar.length;
    return {scalar.value, scalar.length};
}

DetectorScalar DetectorText::scalarBefore(std::size_t place) const noexcept
{
    if (place == 0)
        return {};
    const auto scalar = lastUTF8Scalar(m_text.substr(0, place));
    m_reads += scalar.length;
    return {scalar.value, scalar.length};
}

std::size_t DetectorText::blankLengthAt(std::size_t place) const noexcept
{
    const auto byte = at(place);
    if (byte < 0x80)
        return byte == ' ' || byte == '\t' ? 1 : 0;
    const auto scalar = scalarAt(place);
    const auto value = scalar.value;
    return value == 0xA0 || value == 0x202F || (value >= 0x2002 && value <= 0x200A) ? scalar.length : 0;
}

std::size_t DetectorText::dashLengthAt(std::size_t place) const noexcept
{
    const auto byte = at(place);
    if (byte < 0x80)
        return byte == '-' ? 1 : 0;
    const auto scalar = scalarAt(place);
    return scalar.value >= 0x2010 && scalar.value <= 0x2013 ? scalar.length : 0;
}

std::string DetectorText::lowered(DetectorSpan span) const
{
    m_reads += span.end - span.begin;
    std::string result;
    forEachScalar(slice(span), [&](char32_t scalar) { appendUTF8(result, loweredScalar(scalar)); });
    return result;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
