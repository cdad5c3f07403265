#pragma once

/// @file
/// The flow of the feed.

#include "Application/Counted.hpp"
#include "Application/Session.hpp"
#include "Card/DeepLink.hpp"
#include "Feed/FeedContext.hpp"
#include "Feed/FeedPrinter.hpp"
#include "Orrenby/Utilities/Discover/AbstractFlow.hpp"

namespace fieldbook {

/// Follows one folder and prints what happens in it. The printer stands where other applications have a view
/// controller.
class FeedFlow : public orrenby::AbstractFlow<FeedContext, orrenby::Ref<FeedPrinter>>, Counted<Part::flow> {
public:
    /// @param session  Outlives the flow.
    FeedFlow(Session& session, orrenby::Ref<FeedContext> context, orrenby::Ref<FeedPrinter> printer);
    ~FeedFlow() override;

    /// A flow with everything that it needs, not started yet.
    static orrenby::Ref<FeedFlow> build(Session& session);

    /// Opens the report that a link names, if it is in the feed; the feed itself stays. Nothing once the
    /// flow has ended.
    DeepLinks::Action claim(const DeepLink& link);

protected:
    void didStart() override;

private:
    void open(int number);

    Session& m_session;
};

} // namespace fieldbook
