#pragma once

/// @file
/// Texts with attributes.

#include "Orrenby/Platform/Drawing/NSTextAttachment.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Text/AttributedText.hpp"
#include "Orrenby/Platform/Text/NSRange.hpp"
#include "Orrenby/Platform/Text/TextAttributes.hpp"
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

class NSMutableAttributedString;

/// The value of one attribute, and how far it reaches.
template <class T> struct AttributeStretch {
    std::optional<T> value; ///< Nothing where the text has no such attribute.
    NSRange range{};        ///< In UTF-16 units; where there is no attribute, how far that goes on.

    friend bool operator==(const AttributeStretch&, const AttributeStretch&) = default;
};

/// A text in which each stretch has attributes of its own: colours, fonts, links, images.
///
/// It shows nothing itself: `ansiText` writes it for terminals, `htmlText` for browsers. The text is UTF-8;
/// its ranges are counted in UTF-16 units, and beside each stands the place in bytes. What is no UTF-8 is
/// replaced by U+FFFD when the text is made.
///
/// Neighbouring stretches with equal attributes are one, so that texts that look alike are equal however they
/// were put together.
///
/// @snippet Tests/Platform/Text/NSAttributedStringTests.cpp Looking at a text with attributes
///
/// An immutable value; copies share its content. To change one, make it a `NSMutableAttributedString`. Not
/// synchronised, but copies may live in several threads.
class ORRENBY_EXPORT NSAttributedString {
public:
    static constexpr std::string_view printedTypeName = "NSAttributedString";

    /// A stretch of equal attributes.
    using Run = AttributedRun;

    /// The empty text.
    NSAttributedString() noexcept = default;
    explicit NSAttributedString(std::string_view text, const TextAttributes& attributes = {});
    /// The one character U+FFFC, whose only attribute is the attachment.
    explicit NSAttributedString(const NSTextAttachment& attachment);

    /// In UTF-8, with U+FFFC for attachments. It lives as long as a copy of this text does.
    const std::string& string() const noexcept { return content().text; }
    /// In UTF-16 units.
    std::size_t length() const noexcept { return content().length; }
    bool empty() const noexcept { return content().text.empty(); }

    /// All of the text.
    NSRange fullRange() const noexcept { return {.location = 0, .length = length()}; }

    /// First to last; together they cover the text.
    const std::vector<Run>& runs() const noexcept { return content().runs; }

    /// The stretch that a unit stands in, or `nullptr` behind the end. Lives as long as this text or a copy
    /// of it. Logarithmic.
    const Run* run(std::size_t location) const noexcept { return content().run(location); }

    /// The attributes at a unit; none behind the end.
    TextAttributes attributes(std::size_t location) const
    {
        const auto* found = run(location);
        return found != nullptr ? found->attributes : TextAttributes();
    }

    /// One attribute at a unit and the longest range around it in which the attribute is the same, whatever
    /// becomes of the others. Nothing behind the end. Linear in the number of stretches.
    template <class T>
    std::optional<AttributeStretch<T>> attribute(const TextAttributeKey<T>& key, std::size_t location) const
    {
        const auto range = stretch(key.name(), location);
        if (!range)
            return std::nullopt;
        return AttributeStretch<T>{attributes(location).get(key), *range};
    }

    /// Calls `perform(const std::optional<T>&, NSRange)` for each longest range in which an attribute is the
    /// same, first to last; without a value where it is missing.
    template <class T, class F> void enumerate(const TextAttributeKey<T>& key, F&& perform) const
    {
        for (const auto& range : stretches(key.name()))
            perform(attributes(range.location).get(key), range);
    }

    /// What stands in the range; nothing unless both its ends lie between scalar values of the text.
    std::optional<std::string_view> substring(NSRange range) const noexcept;
    std::optional<NSAttributedString> attributedSubstring(NSRange range) const;

    /// The stretches with their attributes: `"Read " [:], "this" ["underline": true]`
    std::string description() const;
    std::string debugDescription() const { return "NSAttributedString(" + description() + ")"; }
    /// Of the text alone: texts that differ only in their attributes share it.
    std::size_t hash() const noexcept { return std::hash<std::string>{}(string()); }

    /// The same text with the same attributes. Copies are equal in constant time, others in linear.
    ORRENBY_EXPORT friend bool operator==(const NSAttributedString& first, const NSAttributedString& second);

private:
    friend class NSMutableAttributedString;
    explicit NSAttributedString(detail::AttributedText content);

    const detail::AttributedText& content() const noexcept { return m_content ? *m_content : none(); }
    static const detail::AttributedText& none() noexcept;
    std::optional<NSRange> stretch(std::string_view name, std::size_t location) const;
    std::vector<NSRange> stretches(std::string_view name) const;

    std::shared_ptr<const detail::AttributedText> m_content;
};

} // namespace orrenby

template <> struct std::hash<orrenby::NSAttributedString> {
    std::size_t operator()(const orrenby::NSAttributedString& text) const noexcept { return text.hash(); }
};
