#include "SignIn/SignInFlow.hpp"

#include "SignIn/SignIn.hpp"
#include "Terminal/Commands.hpp"
#include <utility>
#include <variant>

namespace fieldbook {

namespace {

constexpr auto invitation = "nobody is signed in: sign in ADDRESS, or guest";

} // namespace

SignInFlow::SignInFlow(Session& session, orrenby::UniqueFunction<void()> onEnter)
    : AbstractFlow(orrenby::make<ScreenContext>(session, "sign-in"), orrenby::Void())
    , m_session(session)
    , m_onEnter(std::move(onEnter))
{}

SignInFlow::~SignInFlow() { m_session.trace.step("SignInFlow goes"); }

void SignInFlow::didStart()
{
    m_session.trace.step("SignInFlow has started");
    const auto example = m_session.terminal.isInteractive() ? "; for example: sign in ines@hut.example" : "";
    say(Style::faint, std::string("= ") + invitation + example);
}

void SignInFlow::obey(const std::string& line)
{
    const auto command = parseCommand(line);
    if (std::holds_alternative<EnterAsGuest>(command))
        return enter();
    const auto* const wish = std::get_if<SignIn>(&command);
    if (wish == nullptr)
        return say(Style::red, std::string("! ") + invitation);
    const auto address = addressToSignIn(wish->address);
    if (const auto problem = address.error())
        return say(Style::red, "! sign-in  " + *problem);
    m_session.user = address.unwrap();
    enter();
}

void SignInFlow::enter()
{
    // The callable may end this flow, and with it what it is a member of.
    if (auto onEnter = std::exchange(m_onEnter, nullptr))
        onEnter();
}

void SignInFlow::say(Style style, const std::string& text)
{
    m_session.terminal.print(m_session.terminal.styled(style, text));
}

} // namespace fieldbook
