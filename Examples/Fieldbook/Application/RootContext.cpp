#include "Application/RootContext.hpp"

#include "Terminal/CommandWorker.hpp"
#include "Terminal/ScriptWorker.hpp"
#include <unistd.h>

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
    auto workers = orrenby::Workers();
    if (session.course == Course::script)
        workers.push_back(orrenby::make<ScriptWorker>(session));
    else if (session.course == Course::watch && ::isatty(STDIN_FILENO) == 1)
        workers.push_back(orrenby::make<CommandWorker>(session, STDIN_FILENO));
    return workers;
}

} // namespace fieldbook
