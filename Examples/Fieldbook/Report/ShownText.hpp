#pragma once

/// @file
/// Texts from outside that are shown on terminals, checked where they are decoded.

#include "Orrenby/Platform/Coding/Decoder.hpp"
#include "Orrenby/Platform/Coding/Encoder.hpp"
#include <string>
#include <utility>

namespace fieldbook {

/// A text of one line. Decoded, it is not blank and holds nothing that a terminal would obey instead of
/// showing it: no control character, no mark of writing direction.
struct Line {
    Line(const char* plain)
        : text(plain)
    {}
    Line(std::string plain)
        : text(std::move(plain))
    {}

    /// Throws `DecodingError`, which says where in the document the text stands and what is wrong with it.
    static Line init(const orrenby::Decoder& decoder);
    void encode(const orrenby::Encoder& encoder) const;

    std::string text;

    friend auto operator<=>(const Line&, const Line&) = default;
};

/// The same for a text that may have several lines, and tabs.
struct Passage {
    Passage(const char* plain)
        : text(plain)
    {}
    Passage(std::string plain)
        : text(std::move(plain))
    {}

    static Passage init(const orrenby::Decoder& decoder);
    void encode(const orrenby::Encoder& encoder) const;

    std::string text;

    friend auto operator<=>(const Passage&, const Passage&) = default;
};

} // namespace fieldbook
