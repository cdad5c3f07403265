#include "Orrenby/Platform/Text/PercentEncoding.hpp"

#include "Orrenby/Platform/Objects/Data.hpp"
#include "Orrenby/Platform/Text/HexadecimalDigits.hpp"
#include "Orrenby/Platform/Text/UTF8.hpp"
#include <algorithm>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace {

using Outcome = Result<std::string, PercentDecodingError>;

void appendEscaped(std::string& result, std::string_view bytes)
{
    for (const char character : bytes) {
        const auto byte = static_cast<unsigned char>(character);
        result += {'%', "0123456789ABCDEF"[byte / 16], "0123456789ABCDEF"[byte % 16]};
    }
}

/// Escapes the scalar values for which `isEscaped` says so. What stays is taken over in runs.
template <class F> std::optional<std::string> escaping(std::string_view text, F isEscaped)
{
    if (!isValidUTF8(text))
        return std::nullopt;
    std::string result;
    result.reserve(text.size() + text.size() / 4);
    std::size_t kept = 0;
    for (std::size_t place = 0; place < text.size();) {
        const auto scalar = firstUTF8Scalar(text.substr(place));
        if (isEscaped(scalar.value)) {
            result.append(text, kept, place - kept);
            appendEscaped(result, text.substr(place, scalar.length));
            kept = place + scalar.length;
        }
        place += scalar.length;
    }
    result.append(text, kept);
    return result;
}

/// Where in the encoded text the byte stands that became this one of the decoded text.
std::size_t originOf(std::size_t decoded, std::string_view encoded)
{
    std::size_t place = 0;
    for (; decoded > 0; --decoded)
        place += encoded[place] == '%' ? 3 : 1;
    return place;
}

std::size_t validPrefix(std::string_view text)
{
    std::size_t length = 0;
    while (length < text.size()) {
        const auto scalar = firstUTF8Scalar(text.substr(length));
        if (!scalar.isValid)
            break;
        length += scalar.length;
    }
    return length;
}

} // namespace

std::optional<std::string> addingPercentEncoding(std::string_view text, const CharacterSet& allowed)
{
    return escaping(text, [&](char32_t scalar) { return scalar >= 128 || !allowed.contains(scalar); });
}

std::optional<std::string> addingPercentEscapes(std::string_view text, const CharacterSet& escaped)
{
    return escaping(text, [&](char32_t scalar) { return escaped.contains(scalar); });
}

std::optional<std::string> removingPercentEncoding(std::string_view text)
{
    return tryRemovingPercentEncoding(text).value();
}

Outcome tryRemovingPercentEncoding(std::string_view text)
{
    using Kind = PercentDecodingError::Kind;
    std::string result;
    result.reserve(text.size());
    for (std::size_t place = 0; place < text.size();) {
        const auto escape = std::min(text.find('%', place), text.size());
        result.append(text, place, escape - place);
        place = escape;
        if (place == text.size())
            break;
        if (text.size() - place < 3)
            return Outcome::failure({Kind::Cut, place});
        const int high = detail::hexadecimalDigit(text[place + 1]);
        const int low = detail::hexadecimalDigit(text[place + 2]);
        if (high < 0 || low < 0)
            return Outcome::failure({Kind::NoDigit, place});
        result += static_cast<char>(high * 16 + low);
        place += 3;
    }
    if (!isValidUTF8(result))
        return Outcome::failure({Kind::NotUTF8, originOf(validPrefix(result), text)});
    return Outcome::success(std::move(result));
}

} // namespace orrenby
