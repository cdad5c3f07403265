#include "SignIn/SignInWorker.hpp"

#include "SignIn/SignIn.hpp"
#include <chrono>
#include <string>

namespace fieldbook {

SignInWorker::SignInWorker(Session& session)
    : m_session(session)
{}

SignInWorker::~SignInWorker() = default;

orrenby::Streams::AnyPublisher<FeedNews, FolderLost> SignInWorker::news() const
{
    return m_news.eraseToAnyPublisher();
}

void SignInWorker::didStart()
{
    m_session.trace.step("SignInWorker starts");
    m_requests.emplace(orrenby::NotificationCenter::defaultCenter());
    m_requests->observe({.name = userShouldSignIn}, [this](const auto& notification) { take(notification); });
    if (m_session.user)
        m_firstUser = m_session.loop.after(
            std::chrono::milliseconds(0), [this] { m_news.send(FeedNews(SignedIn{*m_session.user})); });
}

void SignInWorker::willStop()
{
    m_session.trace.step("SignInWorker stops");
    m_firstUser = {};
    m_requests.reset();
}

void SignInWorker::take(const orrenby::Notification& notification)
{
    const auto* const address = notification.userInfo().find(addressKey);
    if (const auto text = address ? address->cast<std::string>() : std::nullopt)
        signIn(*text);
}

void SignInWorker::signIn(std::string_view address)
{
    const auto outcome = addressToSignIn(address);
    if (const auto problem = outcome.error())
        return m_news.send(FeedNews(SignInRefused{*problem}));
    m_session.user = outcome.unwrap();
    m_news.send(FeedNews(SignedIn{*m_session.user}));
}

} // namespace fieldbook
