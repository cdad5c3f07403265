#include "RootFlow.hpp"

#include "FeedFlow.hpp"
#include "ScriptWorker.hpp"
#include <variant>

namespace fieldbook {

RootFlow::RootFlow(Session& session)
    : AbstractFlow(orrenby::make<RootContext>(session), orrenby::Void())
    , m_session(session)
{}

RootFlow::~RootFlow() { m_session.trace.step("RootFlow goes"); }

void RootFlow::didStart()
{
    m_session.trace.step("RootFlow has started");
    const auto feed = FeedFlow::build(m_session);
    attach(feed);

    // Kept by this flow's context: it ends with this flow, not with the feed.
    feed->context()
        ->news()
        .sink([this](const FeedContext::News::Payload& payload) {
            if (payload.isError())
                context()->analytics()->end(Ending::folderLost);
            else if (std::holds_alternative<Scanned>(*payload.asValue()))
                allIsTold();
        })
        .store(*context());
}

void RootFlow::allIsTold()
{
    const auto end = [this] { context()->analytics()->end(Ending::byItself); };
    switch (m_session.course) {
    case Course::watch:
        if (m_session.terminal.isInteractive())
            m_session.terminal.print(m_session.terminal.styled(
                Style::faint, "= watching: add, change or remove *.report files there; Ctrl-C ends"));
        break;
    case Course::look:
        end();
        break;
    case Course::script:
        context()->withFirstWorker<ScriptWorker>([&](ScriptWorker& script) { script.play(end); });
        break;
    }
}

} // namespace fieldbook
