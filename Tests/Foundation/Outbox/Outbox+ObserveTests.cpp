#include "Orrenby/Foundation/Outbox/Outbox+Observe.hpp"

#include "Tests/Foundation/Outbox/OutboxParts.hpp"
#include <gmock/gmock.h>

using namespace orrenby;
using namespace orrenby::tests;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using Names = std::vector<std::string>;

} // namespace

TEST(OutboxObserve, GivesWhatWaitsNowAndAfterEachChange)
{
    std::vector<Names> shown;
    const auto show = [&](const Names& names) { shown.push_back(names); };
    Outbox outbox(outboxContext());
    //! [Observing what waits]
    const auto handle = observe(outbox, OutboxState::Pending)
                            .map([](const auto& entries) { return namesOf(entries); })
                            .sink([&](const auto& payload) { show(*payload.asValue()); });
    outbox.add(requestNamed("a"));
    outbox.context()->save();
    //! [Observing what waits]
    addSaved(outbox, {"b"});
    const auto entry = outbox.take(now);
    outbox.retry(entry, now, "no answer");

    EXPECT_THAT(shown, ElementsAre(IsEmpty(), Names{"a"}, Names{"a", "b"}, Names{"b"}, Names{"a", "b"}));
}

TEST(OutboxObserve, GivesAllEntriesWithoutAState)
{
    std::vector<std::size_t> sizes;
    Outbox outbox(outboxContext());
    addSaved(outbox, {"a"});

    const auto handle = observe(outbox).sink(
        [&](const auto& payload) { sizes.push_back(payload.asValue()->size()); });
    const auto entry = outbox.take(now); // the same entry with another state
    outbox.finish(entry);

    EXPECT_THAT(sizes, ElementsAre(1u, 1u, 0u));
}

TEST(OutboxObserve, CountsAndSkipsTheSameCounts)
{
    std::vector<OutboxCounts> counts;
    Outbox outbox(outboxContext());
    const auto handle = observeCounts(outbox).sink(
        [&](const auto& payload) { counts.push_back(*payload.asValue()); });

    addSaved(outbox, {"a"});
    outbox.context()->insert("Note")->setValue("text", "n");
    outbox.context()->save();
    const auto entry = outbox.take(now);
    outbox.retry(entry, now + 1, "no answer");
    outbox.giveUp(entry, "refused");

    using C = OutboxCounts;
    EXPECT_THAT(counts, ElementsAre(C(), C{.pending = 1}, C{.sending = 1}, C{.pending = 1}, C{.givenUp = 1}));
}

TEST(OutboxObserve, SeesWhatOtherContextsPutIn)
{
    std::vector<OutboxCounts> counts;
    const Outbox outbox(outboxContext());
    auto handle = outbox.context()->performAndWait([&] {
        return observeCounts(outbox).sink([&](const auto& payload) { counts.push_back(*payload.asValue()); });
    });
    Outbox other(besides(outbox.context()));

    addSaved(other, {"a"});
    outbox.context()->performAndWait([&] { handle = {}; });

    EXPECT_THAT(counts, ElementsAre(OutboxCounts(), OutboxCounts{.pending = 1}));
}
