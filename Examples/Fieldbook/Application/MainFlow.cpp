#include "Application/MainFlow.hpp"

#include "Feed/Cases.hpp"
#include "Feed/FeedFlow.hpp"
#include "Orrenby/Platform/Observing/NotificationCenter.hpp"
#include "Settings/Language.hpp"
#include "Settings/SettingsFlow.hpp"
#include "Settings/SettingsWorker.hpp"
#include "SignIn/SignInWorker.hpp"
#include "Terminal/Commands.hpp"
#include "Terminal/Text.hpp"
#include <utility>
#include <variant>

namespace fieldbook {

MainFlow::MainFlow(Session& session, DeepLinks& links, MainFlowListener listener)
    : AbstractFlow(orrenby::make<MainContext>(session), orrenby::Void())
    , m_session(session)
    , m_links(links)
    , m_listener(std::move(listener))
{}

MainFlow::~MainFlow() { m_session.trace.step("MainFlow goes"); }

void MainFlow::didStart()
{
    m_session.trace.step("MainFlow has started");
    followFeed();
}

void MainFlow::followFeed()
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
                m_listener.onLost();
            else if (std::holds_alternative<Scanned>(*payload.asValue())) {
                orrenby::NotificationCenter::defaultCenter()->post(feedIsTold);
                m_listener.onTold();
            }
        })
        .store(*context());
}

void MainFlow::obey(const std::string& line)
{
    if (const auto page = firstSubFlow<ComposeFlow>()) {
        const auto outcome = page->take(line);
        if (outcome == ComposeFlow::Outcome::isOver)
            clear();
        if (outcome != ComposeFlow::Outcome::notTaken)
            return;
    }
    std::visit(Cases{
                   [&](const Sort& it) {
                       // Whoever sorts is not known here.
                       orrenby::NotificationCenter::defaultCenter()->post(
                           feedShouldSort, {}, {{orderKey, nameOf(it.order)}});
                   },
                   [&](const ShowDetails& it) { m_session.settings->isDetailed = it.isOn; },
                   [&](const SignIn& it) {
                       orrenby::NotificationCenter::defaultCenter()->post(
                           userShouldSignIn, {}, {{addressKey, it.address}});
                   },
                   [&](const MakeSamples& it) { makeSamples(it.request); },
                   [&](const Speak& it) {
                       choose(it.language);
                       m_session.settings->language = it.language.identifier();
                       say("dates are shown in " + it.language.identifier());
                   },
                   [&](const Refresh&) { refresh(); },
                   [&](const Upload&) { context()->analytics()->uploadAll(); },
                   [&](const Compose&) { compose(); },
                   [&](const ShowSettings&) { showSettings(); },
                   [&](const auto&) { say("no such command; " + std::string(commandHelp())); },
               },
        parseCommand(line));
}

void MainFlow::refresh()
{
    if (const auto feed = firstSubFlow<FeedFlow>())
        feed->context()->withFirstWorker<FetchWorker>([](FetchWorker& service) { service.refresh(); });
}

void MainFlow::waitUntilIdle(orrenby::UniqueFunction<void()> whenIdle)
{
    context()->analytics()->waitForUploads([this, whenIdle = std::move(whenIdle)]() mutable {
        if (const auto feed = firstSubFlow<FeedFlow>())
            feed->context()->withFirstWorker<FetchWorker>(
                [&](FetchWorker& service) { service.waitForAnswer(std::move(whenIdle)); });
    });
}

void MainFlow::compose()
{
    clear();
    attach(orrenby::make<ComposeFlow>(m_session));
}

void MainFlow::showSettings()
{
    clear();
    attach(orrenby::make<SettingsFlow>(m_session));
}

/// One page at a time, beside the feed.
void MainFlow::clear()
{
    detach<ComposeFlow>([](const ComposeFlow&) { return true; });
    detach<SettingsFlow>([](const SettingsFlow&) { return true; });
}

void MainFlow::makeSamples(const SampleRequest& request)
{
    const auto outcome = writeSamples(request, m_session.folder);
    if (const auto problem = outcome.error())
        m_session.terminal.print(m_session.terminal.styled(Style::red, "! " + *problem));
    else
        say(counted(outcome.unwrap(), "sample") + " of " + request.seed);
}

void MainFlow::say(const std::string& text)
{
    m_session.terminal.print(m_session.terminal.styled(Style::faint, "= " + text));
}

} // namespace fieldbook
