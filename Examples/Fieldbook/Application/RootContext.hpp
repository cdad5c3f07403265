#pragma once

/// @file
/// The context of the whole application.

#include "Application/Counted.hpp"
#include "Application/Session.hpp"
#include "Application/SessionWorker.hpp"
#include "Orrenby/Utilities/Discover/AbstractContext.hpp"

namespace fieldbook {

/// Active as long as the session lasts. Its workers play the script or listen to the keyboard, whatever the
/// session is for.
class RootContext : public orrenby::AbstractContext<SessionWorker>, Counted<Part::context> {
public:
    /// @param session  Outlives the context.
    explicit RootContext(Session& session);
    ~RootContext() override;

protected:
    void didBecomeActive() override;
    void willResignActive() override;

private:
    static orrenby::Workers workersFor(Session& session);

    Session& m_session;
};

} // namespace fieldbook
