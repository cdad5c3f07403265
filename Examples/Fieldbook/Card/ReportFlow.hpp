#pragma once

/// @file
/// The flow of one opened report.

#include "Application/Counted.hpp"
#include "Application/Session.hpp"
#include "Card/ReportContext.hpp"
#include "Orrenby/Platform/Objects/Never.hpp"
#include "Orrenby/Utilities/Discover/AbstractFlow.hpp"

namespace fieldbook {

/// Shows a report as a card when it starts. Another report takes its place, or the feed's end ends it.
class ReportFlow : public orrenby::AbstractFlow<ReportContext, orrenby::Void>, Counted<Part::flow> {
public:
    /// @param session  Outlives the flow.
    ReportFlow(Session& session, NumberedReport report);
    ~ReportFlow() override;

protected:
    void didStart() override;

private:
    Session& m_session;
    NumberedReport m_report;
};

} // namespace fieldbook
