#pragma once

/// @file
/// The worker that signs people in.

#include "Application/Counted.hpp"
#include "Application/EventLoop.hpp"
#include "Application/Session.hpp"
#include "Feed/FeedNews.hpp"
#include "Orrenby/Platform/Observing/NotificationCenter.hpp"
#include "Orrenby/Utilities/Discover/AbstractWorker.hpp"
#include "Orrenby/Utilities/Observers/NotificationObserver.hpp"
#include "Orrenby/Utilities/Streams/AnyPublisher.hpp"
#include "Orrenby/Utilities/Streams/PassthroughSubject.hpp"
#include <optional>
#include <string_view>

namespace fieldbook {

/// Asks to sign somebody in. Its user info has the address, a text, under `addressKey`.
inline const orrenby::NotificationName userShouldSignIn = "FieldbookUserShouldSignIn";
inline constexpr auto addressKey = "address";

/// Tells the feed who signs in, and why somebody is refused: the user of the session once it has started,
/// and whoever a notification names. Who signed in last is the session's user.
///
/// There are no passwords. The service learns who it is with the first upload.
///
/// Not synchronised.
class SignInWorker : public orrenby::AbstractWorker, Counted<Part::worker> {
public:
    /// @param session  Outlives the worker.
    explicit SignInWorker(Session& session);
    ~SignInWorker() override;

    /// What it tells from now on. It never fails: the failure is that of the feed which it is part of.
    orrenby::Streams::AnyPublisher<FeedNews, FolderLost> news() const;

protected:
    void didStart() override;
    void willStop() override;

private:
    void take(const orrenby::Notification& notification);
    void signIn(std::string_view address);

    Session& m_session;
    orrenby::Streams::PassthroughSubject<FeedNews, FolderLost> m_news;
    std::optional<orrenby::NotificationObserver> m_requests;
    EventLoop::Watch m_firstUser;
};

} // namespace fieldbook
