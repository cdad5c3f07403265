// Step 22: brackets in a text become emphasis, images and links; a terminal and a browser show the result.

#include "Orrenby/Foundation/NSAttributedString.hpp"
#include "Orrenby/Platform/Text/ANSIText.hpp"
#include "Orrenby/Platform/Text/HTMLText.hpp"
#include <cstdio>
#include <string>

using namespace orrenby;

namespace {

const TextAttributes body{{TextAttribute::font, Font({.size = 17, .capHeight = 12})}};
const TextAttributes urgent{{TextAttribute::foregroundColor, Color::rgb(0xCC0000)}};
const TextAttributes underlined{{TextAttribute::underline, true}};

/// With escape sequences as they are typed.
std::string typed(std::string text)
{
    for (std::size_t place = 0; (place = text.find('\x1B', place)) != std::string::npos;)
        text.replace(place, 1, "\\e");
    return text;
}

} // namespace

int main()
{
    const auto warning = makeAttributedString(
        "Adders 🐍 on [100 %%] of the paths! ", {.normalAttributes = body, .markdownAttributes = urgent});
    for (const auto& run : warning->runs())
        std::printf(
            "%-9s %s\n", run.range.description().c_str(), std::string(run.in(warning->string())).c_str());

    // Whoever translates the text moves the link, and never sees its address.
    const auto advice = makeAttributedString("Read [what to do](%@) & stay calm.",
        {.normalAttributes = body,
            .linkAttributes = underlined,
            .links = {"https://hut.example/?a=1&b=2"_url}});

    // An image as high as 24 points stands 6 below the line: in the middle of capitals of 12.
    const Image icon({.width = 30, .height = 24});
    const auto sign = makeAttributedString(" [adder]", {.normalAttributes = body, .images = {icon}});
    const auto place = sign->attributes(1).get(TextAttribute::attachment)->bounds;
    std::printf("icon      %s\n\n", place.description().c_str());

    const auto text = *warning + *advice + *sign;
    std::printf("%s\n\n", typed(ansiText(text, {.colors = ANSIColors::Basic})).c_str());

    // Nothing of a text becomes markup, or an order to the terminal.
    const auto rude = attr("<script> \x1B[2J", Color::black(), Font({.name = "'\">", .size = 10}));
    std::printf("%s\n%s\n", htmlText(rude).c_str(), ansiText(rude, {.colors = ANSIColors::None}).c_str());

    const auto part = text.attributedSubstring({.location = text.length() - 30, .length = 30});
    std::printf("%s\n", htmlText(*part, {.attachmentText = "an adder"}).c_str());
    return 0;
}
