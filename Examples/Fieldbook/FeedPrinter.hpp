#pragma once

/// @file
/// The feed as lines on a terminal.

#include "FeedScreen.hpp"
#include "Terminal.hpp"
#include <string_view>

namespace fieldbook {

/// Prints one line for each event: a mark, the severity, title, place and observer.
///
///     + high    Footbridge under water, Lower Marrow (Ines Calder)
///     ! unreadable  owl-count.report: line 4: unknown severity "huge": low, medium or high
///
/// The marks: `+` added, `~` changed, `-` removed, `!` unreadable. Not synchronised.
class FeedPrinter : public FeedScreen {
public:
    /// @param terminal  Outlives the printer.
    explicit FeedPrinter(Terminal& terminal)
        : m_terminal(terminal)
    {}

    void show(const FolderNews& news) override;
    void show(const FolderLost& failure) override;

private:
    void printReport(Style style, char mark, const Report& report);
    void printFile(Style style, char mark, std::string_view what, std::string_view text);

    Terminal& m_terminal;
};

/// The colour in which a severity is shown.
Style styleOf(Severity severity);

} // namespace fieldbook
