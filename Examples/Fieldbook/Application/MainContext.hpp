#pragma once

/// @file
/// The context of what is not signing in.

#include "Application/Counted.hpp"
#include "Application/Session.hpp"
#include "Orrenby/Utilities/Discover/AbstractContext.hpp"
#include "Upload/UploadWorker.hpp"

namespace fieldbook {

/// Active until somebody signs out, or the session is over. Its worker uploads reports.
class MainContext : public orrenby::AbstractContext<UploadWorker>, Counted<Part::context> {
public:
    /// @param session  Outlives the context.
    explicit MainContext(Session& session);
    ~MainContext() override;

protected:
    void didBecomeActive() override;
    void willResignActive() override;

private:
    Session& m_session;
};

} // namespace fieldbook
