#include "SignIn/SignInFlow.hpp"

#include "SignIn/SignIn.hpp"
#include "Terminal/Commands.hpp"
#include <utility>
#include <variant>

namespace fieldbook {

SignInFlow::SignInFlow(Session& session, orrenby::UniqueFunction<void()> onSignedIn)
    : AbstractFlow(orrenby::make<ScreenContext>(session, "sign-in"), orrenby::Void())
    , m_session(session)
    , m_onSignedIn(std::move(onSignedIn))
{}

SignInFlow::~SignInFlow() { m_session.trace.step("SignInFlow goes"); }

void SignInFlow::didStart()
{
    m_session.trace.step("SignInFlow has started");
    say(Style::faint, "= nobody is signed in: sign in ADDRESS");
}

void SignInFlow::obey(const std::string& line)
{
    const auto command = parseCommand(line);
    const auto* const wish = std::get_if<SignIn>(&command);
    if (wish == nullptr)
        return say(Style::red, "! nobody is signed in: sign in ADDRESS");
    const auto address = addressToSignIn(wish->address);
    if (const auto problem = address.error())
        return say(Style::red, "! sign-in  " + *problem);
    m_session.user = address.unwrap();
    // The callable may end this flow, and with it what it is a member of.
    std::exchange(m_onSignedIn, nullptr)();
}

void SignInFlow::say(Style style, const std::string& text)
{
    m_session.terminal.print(m_session.terminal.styled(style, text));
}

} // namespace fieldbook
