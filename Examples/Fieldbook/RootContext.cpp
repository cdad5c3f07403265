#include "RootContext.hpp"

#include "ScriptWorker.hpp"

namespace fieldbook {

RootContext::RootContext(Session& session)
    : AbstractContext(workersFor(session), orrenby::make<SessionWorker>(session))
    , m_session(session)
{}

RootContext::~RootContext() { m_session.trace.step("RootContext goes"); }

void RootContext::didBecomeActive() { m_session.trace.step("RootContext is active"); }

void RootContext::willResignActive() { m_session.trace.step("RootContext resigns"); }

orrenby::Workers RootContext::workersFor(Session& session)
{
    if (session.course == Course::script)
        return {orrenby::make<ScriptWorker>(session)};
    return {};
}

} // namespace fieldbook
