#pragma once

/// @file
/// The worker that listens to the keyboard.

#include "Application/Counted.hpp"
#include "Application/EventLoop.hpp"
#include "Application/Session.hpp"
#include "Orrenby/Utilities/Discover/AbstractWorker.hpp"
#include <string>

namespace fieldbook {

/// Reads lines from a descriptor and passes each on as a command. At the end of input it listens no more.
class CommandWorker : public orrenby::AbstractWorker, Counted<Part::worker> {
public:
    /// @param session     Outlives the worker.
    /// @param descriptor  Stays the caller's and open.
    CommandWorker(Session& session, int descriptor);
    ~CommandWorker() override;

protected:
    void didStart() override;
    void willStop() override;

private:
    void receive();

    /// What a user types in a line is shorter; what is longer is not a command.
    static constexpr std::size_t longestLine = 1024;

    Session& m_session;
    int m_descriptor;
    std::string m_line;
    EventLoop::Watch m_watch;
};

} // namespace fieldbook
