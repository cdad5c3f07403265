#include "Orrenby/Platform/Text/NSMutableAttributedString.hpp"

#include "Orrenby/Platform/Text/UTF8.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

NSMutableAttributedString::NSMutableAttributedString(const NSAttributedString& text)
    : m_content(text.content())
{}

void NSMutableAttributedString::clear() noexcept { m_content = {}; }

NSAttributedString NSMutableAttributedString::attributedString() const&
{
    return NSAttributedString(m_content);
}
NSAttributedString NSMutableAttributedString::attributedString() &&
{
    return NSAttributedString(std::exchange(m_content, {}));
}

std::string NSMutableAttributedString::description() const { return attributedString().description(); }
std::string NSMutableAttributedString::debugDescription() const
{
    return "NSMutableAttributedString(" + description() + ")";
}

void NSMutableAttributedString::append(const NSAttributedString& text)
{
    m_content.append(text.content(), {}, text.content().end());
}

void NSMutableAttributedString::append(std::string_view text, const TextAttributes& attributes)
{
    m_content.append(replacingInvalidUTF8(std::string(text)), attributes);
}

bool NSMutableAttributedString::replace(NSRange range, const NSAttributedString& text)
{
    const auto part = m_content.part(range);
    if (!part)
        return false;
    detail::AttributedText result;
    result.append(m_content, {}, part->first);
    result.append(text.content(), {}, text.content().end());
    result.append(m_content, part->last, m_content.end());
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
