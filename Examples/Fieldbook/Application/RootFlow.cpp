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
    enter();
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
    if (!firstSubFlow<SignInFlow>())
        attach(orrenby::make<SignInFlow>(m_session, [this] { enter(); }));
}

void RootFlow::allIsTold()
{
    if (const auto link = std::exchange(m_session.link, std::nullopt))
        follow({*link});
    goOnUploading();
    switch (m_session.course) {
    case Course::watch:
        if (m_session.terminal.isInteractive()) {
            say("watching: add, change or remove *.json files there; Ctrl-C ends");
            say("or type: " + std::string(commandHelp()));
        }
        break;
    case Course::look:
        endWhenUploaded();
        break;
    case Course::script:
        playScript();
        break;
    }
}

void RootFlow::playScript()
{
    context()->withFirstWorker<ScriptWorker>(
        [this](ScriptWorker& script) { script.play([this] { endWhenUploaded(); }); });
}

/// What an earlier run, or somebody who signed out, had to leave.
void RootFlow::goOnUploading()
{
    const auto main = firstSubFlow<MainFlow>();
    if (!main)
        return;
    main->context()->analytics()->resume();
    if (std::exchange(m_session.isUploadWanted, false))
        main->context()->analytics()->uploadAll();
}

void RootFlow::endWhenUploaded()
{
    if (const auto main = firstSubFlow<MainFlow>())
        main->context()->analytics()->waitForUploads([this] { finish(Ending::byItself); });
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
