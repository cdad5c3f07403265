#pragma once

/// @file
/// The worker that plays the script.

#include "Application/Counted.hpp"
#include "Application/EventLoop.hpp"
#include "Application/Session.hpp"
#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include "Orrenby/Utilities/Discover/AbstractWorker.hpp"
#include "Terminal/Script.hpp"
#include <cstddef>
#include <span>

namespace fieldbook {

/// Does one step of the script after the other, with pauses: long enough to watch on a terminal, short
/// elsewhere.
class ScriptWorker : public orrenby::AbstractWorker, Counted<Part::worker> {
public:
    /// @param session  Outlives the worker.
    explicit ScriptWorker(Session& session, std::span<const ScriptStep> script = demoScript());
    ~ScriptWorker() override;

    /// Begins, and calls `atEnd` one pause after the last step. On a worker that does not work it does
    /// nothing.
    void play(orrenby::UniqueFunction<void()> atEnd);

protected:
    void didStart() override;
    void willStop() override;

private:
    void wait();
    void next();

    Session& m_session;
    std::span<const ScriptStep> m_rest;
    orrenby::UniqueFunction<void()> m_atEnd;
    EventLoop::Watch m_timer;
};

} // namespace fieldbook
