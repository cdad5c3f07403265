#pragma once

/// @file
/// The worker that shows what the settings change.

#include "Counted.hpp"
#include "Orrenby/Platform/Observing/NotificationCenter.hpp"
#include "Orrenby/Utilities/Discover/AbstractWorker.hpp"
#include "Orrenby/Utilities/Observers/KeyPathObserver.hpp"
#include "Orrenby/Utilities/Observers/NotificationObserver.hpp"
#include "Session.hpp"
#include <optional>

namespace fieldbook {

/// Asks the feed to sort itself otherwise: whoever posts it need not know the feed. Its user info has the
/// order's name under `orderKey`.
inline const orrenby::NotificationName feedShouldSort = "FieldbookFeedShouldSort";
inline constexpr auto orderKey = "order";

/// Takes the order from notifications into the settings. Lists the reports for each of them, and whenever the
/// order has changed in another way.
class SettingsWorker : public orrenby::AbstractWorker, Counted<Part::worker> {
public:
    /// @param session  Outlives the worker.
    explicit SettingsWorker(Session& session);
    ~SettingsWorker() override;

protected:
    void didStart() override;
    void willStop() override;

private:
    void take(const orrenby::Notification& notification);
    void list(SortOrder order);
    void say(const std::string& text);

    Session& m_session;
    std::optional<orrenby::NotificationObserver> m_notifications;
    orrenby::Ref<orrenby::KeyPathObserver<Settings>> m_changes;
};

} // namespace fieldbook
