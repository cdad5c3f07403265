#pragma once

/// @file
/// The worker that shows what the settings change.

#include "Application/Counted.hpp"
#include "Application/Session.hpp"
#include "Feed/Listing.hpp"
#include "Orrenby/Platform/Observing/NotificationCenter.hpp"
#include "Orrenby/Utilities/Discover/AbstractWorker.hpp"
#include "Orrenby/Utilities/Observers/KeyPathObserver.hpp"
#include "Orrenby/Utilities/Observers/NotificationObserver.hpp"
#include <optional>
#include <string>
#include <vector>

namespace fieldbook {

/// Asks the feed to sort itself otherwise: whoever posts it need not know the feed. Its user info has the
/// order's name under `orderKey`.
inline const orrenby::NotificationName feedShouldSort = "FieldbookFeedShouldSort";
inline constexpr auto orderKey = "order";

/// Tells the feed that all reports of the beginning are known.
inline const orrenby::NotificationName feedIsTold = "FieldbookFeedIsTold";

/// Takes the order from notifications into the settings, and lists the reports when somebody asks for their
/// order the first time, or for the order that they are in. From then on it tells which rows another order
/// moves, and with all news what became of the rows.
///
/// Where no report is known yet, as when the station asks, the list waits until those of the beginning are.
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
    void sort(SortOrder order);
    void keepPromise();
    void tellNews();
    void print(const std::vector<std::string>& lines);
    void say(const std::string& text);

    Session& m_session;
    std::optional<Listing> m_listing;
    bool m_isTold = false;      ///< Whether the reports of the beginning are known.
    bool m_hasPromised = false; ///< To list them as soon as they are.
    std::optional<orrenby::NotificationObserver> m_notifications;
    orrenby::Ref<orrenby::KeyPathObserver<Settings>> m_changes;
};

} // namespace fieldbook
