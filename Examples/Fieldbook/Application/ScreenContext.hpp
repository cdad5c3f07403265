#pragma once

/// @file
/// The context of a screen that has none of its own.

#include "Application/Counted.hpp"
#include "Application/Session.hpp"
#include "Orrenby/Utilities/Discover/AbstractContext.hpp"
#include "Orrenby/Utilities/Discover/AbstractWorker.hpp"
#include <string>

namespace fieldbook {

/// Counts how often a screen is shown.
class ScreenWorker : public orrenby::AbstractWorker, Counted<Part::worker> {
public:
    /// @param session  Outlives the worker.
    ScreenWorker(Session& session, std::string screen);
    ~ScreenWorker() override;

protected:
    void didStart() override;

private:
    Session& m_session;
    std::string m_screen;
};

/// Active while its screen is shown.
class ScreenContext : public orrenby::AbstractContext<ScreenWorker>, Counted<Part::context> {
public:
    /// @param session  Outlives the context.
    /// @param screen  The name under which it is counted.
    ScreenContext(Session& session, std::string screen);
    ~ScreenContext() override;
};

} // namespace fieldbook
