#pragma once

/// @file
/// Texts with attributes for terminals.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Text/NSAttributedString.hpp"
#include <cstdint>
#include <string>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// How many colours a terminal has: none, the 16 that each user chooses, the 256 of a fixed palette, or all.
enum class ANSIColors : std::uint8_t { None, Basic, Palette, Full };

/// How a text is written for a terminal.
struct ANSITextOptions {
    /// Without styles, which is for files and pipes, there are no escape sequences at all.
    bool isStyled = true;
    /// Colours become the nearest ones that there are.
    ANSIColors colors = ANSIColors::Full;
    /// Whether the terminal knows links that can be followed (OSC 8).
    bool hasLinks = false;
    /// Links of these schemes can be followed, whatever the case of their letters; all others are text.
    std::vector<std::string> linkSchemes = {"http", "https", "mailto", "tel"};
    /// Stands for an attachment.
    std::string attachmentText = "[image]";
};

/// The text with the escape sequences that make a terminal show its colours, bold and italic fonts, lines
/// under and through it: `"\x1B[4mthis\x1B[0m"`. The terminal's own font and sizes stay.
///
/// The text cannot steer the terminal. Tabs and line ends ("\n" and "\r\n", which both become "\n") stay; all
/// other control characters, line ends and marks of writing direction are written as `\u{001B}`.
///
/// Styles end before each line end and begin again behind it, so that the lines can be printed one by one.
///
/// @snippet Tests/Platform/Text/ANSITextTests.cpp Writing for a terminal
///
/// Linear. Safe to use from several threads.
ORRENBY_EXPORT std::string ansiText(const NSAttributedString& text, const ANSITextOptions& options = {});

} // namespace orrenby
