#include "Report/ShownText.hpp"

#include "Orrenby/Platform/Coding/Decodable.hpp"
#include "Orrenby/Platform/Coding/Encodable.hpp"
#include "Terminal/Text.hpp"
#include <array>
#include <cstdio>
#include <optional>
#include <string_view>

namespace fieldbook {

namespace {

std::string codePoint(char32_t character)
{
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "U+%04X", static_cast<unsigned>(character));
    return text.data();
}

/// What is wrong with a text that was decoded, apart from those characters that it may hold.
std::optional<std::string> problemIn(std::string_view text, std::string_view allowed)
{
    if (text.find_first_not_of(" \t\n") == std::string_view::npos)
        return "Expected a text but found an empty one";
    while (!text.empty()) {
        const auto first = text.front();
        const auto character = takeCharacter(text);
        if (character && !isPrintable(*character) && allowed.find(first) == std::string_view::npos)
            return "Expected a text that can be shown but found " + codePoint(*character) + " in it";
    }
    return {};
}

std::string checkedText(const orrenby::Decoder& decoder, std::string_view allowed)
{
    auto text = decoder.singleValueContainer().decode<std::string>();
    if (const auto problem = problemIn(text, allowed))
        throw orrenby::DecodingError::dataCorruptedError(decoder, *problem);
    return text;
}

} // namespace

Line Line::init(const orrenby::Decoder& decoder) { return checkedText(decoder, ""); }

void Line::encode(const orrenby::Encoder& encoder) const { encoder.singleValueContainer().encode(text); }

Passage Passage::init(const orrenby::Decoder& decoder) { return checkedText(decoder, "\t\n"); }

void Passage::encode(const orrenby::Encoder& encoder) const { encoder.singleValueContainer().encode(text); }

} // namespace fieldbook
