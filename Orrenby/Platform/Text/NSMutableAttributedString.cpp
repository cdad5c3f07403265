#include "Orrenby/Platform/Text/NSMutableAttributedString.hpp"

#include "Orrenby/Platform/Text/UTF8.hpp"

namespace orrenby::inline ORRENBY_ABI {

void NSMutableAttributedString::append(const NSAttributedString& text)
{
    m_content.append(text.content(), {}, text.content().end());
}

void NSMutableAttributedString::append(std::string_view text, const TextAttributes& attributes)
{
    m_content.append(replacingInvalidUTF8(std::string(text)), attributes);
}

bool NSMutableAttributedString::find(
    NSRange range, detail::TextPlace& first, detail::TextPlace& last) const noexcept
{
    if (range.location > length() || range.length > length() - range.location)
        return false;
    const auto start = m_content.place(range.location);
    const auto end = m_content.place(range.upperBound());
    first = start.value_or(detail::TextPlace());
    last = end.value_or(detail::TextPlace());
    return start.has_value() && end.has_value();
}

bool NSMutableAttributedString::replace(NSRange range, const NSAttributedString& text)
{
    detail::TextPlace first;
    detail::TextPlace last;
    if (!find(range, first, last))
        return false;
    detail::AttributedText result;
    result.append(m_content, {}, first);
    result.append(text.content(), {}, text.content().end());
    result.append(m_content, last, m_content.end());
    m_content = std::move(result);
    return true;
}

bool NSMutableAttributedString::setAttributes(const TextAttributes& attributes, NSRange range)
{
    return change(range, [&](const TextAttributes&) { return attributes; });
}

bool NSMutableAttributedString::addAttributes(const TextAttributes& attributes, NSRange range)
{
    return change(range, [&](const TextAttributes& own) { return own.merging(attributes); });
}

} // namespace orrenby
