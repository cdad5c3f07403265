#pragma once

/// @file
/// Where a scene is played.

#include "Application/EventLoop.hpp"
#include "Application/LifeTrace.hpp"
#include "Application/RootFlow.hpp"
#include "Application/Session.hpp"
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

namespace fieldbook {

/// A world of its own with the application and a service in it: time passes when a step says so, and nothing
/// leaves the process. The steps, which Steps.hpp lists, work on its parts.
///
/// While it lives it is in a new folder, in which the application follows the folder `reports`. Use from the
/// main thread, one at a time.
struct Stage {
    /// @param terminal  Outlives the stage.
    explicit Stage(Terminal& terminal);
    ~Stage();

    /// Prints the step, does it, and lets a tenth of a second pass.
    /// @returns Why that cannot be, as a line for whoever wrote the step, or nothing.
    std::optional<std::string> play(const ScenarioStep& step);

    /// Prints what a step found out.
    void say(const std::string& text);

    orrenby::testing::VirtualWorld world;
    WorkingFolder folder;
    Terminal& terminal;
    EventLoop loop;
    LifeTrace trace;
    std::unique_ptr<ReportService> reports; ///< Keeps what it got when it is killed.
    std::unique_ptr<FaultyService> faulty;
    DirectService service;
    std::unique_ptr<StoreFile> store; ///< Open as long as the application runs.
    std::unique_ptr<Session> session; ///< Nothing until the application starts.
    orrenby::Ref<RootFlow> root;      ///< The application, while it runs.
};

} // namespace fieldbook
