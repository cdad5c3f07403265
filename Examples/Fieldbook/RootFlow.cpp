#include "RootFlow.hpp"

#include "Cases.hpp"
#include "Commands.hpp"
#include "FeedFlow.hpp"
#include "Language.hpp"
#include "Orrenby/Platform/Observing/NotificationCenter.hpp"
#include "ScriptWorker.hpp"
#include "SettingsWorker.hpp"
#include "SignInWorker.hpp"
#include "Text.hpp"
#include "UploadWorker.hpp"
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
    followFeed();
    m_session.commands.asPublisher().bind([this](const std::string& line) { obey(line); }).store(*context());
}

void RootFlow::followFeed()
{
    const auto feed = FeedFlow::build(m_session);
    attach(feed);
    // The chain must not keep the feed: it holds it weakly, and so does the handler.
    m_links.addResponder(feed, [weak = orrenby::WeakRef<FeedFlow>(feed)](const DeepLink& link) {
        const auto claimer = weak.lock();
        return claimer ? claimer->claim(link) : nullptr;
    });

    // Kept by this flow's context: it ends with this flow, not with the feed.
    feed->context()
        ->news()
        .sink([this](const FeedContext::News::Payload& payload) {
            if (payload.isError())
                context()->analytics()->end(Ending::folderLost);
            else if (std::holds_alternative<Scanned>(*payload.asValue()))
                allIsTold();
        })
        .store(*context());
}

void RootFlow::allIsTold()
{
    orrenby::NotificationCenter::defaultCenter()->post(feedIsTold);
    if (m_session.link)
        follow({*m_session.link});
    switch (m_session.course) {
    case Course::watch:
        if (m_session.terminal.isInteractive()) {
            say("watching: add, change or remove *.json files there; Ctrl-C ends");
            say("or type: " + std::string(commandHelp()));
        }
        break;
    case Course::look:
        context()->analytics()->end(Ending::byItself);
        break;
    case Course::script:
        playScript();
        break;
    }
}

void RootFlow::playScript()
{
    const auto end = [this] { context()->analytics()->end(Ending::byItself); };
    const auto endWhenUploaded = [this, end] {
        context()->withFirstWorker<UploadWorker>([&](UploadWorker& uploads) { uploads.waitForUploads(end); });
    };
    context()->withFirstWorker<ScriptWorker>([&](ScriptWorker& script) { script.play(endWhenUploaded); });
}

void RootFlow::obey(const std::string& line)
{
    std::visit(Cases{
                   [&](const Sort& it) {
                       // Whoever sorts is not known here.
                       orrenby::NotificationCenter::defaultCenter()->post(
                           feedShouldSort, {}, {{orderKey, nameOf(it.order)}});
                   },
                   [&](const ShowDetails& it) { m_session.settings->isDetailed = it.isOn; },
                   [&](const Follow& it) { follow({it.link}); },
                   [&](const SignIn& it) {
                       orrenby::NotificationCenter::defaultCenter()->post(
                           userShouldSignIn, {}, {{addressKey, it.address}});
                   },
                   [&](const MakeSamples& it) { makeSamples(it.request); },
                   [&](const Speak& it) {
                       choose(it.language);
                       say("dates are shown in " + it.language.identifier());
                   },
                   [&](const Upload&) {
                       context()->withFirstWorker<UploadWorker>(
                           [](UploadWorker& uploads) { uploads.uploadAll(); });
                   },
                   [&](const End&) { context()->analytics()->end(Ending::byItself); },
                   [&](const Unknown&) { say("no such command; " + std::string(commandHelp())); },
               },
        parseCommand(line));
}

void RootFlow::makeSamples(const SampleRequest& request)
{
    const auto outcome = writeSamples(request, m_session.folder);
    if (const auto problem = outcome.error())
        m_session.terminal.print(m_session.terminal.styled(Style::red, "! " + *problem));
    else
        say(counted(outcome.unwrap(), "sample") + " of " + request.seed);
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
