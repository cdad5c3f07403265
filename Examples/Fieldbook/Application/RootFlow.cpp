#include "Application/RootFlow.hpp"

#include "Application/MainFlow.hpp"
#include "SignIn/SignInFlow.hpp"
#include "Store/Recall.hpp"
#include "Terminal/Commands.hpp"
#include "Terminal/ScriptWorker.hpp"
#include "Terminal/Text.hpp"
#include <utility>
#include <variant>

namespace fieldbook {

RootFlow::RootFlow(Session& session)
    : AbstractFlow(orrenby::make<RootContext>(session), orrenby::Void())
    , m_session(session)
{}

RootFlow::~RootFlow() { m_session.trace.step("RootFlow goes"); }

void RootFlow::didStart()
{
    m_session.trace.step("RootFlow has started");
    m_session.commands.asPublisher().bind([this](const std::string& line) { obey(line); }).store(*context());
    if (m_session.user || m_session.isGuest)
        return enter();
    askWhoItIs();
    if (m_session.course == Course::script)
        playScript(); // it signs in
}

void RootFlow::askWhoItIs()
{
    if (!firstSubFlow<SignInFlow>())
        attach(orrenby::make<SignInFlow>(m_session, [this] { enter(); }));
}

void RootFlow::enter()
{
    // Called by the flow of signing in, which is kept until the call is over.
    const auto signIn = firstSubFlow<SignInFlow>();
    if (signIn)
        detach(signIn);
    attach(orrenby::make<MainFlow>(m_session, m_links,
        MainFlowListener{[this] { allIsTold(); }, [this] { finish(Ending::folderLost); }}));
}

void RootFlow::signOut()
{
    detach<MainFlow>([](const MainFlow&) { return true; });
    m_session.user.reset();
    forgetUser(m_session);
    askWhoItIs();
}

void RootFlow::allIsTold()
{
    if (const auto link = std::exchange(m_session.link, std::nullopt))
        follow({*link});
    beginExchanges();
    switch (m_session.course) {
    case Course::watch:
        if (m_session.terminal.isInteractive()) {
            say("watching: add, change or remove *.json files there; Ctrl-C ends");
            say("or type: " + std::string(commandHelp()));
        }
        break;
    case Course::look:
        endWhenIdle();
        break;
    case Course::script:
        playScript();
        break;
    }
}

void RootFlow::playScript()
{
    context()->withFirstWorker<ScriptWorker>([this](ScriptWorker& script) {
        script.play({[this](auto goOn) { waitUntilIdle(std::move(goOn)); }, [this] { endWhenIdle(); }});
    });
}

/// Begins with what an earlier run, or somebody who signed out, had to leave.
void RootFlow::beginExchanges()
{
    const auto main = firstSubFlow<MainFlow>();
    if (!main)
        return;
    main->context()->analytics()->resume();
    if (std::exchange(m_session.isUploadWanted, false))
        main->context()->analytics()->uploadAll();
    if (m_session.isRefreshWanted)
        main->refresh();
}

void RootFlow::waitUntilIdle(orrenby::UniqueFunction<void()> whenIdle)
{
    if (const auto main = firstSubFlow<MainFlow>())
        main->waitUntilIdle(std::move(whenIdle));
    else
        whenIdle();
}

void RootFlow::endWhenIdle()
{
    waitUntilIdle([this] { finish(Ending::byItself); });
}

void RootFlow::finish(Ending ending) { context()->analytics()->end(ending); }

void RootFlow::obey(const std::string& line)
{
    const auto command = parseCommand(line);
    if (std::holds_alternative<End>(command))
        finish(Ending::byItself);
    else if (std::holds_alternative<SignOut>(command))
        signOut();
    else if (const auto* const link = std::get_if<Follow>(&command))
        follow({link->link});
    else if (const auto main = firstSubFlow<MainFlow>())
        main->obey(line);
    else if (const auto signIn = firstSubFlow<SignInFlow>())
        signIn->obey(line);
}

void RootFlow::follow(const DeepLink& link)
{
    if (!m_links.send(link))
        m_session.terminal.print(
            m_session.terminal.styled(Style::red, "! nothing opens " + printable(link.text)));
}

void RootFlow::say(const std::string& text)
{
    m_session.terminal.print(m_session.terminal.styled(Style::faint, "= " + text));
}

} // namespace fieldbook
