#pragma once

/// @file
/// The feed as lines on a terminal.

#include "Feed/Catalogue.hpp"
#include "Feed/FeedScreen.hpp"
#include "Terminal/Terminal.hpp"
#include <string>
#include <string_view>

namespace fieldbook {

/// Prints one line for each event: a mark, the severity, number, title, place and observer.
///
///     + high    #1 Footbridge under water, Lower Marrow (Ines Calder)
///     ! unreadable  wasps.json: No valid JSON: Unexpected end of the text at line 3, column 9
///     @ station  Radio check at noon, channel 4.
///     * signed in  ines.calder@chapel-bank.example
///
/// The marks: `=` as it was at the end of the last run, `+` added, `~` changed, `-` removed, `!` unreadable,
/// `@` said by the station or of the service, `*` done by people. Not synchronised.
class FeedPrinter : public FeedScreen {
public:
    /// @param terminal  Outlives the printer.
    /// @param catalogue  Outlives the printer.
    FeedPrinter(Terminal& terminal, Catalogue& catalogue)
        : m_terminal(terminal)
        , m_catalogue(catalogue)
    {}

    void show(const FeedNews& news) override;
    void show(const FolderLost& failure) override;

private:
    void printReport(Style style, char mark, const std::string& file, const Report& report);
    void printText(Style style, char mark, std::string_view what, std::string_view text);

    Terminal& m_terminal;
    Catalogue& m_catalogue;
};

/// The colour in which a severity is shown.
Style styleOf(Severity severity);

/// The text, as wide as the column of severities.
std::string padded(std::string_view text);

} // namespace fieldbook
