#include "Orrenby/Platform/Text/DataDetectorLinks.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

constexpr std::string_view signsOfURLs = "-._~:/?@!$&'()*+,;=";
constexpr std::string_view hexadecimal = "0123456789ABCDEF";

bool isHexadecimal(char character)
{
    return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'F')
        || (character >= 'a' && character <= 'f');
}

bool isAllowed(char character)
{
    const auto byte = static_cast<unsigned char>(character);
    return (byte < 128 && (detectorClasses[byte] & static_cast<std::uint8_t>(DetectorClass::Word)) != 0)
        || signsOfURLs.find(character) != std::string_view::npos;
}

} // namespace

std::string linkURL(std::string_view prefix, std::string_view text)
{
    std::string url(prefix);
    // Square brackets stand around the host of "http://[::1]/" and nowhere else; "#" stands once.
    const auto slashes = prefix.empty() ? text.find("://") : 0;
    const auto host = slashes == std::string_view::npos ? text.size() : prefix.empty() ? slashes + 3 : 0;
    const auto path = std::min(text.find_first_of("/?#", host), text.size());
    const auto fragment = text.find('#');
    for (std::size_t place = 0; place < text.size(); ++place) {
        const char character = text[place];
        const bool isEncoded = character == '%' && place + 2 < text.size() && isHexadecimal(text[place + 1])
            && isHexadecimal(text[place + 2]);
        const bool isOfHost = (character == '[' || character == ']') && place >= host && place < path;
        if (isAllowed(character) || isEncoded || isOfHost || place == fragment) {
            url += character;
            continue;
        }
        const auto byte = static_cast<unsigned char>(character);
        url += '%';
        url += hexadecimal[byte >> 4];
        url += hexadecimal[byte & 15];
    }
    return url;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
