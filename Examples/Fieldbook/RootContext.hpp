#pragma once

/// @file
/// The context of the whole application.

#include "Counted.hpp"
#include "Orrenby/Utilities/Discover/AbstractContext.hpp"
#include "Session.hpp"
#include "SessionWorker.hpp"

namespace fieldbook {

/// Active as long as the session lasts. Plays the script, if that is what the session is for.
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
