#include "Card/Caption.hpp"

#include "Orrenby/Foundation/NSAttributedString.hpp"
#include "Orrenby/Platform/Drawing/Font.hpp"
#include "Terminal/MarkedText.hpp"

namespace fieldbook {

std::string captioned(const Terminal& terminal, std::string_view text)
{
    const orrenby::TextAttributes bold{{orrenby::TextAttribute::font, orrenby::Font::boldSystem(13)}};
    const auto caption = orrenby::makeAttributedString(
        text, orrenby::EmphasisMarkup{.normalAttributes = {}, .markdownAttributes = bold});
    if (!caption)
        return marked(terminal, text);
    std::string result;
    for (const auto& run : caption->runs())
        result += marked(terminal, run.in(caption->string()), run.attributes);
    return result;
}

} // namespace fieldbook
