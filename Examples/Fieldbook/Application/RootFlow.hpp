#pragma once

/// @file
/// The flow of the whole application.

#include "Application/Counted.hpp"
#include "Application/RootContext.hpp"
#include "Application/Session.hpp"
#include "Card/DeepLink.hpp"
#include "Orrenby/Platform/Objects/Never.hpp"
#include "Orrenby/Utilities/Discover/AbstractFlow.hpp"
#include <string>

namespace fieldbook {

/// Attaches the main flow when it starts, and the one of signing in as long as the user is out. Passes on
/// what is typed, and decides when the session is over. Shows nothing itself, so it has no view controller.
class RootFlow : public orrenby::AbstractFlow<RootContext, orrenby::Void>, Counted<Part::flow> {
public:
    /// @param session  Outlives the flow.
    explicit RootFlow(Session& session);
    ~RootFlow() override;

protected:
    void didStart() override;

private:
    void enter();
    void signOut();
    void allIsTold();
    void playScript();
    void goOnUploading();
    void endWhenUploaded();
    void finish(Ending ending);

    void obey(const std::string& line);
    void follow(const DeepLink& link);
    void say(const std::string& text);

    Session& m_session;
    DeepLinks m_links;
};

} // namespace fieldbook
