#pragma once

/// @file
/// Where a scene is played.

#include "Application/EventLoop.hpp"
#include "Application/LifeTrace.hpp"
#include "Application/RootFlow.hpp"
#include "Application/Session.hpp"
#include "Daemon/DaemonOptions.hpp"
#include "Folder/Samples.hpp"
#include "Orrenby/Testing/VirtualWorld.hpp"
#include "Scenario/Scenario.hpp"
#include "Scenario/WorkingFolder.hpp"
#include "Service/DirectService.hpp"
#include "Service/Faults.hpp"
#include "Service/ReportService.hpp"
#include "Store/StoreFile.hpp"
#include "Terminal/Terminal.hpp"
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace fieldbook {

/// A world of its own with the application and a service in it: time passes when a step says so, and nothing
/// leaves the process. What the steps do stands in Scenario/README.md.
///
/// While it lives it is in a new folder, in which the application follows the folder `reports`. Use from the
/// main thread, one at a time.
class Stage {
public:
    /// @param terminal  Outlives the stage.
    explicit Stage(Terminal& terminal);
    ~Stage();

    /// Prints the step, does it, and lets a tenth of a second pass.
    /// @returns Why that cannot be, as a line for whoever wrote the step, or nothing.
    std::optional<std::string> play(const ScenarioStep& step);

    /// How much time has passed, in seconds.
    double seconds() const { return m_world.elapsed(); }

private:
    using Problem = std::optional<std::string>;
    struct Verb;

    Problem perform(const ScenarioStep& step);

    Problem start(const std::string& arguments);
    Problem type(const std::string& line);
    Problem leave(const std::string&);
    Problem wait(const std::string& seconds);

    Problem write(const std::string& fileAndText);
    Problem remove(const std::string& file);
    Problem move(const std::string& files);
    Problem photo(const std::string& fileAndSize);

    Problem serve(const std::string& arguments);
    Problem kill(const std::string&);
    Problem forget(const std::string&);
    Problem received(const std::string&);
    Problem compare(const std::string& numberAndFile);
    Problem rush(const std::string& count);

    Problem firstVersion(const std::string& file);
    Problem stored(const std::string& file);
    Problem transaction(const std::string& file);
    Problem damage(const std::string& file);

    Problem alive(const std::string&);
    Problem engine(const std::string& name);
    Problem caption(const std::string& text);

    void say(const std::string& text);

    orrenby::testing::VirtualWorld m_world;
    WorkingFolder m_folder;
    Terminal& m_terminal;
    EventLoop m_loop;
    LifeTrace m_trace;
    std::unique_ptr<ReportService> m_reports; ///< Keeps what it got when it is killed.
    std::unique_ptr<FaultyService> m_faulty;
    DirectService m_service;
    std::unique_ptr<StoreFile> m_store; ///< Open as long as the application runs.
    std::unique_ptr<Session> m_session;
    orrenby::Ref<RootFlow> m_root;
};

} // namespace fieldbook
