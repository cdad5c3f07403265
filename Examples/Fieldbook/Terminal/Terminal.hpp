#pragma once

/// @file
/// Lines of text for people.

#include <string>
#include <string_view>

namespace fieldbook {

enum class Style { plain, faint, bold, underlined, red, yellow, green, cyan };

/// Writes whole lines to one descriptor, in colours where they are welcome: on a terminal, unless the
/// environment variable `NO_COLOR` says something.
///
/// Each line goes out at once. Not synchronised.
class Terminal {
public:
    /// @param descriptor  Stays the caller's and open.
    explicit Terminal(int descriptor);
    Terminal(int descriptor, bool isColoured);

    /// Whether somebody watches.
    bool isInteractive() const { return m_isInteractive; }

    /// Whether styles are welcome.
    bool isColoured() const { return m_isColoured; }

    /// The text, in that style if there are colours.
    std::string styled(Style style, std::string_view text) const;

    /// Writes the text and a line end.
    void print(std::string text);

    /// Whether every line so far could be written.
    bool isIntact() const { return m_isIntact; }

private:
    int m_descriptor;
    bool m_isInteractive;
    bool m_isColoured;
    bool m_isIntact = true;
};

} // namespace fieldbook
