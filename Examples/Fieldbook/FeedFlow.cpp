#include "FeedFlow.hpp"

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
    const auto printer = std::make_shared<FeedPrinter>(session.terminal);
    const auto folder = orrenby::make<FolderWorker>(session);
    const auto context = orrenby::make<FeedContext>(session, printer, folder);
    return orrenby::make<FeedFlow>(session, context, printer);
}

void FeedFlow::didStart() { m_session.trace.step("FeedFlow has started"); }

} // namespace fieldbook
