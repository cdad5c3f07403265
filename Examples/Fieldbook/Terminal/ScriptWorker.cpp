#include "Terminal/ScriptWorker.hpp"

#include <chrono>
#include <utility>

namespace fieldbook {

ScriptWorker::ScriptWorker(Session& session, std::span<const ScriptStep> script)
    : m_session(session)
    , m_rest(script)
{}

ScriptWorker::~ScriptWorker() = default;

void ScriptWorker::play(ScriptListener listener)
{
    if (!isWorking() || std::exchange(m_isPlaying, true))
        return;
    m_listener = std::move(listener);
    wait();
}

void ScriptWorker::didStart() { m_session.trace.step("ScriptWorker starts"); }

void ScriptWorker::willStop()
{
    m_session.trace.step("ScriptWorker stops");
    m_timer = {};
}

void ScriptWorker::wait()
{
    const auto pause = std::chrono::milliseconds(m_session.terminal.isInteractive() ? 700 : 20);
    m_timer = m_session.loop.after(pause, [this] { next(); });
}

void ScriptWorker::next()
{
    if (m_rest.empty())
        return m_listener.onEnd();
    const auto& step = m_rest.front();
    m_rest = m_rest.subspan(1);
    if (step.act == ScriptStep::Act::await)
        return m_listener.onWait([this] { wait(); });
    m_session.terminal.print(m_session.terminal.styled(Style::faint, "> " + step.description()));
    if (step.act == ScriptStep::Act::command)
        m_session.commands.send(std::string(step.file));
    else
        perform(step, m_session.folder);
    // The folder tells of the step in the next turn, and what can be read is called for before what waits for
    // a moment: the news come out before the next step, however late this turn is.
    wait();
}

} // namespace fieldbook
