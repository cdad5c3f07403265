#pragma once

/// @file
/// The flow of the whole application.

#include "Counted.hpp"
#include "FolderNews.hpp"
#include "Orrenby/Platform/Objects/Never.hpp"
#include "Orrenby/Utilities/Discover/AbstractFlow.hpp"
#include "RootContext.hpp"
#include "Session.hpp"

namespace fieldbook {

/// Attaches the feed when it starts, and decides from its news when the session is over. Shows nothing
/// itself, so it has no view controller.
class RootFlow : public orrenby::AbstractFlow<RootContext, orrenby::Void>, Counted<Part::flow> {
public:
    /// @param session  Outlives the flow.
    explicit RootFlow(Session& session);
    ~RootFlow() override;

protected:
    void didStart() override;

private:
    void allIsTold();

    Session& m_session;
};

} // namespace fieldbook
