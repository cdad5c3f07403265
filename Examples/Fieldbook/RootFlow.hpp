#pragma once

/// @file
/// The flow of the whole application.

#include "Counted.hpp"
#include "DeepLink.hpp"
#include "FeedNews.hpp"
#include "Orrenby/Platform/Objects/Never.hpp"
#include "Orrenby/Utilities/Discover/AbstractFlow.hpp"
#include "RootContext.hpp"
#include "SampleFiles.hpp"
#include "Session.hpp"
#include <string>

namespace fieldbook {

/// Attaches the feed when it starts, obeys the user, and decides when the session is over. Shows no feed
/// itself, so it has no view controller.
class RootFlow : public orrenby::AbstractFlow<RootContext, orrenby::Void>, Counted<Part::flow> {
public:
    /// @param session  Outlives the flow.
    explicit RootFlow(Session& session);
    ~RootFlow() override;

protected:
    void didStart() override;

private:
    void followFeed();
    void allIsTold();
    void playScript();

    void obey(const std::string& line);
    void makeSamples(const SampleRequest& request);
    void follow(const DeepLink& link);
    void say(const std::string& text);

    Session& m_session;
    DeepLinks m_links;
};

} // namespace fieldbook
