#include "Terminal/MarkedText.hpp"

#include "Orrenby/Platform/Text/ANSIText.hpp"
#include "Orrenby/Platform/Text/NSMutableAttributedString.hpp"
#include "Orrenby/Standard/DetectedData.hpp"
#include <cstddef>
#include <utility>

namespace fieldbook {

std::string marked(const Terminal& terminal, std::string_view text, const orrenby::TextAttributes& attributes)
{
    const orrenby::TextAttributes underlined{{orrenby::TextAttribute::underline, true}};
    orrenby::NSMutableAttributedString result;
    std::size_t done = 0;
    for (const auto& match : orrenby::detect(text)) {
        result.append(text.substr(done, match.byteOffset - done), attributes);
        result.append(match.in(text), underlined);
        done = match.byteOffset + match.byteCount;
    }
    result.append(text.substr(done), attributes);
    return ansiText(std::move(result).attributedString(), {.isStyled = terminal.isColoured()});
}

} // namespace fieldbook
