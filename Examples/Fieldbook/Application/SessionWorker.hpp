#pragma once

/// @file
/// The worker that ends the session.

#include "Application/Counted.hpp"
#include "Application/EventLoop.hpp"
#include "Application/Session.hpp"
#include "Orrenby/Utilities/Discover/AbstractWorker.hpp"
#include "Terminal/Descriptor.hpp"
#include <signal.h>

namespace fieldbook {

/// While it works, an interrupt (Ctrl-C), a termination request or a hang-up ends the session in order
/// instead of the process at once.
class SessionWorker : public orrenby::AbstractWorker, Counted<Part::worker> {
public:
    /// @param session  Outlives the worker.
    explicit SessionWorker(Session& session);
    ~SessionWorker() override;

    /// Notes how the session ended and stops its loop. The first ending counts.
    void end(Ending ending);

protected:
    void didStart() override;
    void willStop() override;

private:
    void receiveSignal();

    Session& m_session;
    sigset_t m_maskBefore{};
    Descriptor m_signals;
    EventLoop::Watch m_watch;
};

} // namespace fieldbook
