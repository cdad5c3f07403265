#include "Application/SessionWorker.hpp"

#include "Orrenby/Utilities/Log/Entries.hpp"
#include <string>
#include <sys/signalfd.h>
#include <unistd.h>

namespace fieldbook {

SessionWorker::SessionWorker(Session& session)
    : m_session(session)
{}

SessionWorker::~SessionWorker() = default;

void SessionWorker::end(Ending ending)
{
    if (m_session.ending.value() == Ending::none)
        m_session.ending.send(ending);
    m_session.loop.stop();
}

void SessionWorker::didStart()
{
    m_session.trace.step("SessionWorker starts");
    sigset_t signals;
    sigemptyset(&signals);
    for (const auto signal : {SIGINT, SIGTERM, SIGHUP})
        sigaddset(&signals, signal);
    m_signals = Descriptor(::signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC));
    sigprocmask(SIG_BLOCK, nullptr, &m_maskBefore);
    if (!m_signals)
        return orrenby::Log::error("no descriptor for signals: they end the process at once");
    // Blocked signals wait until they are read from the descriptor.
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    m_watch = m_session.loop.watch(m_signals.number(), [this] { receiveSignal(); });
}

void SessionWorker::willStop()
{
    m_session.trace.step("SessionWorker stops");
    m_watch = {};
    m_signals = {};
    sigprocmask(SIG_SETMASK, &m_maskBefore, nullptr);
}

void SessionWorker::receiveSignal()
{
    signalfd_siginfo signal{};
    if (::read(m_signals.number(), &signal, sizeof signal) != sizeof signal)
        return;
    orrenby::Log::event([&] { return "asked to end by signal " + std::to_string(signal.ssi_signo); });
    end(Ending::interrupted);
}

} // namespace fieldbook
