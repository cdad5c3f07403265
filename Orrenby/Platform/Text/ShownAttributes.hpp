#pragma once

/// @file
/// What all renderings of texts with attributes ask for. Not in the umbrella header: part of their workings.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Text/TextAttributes.hpp"
#include "Orrenby/Platform/Text/UTF8.hpp"
#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// The address of a link whose scheme is one of these, whatever its case. A relative link has none.
std::optional<std::string> shownLink(
    const TextAttributes& attributes, const std::vector<std::string>& schemes);

/// Whether a switch is there and on.
inline bool isOn(const TextAttributes& attributes, const TextAttributeKey<bool>& key)
{
    return attributes.get(key).value_or(false);
}

/// C0, DEL and C1.
constexpr bool isControl(char32_t scalar) noexcept
{
    return scalar < 0x20 || (scalar >= 0x7F && scalar <= 0x9F);
}

/// The first bytes of all characters that do not stand for themselves: C0 but tabs, DEL and C1, line ends,
/// U+FFFC, and others.
class StopBytes {
public:
    constexpr explicit StopBytes(std::string_view others) noexcept
    {
        for (std::size_t byte = 0; byte < 0x20; ++byte)
            m_isStop[byte] = byte != '\t';
        for (const std::string_view bytes : {std::string_view("\x7F\xC2\xE2\xEF"), others})
            for (const char byte : bytes)
                m_isStop[static_cast<unsigned char>(byte)] = true;
    }
    constexpr bool contains(char byte) const noexcept { return m_isStop[static_cast<unsigned char>(byte)]; }

private:
    std::array<bool, 256> m_isStop{};
};

/// Walks through valid UTF-8: calls `plain` with stretches that have no stop byte, `stop` with each character
/// that begins with one.
template <class Plain, class Stop>
void forEachPiece(std::string_view text, const StopBytes& stops, const Plain& plain, const Stop& stop)
{
    while (!text.empty()) {
        std::size_t length = 0;
        while (length < text.size() && !stops.contains(text[length]))
            ++length;
        if (length > 0)
            plain(text.substr(0, length));
        text.remove_prefix(length);
        if (text.empty())
            return;
        const auto scalar = firstUTF8Scalar(text);
        text.remove_prefix(scalar.length);
        stop(scalar.value);
    }
}

} // namespace orrenby::inline ORRENBY_ABI::detail
