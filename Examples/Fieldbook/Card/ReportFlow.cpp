#include "Card/ReportFlow.hpp"

#include "Card/Card.hpp"
#include <utility>

namespace fieldbook {

ReportFlow::ReportFlow(Session& session, NumberedReport report)
    : AbstractFlow(orrenby::make<ReportContext>(session), orrenby::Void())
    , m_session(session)
    , m_report(std::move(report))
{}

ReportFlow::~ReportFlow() = default;

void ReportFlow::didStart()
{
    const auto cards = Cards({&m_session.terminal, m_session.settings->isDetailed.get()});
    if (const auto card = cards.create(m_report.report))
        for (const auto& line : (*card)->lines(m_report))
            m_session.terminal.print(line);
}

} // namespace fieldbook
