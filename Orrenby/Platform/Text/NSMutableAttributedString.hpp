#pragma once

/// @file
/// Texts with attributes, while they are put together.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Text/AttributedText.hpp"
#include "Orrenby/Platform/Text/NSAttributedString.hpp"
#include "Orrenby/Platform/Text/NSRange.hpp"
#include "Orrenby/Platform/Text/TextAttributes.hpp"
#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// A text with attributes that can be changed; its finished form is an `NSAttributedString`.
///
/// Ranges are UTF-16 units. An operation on a range gives false, and changes nothing, unless both ends of the
/// range lie between scalar values of the text.
///
/// @snippet Tests/Platform/Text/NSMutableAttributedStringTests.cpp Putting a text together
///
/// Appending costs what is appended; everything else is linear in the text. A plain value: a copy never sees
/// later changes. Not synchronised.
class ORRENBY_EXPORT NSMutableAttributedString {
public:
    static constexpr std::string_view printedTypeName = "NSMutableAttributedString";

    /// A stretch of equal attributes.
    using Run = AttributedRun;

    NSMutableAttributedString() = default;

    /// Begins with this text. Linear.
    explicit NSMutableAttributedString(const NSAttributedString& text);

    /// In UTF-8, with U+FFFC for attachments. Valid until the text changes.
    const std::string& string() const noexcept { return m_content.text; }
    /// In UTF-16 units.
    std::size_t length() const noexcept { return m_content.length; }
    bool empty() const noexcept { return m_content.text.empty(); }

    /// All of the text.
    NSRange fullRange() const noexcept { return {.location = 0, .length = length()}; }
    /// First to last; valid until the text changes.
    const std::vector<Run>& runs() const noexcept { return m_content.runs; }

    /// Appends a text with the attributes that it has. Linear in what is appended.
    void append(const NSAttributedString& text);
    /// What is no UTF-8 is replaced by U+FFFD.
    void append(std::string_view text, const TextAttributes& attributes = {});

    /// The other text in place of what stands in the range.
    bool replace(NSRange range, const NSAttributedString& text);
    /// The other text in front of what stands at the place.
    bool insert(const NSAttributedString& text, std::size_t location) { return replace({location, 0}, text); }
    /// Nothing in place of what stands in the range.
    bool erase(NSRange range) { return replace(range, NSAttributedString()); }
    void clear() noexcept;

    /// These in place of all that there were.
    bool setAttributes(const TextAttributes& attributes, NSRange range);
    /// These, and those that there were under other keys.
    bool addAttributes(const TextAttributes& attributes, NSRange range);
    template <class T>
    bool addAttribute(const TextAttributeKey<T>& key, std::type_identity_t<T> value, NSRange range)
    {
        return addAttributes(TextAttributes{{key, std::move(value)}}, range);
    }

    /// Removes the attribute from the range.
    template <class T> bool removeAttribute(const TextAttributeKey<T>& key, NSRange range)
    {
        return change(range, [&](const TextAttributes& attributes) { return attributes.removing(key); });
    }

    /// What stands there now, which later changes leave alone. Linear, but constant for an rvalue, which is
    /// empty then.
    NSAttributedString attributedString() const&;
    NSAttributedString attributedString() &&;

    std::string description() const;
    std::string debugDescription() const;

    friend bool operator==(const NSMutableAttributedString&, const NSMutableAttributedString&) = default;

private:
    /// Every stretch of the range with the attributes that `changed` makes of its own.
    template <class F> bool change(NSRange range, const F& changed)
    {
        const auto part = m_content.part(range);
        if (!part)
            return false;
        detail::AttributedText changing;
        changing.append(m_content, part->first, part->last);
        detail::AttributedText result;
        result.append(m_content, {}, part->first);
        for (const auto& run : changing.runs)
            result.append(run.in(changing.text), changed(run.attributes));
        result.append(m_content, part->last, m_content.end());
        m_content = std::move(result);
        return true;
    }

    detail::AttributedText m_content;
};

} // namespace orrenby
