#include "Orrenby/Platform/Coding/TextPosition.hpp"

#include <algorithm>

namespace orrenby::inline ORRENBY_ABI {

TextPosition TextPosition::in(std::string_view text, std::size_t offset)
{
    return in(text, offset, TextPosition());
}

TextPosition TextPosition::in(std::string_view text, std::size_t offset, const TextPosition& earlier)
{
    auto position = earlier;
    position.offset = std::min(offset, text.size());
    for (auto index = earlier.offset; index < position.offset; ++index) {
        const char byte = text[index];
        const bool isFirstOfTwo = byte == '\r' && index + 1 < text.size() && text[index + 1] == '\n';
        if (byte == '\n' || (byte == '\r' && !isFirstOfTwo)) {
            ++position.line;
            position.column = 1;
        } else if ((static_cast<unsigned char>(byte) & 0xC0U) != 0x80U)
            ++position.column;
    }
    return position;
}

std::string TextPosition::description() const
{
    return "line " + std::to_string(line) + ", column " + std::to_string(column);
}

} // namespace orrenby
