#include "Feed/FeedFlow.hpp"

#include "Card/ReportFlow.hpp"
#include <memory>
#include <utility>

namespace fieldbook {

FeedFlow::FeedFlow(Session& session, orrenby::Ref<FeedContext> context, orrenby::Ref<FeedPrinter> printer)
    : AbstractFlow(std::move(context), std::move(printer))
    , m_session(session)
{}

FeedFlow::~FeedFlow() { m_session.trace.step("FeedFlow goes"); }

orrenby::Ref<FeedFlow> FeedFlow::build(Session& session)
{
    const auto printer = std::make_shared<FeedPrinter>(session.terminal, session.catalogue);
    const auto sources = FeedContext::Sources{orrenby::make<RecallWorker>(session),
        orrenby::make<StationWorker>(session), orrenby::make<SignInWorker>(session),
        orrenby::make<FolderWorker>(session), orrenby::make<FetchWorker>(session)};
    const auto context = orrenby::make<FeedContext>(session, printer, sources);
    return orrenby::make<FeedFlow>(session, context, printer);
}

void FeedFlow::didStart() { m_session.trace.step("FeedFlow has started"); }

DeepLinks::Action FeedFlow::claim(const DeepLink& link)
{
    const auto number = link.report();
    if (!context()->isActive() || !number || !m_session.catalogue.find(*number))
        return nullptr;
    return [this, number = *number](const DeepLink&) { open(number); };
}

void FeedFlow::open(int number)
{
    detach<ReportFlow>([](const ReportFlow&) { return true; }); // one report at a time
    if (const auto* report = m_session.catalogue.find(number))
        attach(orrenby::make<ReportFlow>(m_session, NumberedReport{number, *report}));
}

} // namespace fieldbook
