#include "Orrenby/Platform/Text/NSAttributedString.hpp"

#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Platform/Text/UTF8.hpp"

namespace orrenby::inline ORRENBY_ABI {

namespace {

constexpr std::string_view attachmentText = "\uFFFC";

detail::AttributedText contentOf(std::string_view text, const TextAttributes& attributes)
{
    detail::AttributedText content;
    content.append(replacingInvalidUTF8(std::string(text)), attributes);
    return content;
}

bool isSame(const Any* first, const Any* second)
{
    return first == nullptr || second == nullptr ? first == second : *first == *second;
}

} // namespace

NSAttributedString::NSAttributedString(std::string_view text, const TextAttributes& attributes)
    : NSAttributedString(contentOf(text, attributes))
{}

NSAttributedString::NSAttributedString(const NSTextAttachment& attachment)
    : NSAttributedString(attachmentText, TextAttributes{{TextAttribute::attachment, attachment}})
{}

NSAttributedString::NSAttributedString(detail::AttributedText content)
    : m_content(std::make_shared<const detail::AttributedText>(std::move(content)))
{}

const detail::AttributedText& NSAttributedString::none() noexcept
{
    static const auto& text = *new detail::AttributedText(); // outlives every static text
    return text;
}

std::optional<NSRange> NSAttributedString::stretch(std::string_view name, std::size_t location) const
{
    for (const auto& range : stretches(name))
        if (range.contains(location))
            return range;
    return std::nullopt;
}

std::vector<NSRange> NSAttributedString::stretches(std::string_view name) const
{
    std::vector<NSRange> ranges;
    const Any* last = nullptr;
    for (const auto& run : runs()) {
        const Any* value = run.attributes.find(name);
        if (!ranges.empty() && isSame(value, last))
            ranges.back().length += run.range.length;
        else
            ranges.push_back(run.range);
        last = value;
    }
    return ranges;
}

std::optional<std::string_view> NSAttributedString::substring(NSRange range) const noexcept
{
    const auto part = content().part(range);
    if (!part)
        return std::nullopt;
    return std::string_view(string()).substr(part->first.bytes, part->last.bytes - part->first.bytes);
}

std::optional<NSAttributedString> NSAttributedString::attributedSubstring(NSRange range) const
{
    if (range == fullRange())
        return *this;
    const auto part = content().part(range);
    if (!part)
        return std::nullopt;
    detail::AttributedText copy;
    copy.append(content(), part->first, part->last);
    return NSAttributedString(std::move(copy));
}

std::string NSAttributedString::description() const
{
    std::string result;
    for (const auto& run : runs()) {
        if (!result.empty())
            result += ", ";
        result += debugDescribe(run.in(string())) + " " + run.attributes.description();
    }
    return result;
}

bool operator==(const NSAttributedString& first, const NSAttributedString& second)
{
    return first.m_content == second.m_content || first.content() == second.content();
}

} // namespace orrenby
