#pragma once

/// @file
/// The flow of signing in.

#include "Application/Counted.hpp"
#include "Application/ScreenContext.hpp"
#include "Application/Session.hpp"
#include "Orrenby/Platform/Objects/Never.hpp"
#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include "Orrenby/Utilities/Discover/AbstractFlow.hpp"
#include <string>

namespace fieldbook {

/// Stands in place of everything else while nobody is known: at the start and after somebody signed out,
/// until somebody signs in or looks around as a guest.
class SignInFlow : public orrenby::AbstractFlow<ScreenContext, orrenby::Void>, Counted<Part::flow> {
public:
    /// @param session  Outlives the flow.
    /// @param onEnter  Called once, when the session has a user or a guest. It may let go of the flow.
    SignInFlow(Session& session, orrenby::UniqueFunction<void()> onEnter);
    ~SignInFlow() override;

    /// Takes what was typed.
    void obey(const std::string& line);

protected:
    void didStart() override;

private:
    void enter();
    void say(Style style, const std::string& text);

    Session& m_session;
    orrenby::UniqueFunction<void()> m_onEnter;
};

} // namespace fieldbook
