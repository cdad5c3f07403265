#include "MarkedText.hpp"

#include "Orrenby/Standard/DetectedData.hpp"
#include <algorithm>
#include <cstddef>

namespace fieldbook {

namespace {

/// Each line of the text in that style; nothing is done to empty ones.
std::string styledLines(const Terminal& terminal, Style style, std::string_view text)
{
    std::string result;
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        if (end > 0)
            result += terminal.styled(style, text.substr(0, end));
        if (end < text.size())
            result += '\n';
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return result;
}

} // namespace

std::string marked(const Terminal& terminal, std::string_view text, Style style)
{
    std::string result;
    std::size_t done = 0;
    for (const auto& match : orrenby::detect(text)) {
        result += styledLines(terminal, style, text.substr(done, match.byteOffset - done));
        result += styledLines(terminal, Style::underlined, match.in(text));
        done = match.byteOffset + match.byteCount;
    }
    return result + styledLines(terminal, style, text.substr(done));
}

} // namespace fieldbook
