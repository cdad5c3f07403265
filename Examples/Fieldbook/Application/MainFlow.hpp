#pragma once

/// @file
/// The flow of whoever is not asked to sign in.

#include "Application/Counted.hpp"
#include "Application/MainContext.hpp"
#include "Application/Session.hpp"
#include "Card/DeepLink.hpp"
#include "Compose/ComposeFlow.hpp"
#include "Feed/FeedNews.hpp"
#include "Folder/SampleFiles.hpp"
#include "Orrenby/Platform/Objects/Never.hpp"
#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include "Orrenby/Utilities/Discover/AbstractFlow.hpp"
#include <string>

namespace fieldbook {

/// What a main flow tells whoever attached it.
struct MainFlowListener {
    orrenby::UniqueFunction<void()> onTold; ///< Everything of the beginning is told.
    orrenby::UniqueFunction<void()> onLost; ///< There will be no more news.
};

/// Attaches the feed when it starts, and beside it, one at a time, what else the user wants to see. Shows
/// nothing itself, so it has no view controller.
class MainFlow : public orrenby::AbstractFlow<MainContext, orrenby::Void>, Counted<Part::flow> {
public:
    /// @param session  Outlives the flow.
    /// @param links  The feed enters it. Outlives the flow.
    MainFlow(Session& session, DeepLinks& links, MainFlowListener listener);
    ~MainFlow() override;

    /// Takes what was typed.
    void obey(const std::string& line);

    /// Asks the service for its reports.
    void refresh();

    /// Calls `whenIdle` once no report is on its way, neither to the service nor from it. One waits at a
    /// time.
    void waitUntilIdle(orrenby::UniqueFunction<void()> whenIdle);

protected:
    void didStart() override;

private:
    void followFeed();
    void compose();
    void showSettings();
    void clear();
    void makeSamples(const SampleRequest& request);
    void say(const std::string& text);

    Session& m_session;
    DeepLinks& m_links;
    MainFlowListener m_listener;
};

} // namespace fieldbook
