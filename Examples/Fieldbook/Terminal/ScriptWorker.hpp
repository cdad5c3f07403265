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

/// What a script worker tells whoever lets it play.
struct ScriptListener {
    /// The script waits until no report is on its way. What it is given lets it go on.
    orrenby::UniqueFunction<void(orrenby::UniqueFunction<void()> goOn)> onWait;
    orrenby::UniqueFunction<void()> onEnd; ///< One pause after the last step.
};

/// Does one step of the script after the other, with pauses: long enough to watch on a terminal, short
/// elsewhere.
class ScriptWorker : public orrenby::AbstractWorker, Counted<Part::worker> {
public:
    /// @param session  Outlives the worker.
    explicit ScriptWorker(Session& session, std::span<const ScriptStep> script = demoScript());
    ~ScriptWorker() override;

    /// Begins. On a worker that plays already, or does not work, it does nothing.
    void play(ScriptListener listener);

protected:
    void didStart() override;
    void willStop() override;

private:
    void wait();
    void next();

    Session& m_session;
    std::span<const ScriptStep> m_rest;
    ScriptListener m_listener;
    bool m_isPlaying = false;
    EventLoop::Watch m_timer;
};

} // namespace fieldbook
