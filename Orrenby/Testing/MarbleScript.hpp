#pragma once

/// @file
/// Streams written as a line of marbles.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Testing/Printing.hpp"
#include <cstddef>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::testing {

/// Says what is wrong with a line of marbles, and where.
///
/// Never changes once it is made. Not synchronised.
class ORRENBY_EXPORT MarbleError : public std::exception {
public:
    /// @param position  Of the character, counted from 0, spaces included.
    MarbleError(std::string_view notation, std::size_t position, std::string_view message);
    ~MarbleError() override;

    /// `Marbles "a-(b", position 2: this group has no end`.
    const char* what() const noexcept override { return m_text.c_str(); }

    /// Of what is wrong, in the notation, counted from 0.
    std::size_t position() const noexcept { return m_position; }

private:
    std::string m_text;
    std::size_t m_position;
};

/// What happens in one frame: an element, or the end.
///
/// A plain value. Not synchronised.
struct MarbleEvent {
    int frame = 0; ///< Counted from 0.
    /// A letter, a digit, `#`, or `|` for the end.
    char symbol = '|';
    /// Of the symbol in its notation, counted from 0.
    std::size_t position = 0;

    /// Whether the stream ends here.
    bool isEnd() const noexcept { return symbol == '|'; }
    friend bool operator==(const MarbleEvent& first, const MarbleEvent& second) noexcept
    {
        return first.frame == second.frame && first.symbol == second.symbol;
    }
};

/// A stream over time as a line of characters, each of which takes one frame:
///
/// | written | meaning |
/// |---|---|
/// | `-` | nothing happens |
/// | a letter or a digit | an element |
/// | `#` | a failure |
/// | `(ab)` | several elements, one after the other in one frame; the whole group takes one frame |
/// | `\|` | the end, the last thing of the line or of its last group |
/// | a blank | nothing, and takes no frame: put some in to align lines |
///
/// What the symbols stand for, and how long a frame is, says a `MarbleLegend`.
///
/// @snippet Tests/Testing/MarbleScriptTests.cpp Reading marbles
///
/// A value. Not synchronised.
class ORRENBY_EXPORT MarbleScript {
public:
    /// @throws MarbleError  when the line is malformed.
    explicit MarbleScript(std::string_view notation);

    /// The script in which these events happen.
    ///
    /// @param events  By frame, none below 0, and the end last.
    explicit MarbleScript(std::vector<MarbleEvent> events);

    /// In the order of the line.
    const std::vector<MarbleEvent>& events() const noexcept { return m_events; }

    /// Frames that the line takes, empty ones at its end included.
    int frameCount() const noexcept { return m_frameCount; }

    /// As it was written; for a script of events, in its shortest form.
    const std::string& notation() const noexcept { return m_notation; }
    /// The notation.
    const std::string& description() const noexcept { return m_notation; }

    /// The same events. Blanks and empty frames at the end make no difference.
    friend bool operator==(const MarbleScript& first, const MarbleScript& second) noexcept
    {
        return first.m_events == second.m_events;
    }

private:
    std::string m_notation;
    std::vector<MarbleEvent> m_events;
    int m_frameCount = 0;
};

} // namespace orrenby::testing
