#include "Orrenby/Foundation/NSAttributedString.hpp"

#include "Orrenby/Foundation/Brackets.hpp"
#include "Orrenby/Platform/Text/NSMutableAttributedString.hpp"
#include "Orrenby/Platform/Text/UTF8.hpp"
#include <cmath>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace {

/// The text between the matches in its attributes, and whatever `append` puts in place of each match.
template <class Append>
std::optional<NSAttributedString> replacingMatches(std::string_view text,
    const detail::BracketPattern& pattern, const TextAttributes& normalAttributes, const Append& append)
{
    const auto matches = detail::bracketMatches(text, pattern);
    if (!matches)
        return std::nullopt;
    NSMutableAttributedString result;
    const char* done = text.data();
    const auto appendUpTo = [&](const char* end) {
        result.append({done, static_cast<std::size_t>(end - done)}, normalAttributes);
    };
    for (const auto& match : *matches) {
        appendUpTo(match.whole.data());
        append(result, match);
        done = match.whole.data() + match.whole.size();
    }
    appendUpTo(text.data() + text.size());
    return std::move(result).attributedString();
}

/// In the middle of capital letters.
NSTextAttachment attachmentOf(const Image& image, double capHeight)
{
    const auto size = image.size();
    const double y = std::round(std::round(capHeight - size.height) * 0.5);
    return {.image = image, .bounds = {.origin = {.x = 0, .y = y}, .size = size}};
}

} // namespace

std::optional<NSAttributedString> makeAttributedString(std::string_view text, const EmphasisMarkup& markup)
{
    return replacingMatches(replacingInvalidUTF8(detail::formatted(text)), detail::emphasisPattern(),
        markup.normalAttributes, [&](NSMutableAttributedString& result, const detail::BracketMatch& match) {
            result.append(match.groups[0], markup.markdownAttributes);
        });
}

std::optional<NSAttributedString> makeAttributedString(std::string_view text, const ImageMarkup& markup)
{
    const auto font = markup.normalAttributes.get(TextAttribute::font);
    const double capHeight = font ? font->capHeight() : 0;
    auto next = markup.images.begin();
    return replacingMatches(replacingInvalidUTF8(detail::formatted(text)), detail::emphasisPattern(),
        markup.normalAttributes, [&](NSMutableAttributedString& result, const detail::BracketMatch&) {
            if (next != markup.images.end())
                result.append(NSAttributedString(attachmentOf(*next++, capHeight)));
        });
}

std::optional<NSAttributedString> makeAttributedString(std::string_view text, const LinkMarkup& markup)
{
    std::vector<std::string_view> addresses;
    addresses.reserve(markup.links.size());
    for (const auto& link : markup.links)
        addresses.emplace_back(link.absoluteString());
    const auto unlinked = markup.linkAttributes.removing(TextAttribute::link);
    return replacingMatches(replacingInvalidUTF8(detail::formatted(text, addresses)), detail::linkPattern(),
        markup.normalAttributes, [&](NSMutableAttributedString& result, const detail::BracketMatch& match) {
            const auto url = URL::make(match.groups[1]);
            result.append(match.groups[0], url ? unlinked.setting(TextAttribute::link, *url) : unlinked);
        });
}

NSAttributedString attr(std::string_view text, const Color& color, const Font& font)
{
    return NSAttributedString(
        text, TextAttributes{{TextAttribute::foregroundColor, color}, {TextAttribute::font, font}});
}

NSAttributedString operator+(const NSAttributedString& left, const NSAttributedString& right)
{
    NSMutableAttributedString result(left);
    result.append(right);
    return std::move(result).attributedString();
}

} // namespace orrenby
