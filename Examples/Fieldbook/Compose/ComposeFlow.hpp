#pragma once

/// @file
/// The flow of writing a report.

#include "Application/Counted.hpp"
#include "Application/ScreenContext.hpp"
#include "Application/Session.hpp"
#include "Orrenby/Platform/Objects/Never.hpp"
#include "Orrenby/Utilities/Discover/AbstractFlow.hpp"
#include "Report/Report.hpp"
#include <optional>
#include <string>
#include <string_view>

namespace fieldbook {

/// Takes a report line by line, and writes it into the folder of the session, from which the feed tells it.
///
///     title Gate left open
///     place Harrow Gate
///     severity low
///     body Closed it. [No] cattle outside.
///     save
///
/// Title and place have to be there. The observer is who is signed in. Another word than these, and
/// `discard`, is for others.
class ComposeFlow : public orrenby::AbstractFlow<ScreenContext, orrenby::Void>, Counted<Part::flow> {
public:
    /// What became of a line.
    enum class Outcome {
        notTaken, ///< It is for others.
        goesOn,
        isOver ///< The report is written, or was discarded.
    };

    /// @param session  Outlives the flow.
    explicit ComposeFlow(Session& session);
    ~ComposeFlow() override;

    Outcome take(std::string_view line);

protected:
    void didStart() override;

private:
    Outcome save();
    void say(Style style, const std::string& text);

    Session& m_session;
    std::string m_title;
    std::string m_place;
    Severity m_severity = Severity::low;
    std::string m_body;
};

} // namespace fieldbook
