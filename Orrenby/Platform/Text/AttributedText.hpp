#pragma once

/// @file
/// What texts with attributes consist of: the text, and one after another the stretches that look alike.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Text/NSRange.hpp"
#include "Orrenby/Platform/Text/TextAttributes.hpp"
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// A stretch of a text that has the same attributes from end to end, and others in front of it and behind it.
///
/// A plain value that keeps nothing of the text. Not synchronised.
struct AttributedRun {
    /// Where it stands, in UTF-16 units. Never empty.
    NSRange range{};
    /// Where it begins and how long it is, in bytes of the UTF-8 text.
    std::size_t byteOffset = 0;
    std::size_t byteCount = 0;   ///< In bytes of the UTF-8 text, as the offset.
    TextAttributes attributes{}; ///< What the stretch has in common.

    /// What stands there in the text that has the run.
    std::string_view in(std::string_view text) const { return text.substr(byteOffset, byteCount); }

    friend bool operator==(const AttributedRun&, const AttributedRun&) = default;
};

namespace detail {

/// A place between two scalar values, in both ways of counting.
struct TextPlace {
    std::size_t bytes = 0;
    std::size_t units = 0;
};

/// A part of a text, by its ends.
struct TextPart {
    TextPlace first{};
    TextPlace last{};
};

/// A text and its runs, which cover it: neighbours differ, none is empty.
struct ORRENBY_EXPORT AttributedText {
    std::string text;
    std::size_t length = 0; ///< In UTF-16 units.
    std::vector<AttributedRun> runs;

    /// @param piece  Valid UTF-8, and not part of this text.
    void append(std::string_view piece, const TextAttributes& attributes);
    /// What stands in another text, or this one, from one of its places to a later one.
    void append(const AttributedText& other, TextPlace first, TextPlace last);

    TextPlace end() const noexcept { return {text.size(), length}; }

    /// The run that the unit stands in, or `nullptr` behind the end. Logarithmic.
    const AttributedRun* run(std::size_t unit) const noexcept;

    /// Nothing inside a surrogate pair and behind the end. Constant in a run of ASCII, once it is found.
    std::optional<TextPlace> place(std::size_t unit) const noexcept;

    /// Nothing unless the range lies in the text and both its ends have a place.
    std::optional<TextPart> part(NSRange range) const noexcept;

    friend bool operator==(const AttributedText&, const AttributedText&) = default;

private:
    void append(std::string_view piece, std::size_t units, const TextAttributes& attributes);
};

} // namespace detail

} // namespace orrenby
