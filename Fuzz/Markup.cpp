// Texts with brackets: the first line holds links, the rest is the text. What counts as a bracket is what the
// expressions match in the whole text; the parts of the result put together are the text without its
// brackets; the stretches cover it.

#include "Fuzz/Support/RequireThat.hpp"
#include "Orrenby/Foundation/Brackets.hpp"
#include "Orrenby/Foundation/NSAttributedString.hpp"
#include "Orrenby/Platform/Text/UTF16.hpp"
#include "Orrenby/Platform/Text/UTF8.hpp"

using namespace orrenby;

namespace {

const TextAttributes& normal()
{
    static const auto& attributes = *new TextAttributes{{TextAttribute::font, Font({.capHeight = 12})}};
    return attributes;
}

const TextAttributes& special()
{
    static const auto& attributes = *new TextAttributes{{TextAttribute::underline, true}};
    return attributes;
}

void requireSound(const NSAttributedString& text)
{
    std::size_t units = 0;
    std::size_t bytes = 0;
    const TextAttributes* last = nullptr;
    for (const auto& run : text.runs()) {
        requireThat(run.range.location == units && run.byteOffset == bytes && run.byteCount > 0);
        requireThat(run.range.length == utf16Length(run.in(text.string())));
        requireThat(last == nullptr || *last != run.attributes);
        requireThat(text.substring(run.range) == run.in(text.string()));
        last = &run.attributes;
        units += run.range.length;
        bytes += run.byteCount;
    }
    requireThat(units == text.length() && bytes == text.string().size() && isValidUTF8(text.string()));
}

using Matches = std::vector<detail::BracketMatch>;

Matches requireTheEnginesMatches(std::string_view text, const detail::BracketPattern& pattern)
{
    auto matches = detail::bracketMatches(text, pattern).value();
    // The engine alone may give up on a text with many brackets.
    static const RegularExpressionOptions limited{.timeLimit = 0.1};
    const auto found = RegularExpression(pattern.expression->pattern(), limited).tryAllMatches(text).value();
    if (!found)
        return matches;
    requireThat(found->size() == matches.size());
    const UTF16View view(text);
    for (std::size_t index = 0; index < matches.size(); ++index) {
        const auto& ranges = (*found)[index].ranges();
        requireThat(view.slice(ranges[0].value()) == matches[index].whole);
        requireThat(ranges.size() == matches[index].groups.size() + 1);
        for (std::size_t group = 1; group < ranges.size(); ++group)
            requireThat(view.slice(ranges[group].value()) == matches[index].groups[group - 1]);
    }
    return matches;
}

/// The text with its brackets replaced by what `shown` makes of each.
template <class F> std::string replaced(std::string_view text, const Matches& matches, const F& shown)
{
    std::string result;
    for (const auto& match : matches) {
        const auto offset = static_cast<std::size_t>(match.whole.data() - text.data());
        result.append(text.substr(0, offset)).append(shown(match));
        text.remove_prefix(offset + match.whole.size());
    }
    return result.append(text);
}

std::string innerText(const detail::BracketMatch& match) { return std::string(match.groups[0]); }

void requireEmphasis(std::string_view input)
{
    const auto text = replacingInvalidUTF8(detail::formatted(input));
    const auto matches = requireTheEnginesMatches(text, detail::emphasisPattern());
    const auto result = makeAttributedString(
        input, {.normalAttributes = normal(), .markdownAttributes = special()})
                            .value();
    requireSound(result);
    requireThat(result.string() == replaced(text, matches, innerText));

    std::size_t pictures = matches.size() / 2;
    const std::vector<Image> images(pictures, Image({3, 5}));
    const auto illustrated = makeAttributedString(input, {.normalAttributes = normal(), .images = images})
                                 .value();
    requireSound(illustrated);
    requireThat(illustrated.string() == replaced(text, matches, [&](const auto&) {
        return std::string(pictures == 0 ? "" : (--pictures, "\uFFFC"));
    }));
}

void requireLinks(std::string_view input, const std::vector<URL>& links)
{
    std::vector<std::string_view> addresses;
    for (const auto& link : links)
        addresses.emplace_back(link.absoluteString());
    const auto text = replacingInvalidUTF8(detail::formatted(input, addresses));
    const auto matches = requireTheEnginesMatches(text, detail::linkPattern());
    const auto result = makeAttributedString(
        input, {.normalAttributes = normal(), .linkAttributes = special(), .links = links})
                            .value();
    requireSound(result);
    requireThat(result.string() == replaced(text, matches, innerText));
    auto targets = matches.begin();
    for (const auto& run : result.runs())
        if (const auto url = run.attributes.get(TextAttribute::link)) {
            while (targets != matches.end() && targets->groups[1] != url->absoluteString())
                ++targets;
            requireThat(targets != matches.end());
        }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    auto text = std::string_view(reinterpret_cast<const char*>(data), size);
    auto first = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(first.size() + 1, text.size()));
    std::vector<URL> links;
    while (!first.empty() && links.size() < 8) {
        const auto length = std::min(first.find(' '), first.size());
        if (const auto url = URL::make(first.substr(0, length)))
            links.push_back(*url);
        first.remove_prefix(std::min(length + 1, first.size()));
    }

    requireEmphasis(text);
    requireLinks(text, links);
    return 0;
}
