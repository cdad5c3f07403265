#pragma once

/// @file
/// The flow of the whole application.

#include "Application/Counted.hpp"
#include "Application/RootContext.hpp"
#include "Application/Session.hpp"
#include "Card/DeepLink.hpp"
#include "Orrenby/Platform/Objects/Never.hpp"
#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include "Orrenby/Utilities/Discover/AbstractFlow.hpp"
#include <string>

namespace fieldbook {

/// Attaches the main flow where somebody is known who uses it, or may be a guest, and the one of signing in
/// otherwise and as long as the user is out. Passes on what is typed, and decides when the session is over.
/// Shows nothing itself, so it has no view controller.
class RootFlow : public orrenby::AbstractFlow<RootContext, orrenby::Void>, Counted<Part::flow> {
public:
    /// @param session  Outlives the flow.
    explicit RootFlow(Session& session);
    ~RootFlow() override;

protected:
    void didStart() override;

private:
    void enter();
    void askWhoItIs();
    void signOut();
    void allIsTold();
    void playScript();
    void beginExchanges();
    void waitUntilIdle(orrenby::UniqueFunction<void()> whenIdle);
    void endWhenIdle();
    void finish(Ending ending);

    void obey(const std::string& line);
    void follow(const DeepLink& link);
    void say(const std::string& text);

    Session& m_session;
    DeepLinks m_links;
};

} // namespace fieldbook
