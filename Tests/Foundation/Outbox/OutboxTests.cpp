#include "Orrenby/Foundation/Outbox/Outbox.hpp"

#include "Orrenby/Foundation/URLRequest+Builder.hpp"
#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Tests/Foundation/Outbox/OutboxParts.hpp"
#include "Tests/Platform/Store/StoreFailure.hpp"
#include "Tests/Support/TemporaryFolder.hpp"
#include <gmock/gmock.h>
#include <limits>
#include <unordered_set>

using namespace orrenby;
using namespace orrenby::tests;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::IsNull;
using ::testing::Optional;

namespace {

/// An outbox in memory that holds these.
Outbox outboxOf(const std::vector<std::string>& names)
{
    Outbox outbox(outboxContext());
    addSaved(outbox, names);
    return outbox;
}

/// What is due now, one after the other, each begun.
std::vector<std::string> takeAll(Outbox& outbox, Date moment = now)
{
    std::vector<std::string> names;
    while (const auto entry = outbox.take(moment))
        names.push_back(nameOf(entry));
    return names;
}

} // namespace

TEST(Outbox, SendsWhatWaits)
{
    auto outbox = outboxOf({"a", "b"});
    std::vector<std::string> sent;
    const auto send = [&](const URLRequest& request) {
        sent.push_back(request.description());
        return request.url() != "https://example.org/b"_url;
    };
    //! [Sending what waits]
    while (const auto entry = outbox.take()) {
        if (send(entry->request() | signed_("t0k3n")))
            outbox.finish(entry);
        else
            outbox.retry(entry, Date::now() + 60, "no answer");
    }
    //! [Sending what waits]

    EXPECT_THAT(sent,
        ElementsAre(
            "POST https://example.org/a, 2 header fields", "POST https://example.org/b, 2 header fields"));
    EXPECT_EQ(outbox.counts(), (OutboxCounts{.pending = 1}));
    EXPECT_EQ(outbox.entries().at(0)->attempts(), 1);
    EXPECT_THAT(outbox.entries().at(0)->reason(), Optional(std::string("no answer")));
}

TEST(Outbox, GivesNothingWhenItIsEmpty)
{
    Outbox outbox(outboxContext());

    EXPECT_THAT(outbox.next(now), IsNull());
    EXPECT_THAT(outbox.take(now), IsNull());
    EXPECT_EQ(outbox.dueDate(), std::nullopt);
    EXPECT_THAT(outbox.entries(), IsEmpty());
    EXPECT_EQ(outbox.counts(), OutboxCounts());
    EXPECT_EQ(outbox.recover(), 0u);
}

TEST(Outbox, GivesWhatWasSavedFirst)
{
    auto outbox = outboxOf({"c", "a"});
    outbox.add(requestNamed("b"));
    outbox.add(requestNamed("d")); // saved together with the one before
    outbox.context()->save();

    EXPECT_THAT(takeAll(outbox), ElementsAre("c", "a", "b", "d"));
}

TEST(Outbox, DoesNotGiveWhatIsNotSavedYet)
{
    auto outbox = outboxOf({"a"});
    outbox.add(requestNamed("b"));

    EXPECT_EQ(nameOf(outbox.next(now)), "a");
    const auto first = outbox.entries().at(0);
    EXPECT_TRUE(outbox.begin(first, now)); // which saves all of the context
    EXPECT_EQ(nameOf(outbox.next(now)), "b");
}

TEST(Outbox, GivesTheNextOneWithoutTakingItOut)
{
    const auto outbox = outboxOf({"a"});

    EXPECT_EQ(nameOf(outbox.next(now)), "a");
    EXPECT_EQ(nameOf(outbox.next(now)), "a");
    EXPECT_EQ(outbox.counts(), (OutboxCounts{.pending = 1}));
}

TEST(Outbox, PassesOverWhatIsNotDue)
{
    Outbox outbox(outboxContext());
    outbox.add(requestNamed("later"), {.notBefore = now + 1});
    outbox.add(requestNamed("at-once"));
    outbox.add(requestNamed("now"), {.notBefore = now});
    outbox.add(requestNamed("long-ago"), {.notBefore = Date::distantPast()});
    outbox.add(requestNamed("never"), {.notBefore = Date::distantFuture()});
    outbox.context()->save();

    EXPECT_THAT(takeAll(outbox, now), ElementsAre("at-once", "now", "long-ago"));
    EXPECT_THAT(takeAll(outbox, now + 1), ElementsAre("later"));
}

TEST(Outbox, SaysWhenSomethingIsDue)
{
    Outbox outbox(outboxContext());
    outbox.add(requestNamed("b"), {.notBefore = now + 2});
    outbox.add(requestNamed("a"), {.notBefore = now + 1});
    outbox.context()->save();

    EXPECT_EQ(outbox.dueDate(), now + 1);
    EXPECT_TRUE(outbox.begin(outbox.entries().at(1), now));
    EXPECT_EQ(outbox.dueDate(), now + 2);
    addSaved(outbox, {"c"});
    EXPECT_EQ(outbox.dueDate(), Date::distantPast());
}

TEST(Outbox, CountsAnAttemptAndSavesItBeforeAnythingIsSent)
{
    auto outbox = outboxOf({"a"});

    const auto entry = outbox.next(now);
    ASSERT_TRUE(outbox.begin(entry, now));

    EXPECT_FALSE(outbox.context()->hasChanges());
    const auto kept = Outbox(besides(outbox.context())).entries().at(0);
    EXPECT_EQ(kept->state(), OutboxState::Sending);
    EXPECT_EQ(kept->attempts(), 1);
    EXPECT_EQ(kept->begunAt(), now);
    EXPECT_THAT(outbox.next(now), IsNull());
}

TEST(Outbox, BeginsOnlyWhatIsPending)
{
    auto outbox = outboxOf({"a", "b", "c"});
    const auto entries = outbox.entries();
    ASSERT_TRUE(outbox.begin(entries[0], now));
    outbox.giveUp(entries[1], "refused");
    outbox.finish(entries[2]);

    EXPECT_FALSE(outbox.begin(entries[0], now));
    EXPECT_FALSE(outbox.begin(entries[1], now));
    EXPECT_FALSE(outbox.begin(entries[2], now));
    EXPECT_EQ(entries[0]->attempts(), 1);
    EXPECT_EQ(entries[1]->attempts(), 0);
}

TEST(Outbox, BeginsWhatIsNotDueWhenTold)
{
    Outbox outbox(outboxContext());
    const auto entry = outbox.add(requestNamed("a"), {.notBefore = now + 100}).entry;

    EXPECT_TRUE(outbox.begin(entry, now));
    EXPECT_EQ(entry->state(), OutboxState::Sending);
    EXPECT_EQ(entry->notBefore(), std::nullopt);
}

TEST(Outbox, RemovesWhatWasDelivered)
{
    Outbox outbox(outboxContext());
    auto request = requestNamed("a");
    request.setHTTPBody(dataFromText("body"));
    outbox.add(request);
    outbox.context()->save();
    const auto entry = outbox.take(now);

    EXPECT_TRUE(outbox.finish(entry));
    EXPECT_FALSE(outbox.finish(entry));

    const auto other = besides(outbox.context());
    EXPECT_THAT(other->fetch({.entity = "OutboxEntry"}), IsEmpty());
    EXPECT_THAT(other->fetch({.entity = "OutboxBody"}), IsEmpty());
}

TEST(Outbox, RemovesWhatWasNeverBegunOrSaved)
{
    auto outbox = outboxOf({"a"});
    const auto unsaved = outbox.add(requestNamed("b")).entry;

    EXPECT_TRUE(outbox.remove(outbox.next(now)));
    EXPECT_TRUE(outbox.remove(unsaved));

    EXPECT_THAT(outbox.entries(), IsEmpty());
    EXPECT_FALSE(outbox.context()->hasChanges());
    EXPECT_FALSE(outbox.remove(unsaved));
}

TEST(Outbox, WaitsAfterAFailureAndKeepsTheCount)
{
    auto outbox = outboxOf({"a", "b"});
    const auto entry = outbox.take(now);

    EXPECT_TRUE(outbox.retry(entry, now + 10, "no answer"));

    EXPECT_EQ(entry->state(), OutboxState::Pending);
    EXPECT_EQ(entry->attempts(), 1);
    EXPECT_EQ(entry->notBefore(), now + 10);
    EXPECT_EQ(entry->begunAt(), std::nullopt);
    EXPECT_THAT(entry->reason(), Optional(std::string("no answer")));
    EXPECT_FALSE(outbox.context()->hasChanges());
    EXPECT_THAT(takeAll(outbox, now), ElementsAre("b"));
    EXPECT_THAT(takeAll(outbox, now + 10), ElementsAre("a"));
    EXPECT_EQ(entry->attempts(), 2);
    EXPECT_THAT(entry->reason(), Optional(std::string("no answer")));
}

TEST(Outbox, TriesOnlyAgainWhatIsBeingSent)
{
    auto outbox = outboxOf({"a", "b"});
    const auto entries = outbox.entries();
    outbox.finish(entries[1]);

    EXPECT_FALSE(outbox.retry(entries[0], now, "no answer"));
    EXPECT_FALSE(outbox.retry(entries[1], now, "no answer"));
    EXPECT_EQ(entries[0]->reason(), std::nullopt);
}

TEST(Outbox, TriesAgainByASchedule)
{
    auto outbox = outboxOf({"a"});
    Date moment = now;
    std::vector<double> delays;
    const auto wait = [&](Date until) { delays.push_back(until - moment), moment = until; };
    //! [Trying again by a schedule]
    const OutboxSchedule schedule{.interval = 30, .limit = 3};
    while (const auto entry = outbox.take(moment)) {
        const auto due = outbox.retryOrGiveUp(entry, schedule, "no answer", moment);
        if (due)
            wait(*due);
    }
    //! [Trying again by a schedule]

    EXPECT_THAT(delays, ElementsAre(30.0, 60.0, 120.0));
    EXPECT_EQ(outbox.counts(), (OutboxCounts{.givenUp = 1}));
    EXPECT_EQ(outbox.entries().at(0)->attempts(), 4);
    EXPECT_THAT(outbox.entries().at(0)->reason(), Optional(std::string("no answer")));
}

TEST(Outbox, GivesUpAtOnceByAScheduleWithoutAttempts)
{
    auto outbox = outboxOf({"a"});

    EXPECT_EQ(outbox.retryOrGiveUp(outbox.take(now), {.limit = 0}, "no answer", now), std::nullopt);

    EXPECT_EQ(outbox.counts(), (OutboxCounts{.givenUp = 1}));
}

TEST(Outbox, GivesUpAfter32AttemptsWithJitter)
{
    auto outbox = outboxOf({"a"});
    const OutboxSchedule schedule{.limit = 1000, .method = Retry::ExponentialJitter{}};
    Date moment = now;
    int delays = 0;

    while (const auto entry = outbox.take(moment))
        if (const auto due = outbox.retryOrGiveUp(entry, schedule, "no answer", moment)) {
            moment = *due;
            ++delays;
        }

    EXPECT_EQ(delays, 32);
    EXPECT_EQ(outbox.counts(), (OutboxCounts{.givenUp = 1}));
}

TEST(Outbox, LeavesAloneByScheduleWhatItDoesNotSend)
{
    auto outbox = outboxOf({"a"});
    const auto entry = outbox.next(now);

    EXPECT_EQ(outbox.retryOrGiveUp(entry, {}, "no answer", now), std::nullopt);
    EXPECT_EQ(outbox.retryOrGiveUp(entry, {.limit = 0}, "no answer", now), std::nullopt);

    EXPECT_EQ(entry->state(), OutboxState::Pending);
    EXPECT_EQ(entry->reason(), std::nullopt);
}

TEST(Outbox, KeepsWhatWasGivenUpUntilItIsPutBack)
{
    auto outbox = outboxOf({"a", "b"});
    const auto entry = outbox.take(now);

    EXPECT_TRUE(outbox.giveUp(entry, "refused"));
    EXPECT_FALSE(outbox.giveUp(entry, "again"));
    EXPECT_EQ(entry->state(), OutboxState::GivenUp);
    EXPECT_THAT(entry->reason(), Optional(std::string("refused")));
    EXPECT_THAT(takeAll(outbox, now), ElementsAre("b"));

    EXPECT_TRUE(outbox.putBack(entry));
    EXPECT_FALSE(outbox.putBack(entry));
    EXPECT_EQ(entry->attempts(), 1);
    EXPECT_THAT(takeAll(outbox, now), ElementsAre("a"));
    EXPECT_EQ(entry->attempts(), 2);
}

TEST(Outbox, PutsBackForLater)
{
    auto outbox = outboxOf({"a"});
    const auto entry = outbox.next(now);
    outbox.giveUp(entry, "refused");

    EXPECT_TRUE(outbox.putBack(entry, now + 5));

    EXPECT_EQ(outbox.dueDate(), now + 5);
    EXPECT_THAT(outbox.next(now), IsNull());
}

TEST(Outbox, GivesUpWhatWaits)
{
    auto outbox = outboxOf({"a"});

    EXPECT_TRUE(outbox.giveUp(outbox.next(now), "file is missing"));

    EXPECT_EQ(outbox.counts(), (OutboxCounts{.givenUp = 1}));
    EXPECT_EQ(outbox.dueDate(), std::nullopt);
}

TEST(Outbox, ListsItsEntriesByState)
{
    auto outbox = outboxOf({"a", "b", "c", "d"});
    EXPECT_EQ(nameOf(outbox.take(now)), "a");
    outbox.giveUp(outbox.take(now), "refused");

    EXPECT_THAT(namesOf(outbox.entries()), ElementsAre("a", "b", "c", "d"));
    EXPECT_THAT(namesOf(outbox.entries(OutboxState::Pending)), ElementsAre("c", "d"));
    EXPECT_THAT(namesOf(outbox.entries(OutboxState::Sending)), ElementsAre("a"));
    EXPECT_THAT(namesOf(outbox.entries(OutboxState::GivenUp)), ElementsAre("b"));
    EXPECT_EQ(outbox.counts(), (OutboxCounts{.pending = 2, .sending = 1, .givenUp = 1}));
    EXPECT_EQ(describe(outbox.counts()), "2 pending, 1 sending, 1 given up");
}

TEST(Outbox, GoesOnAfterTheStoreWasOpenedAgain)
{
    const TemporaryFolder folder;
    {
        Outbox outbox(outboxContext(folder.file("store")));
        addSaved(outbox, {"a", "b"});
        ASSERT_EQ(nameOf(outbox.take(now)), "a"); // and the process ends
    }
    const auto context = outboxContext(folder.file("store"));
    //! [Going on after the process was killed]
    Outbox outbox(context);
    EXPECT_EQ(outbox.recover(), 1u);

    const auto entry = outbox.take();
    EXPECT_EQ(entry->attempts(), 2);
    //! [Going on after the process was killed]
    EXPECT_EQ(nameOf(entry), "a");
    EXPECT_EQ(nameOf(outbox.take()), "b");
}

TEST(Outbox, DoesNotRecoverWhatItSendsItself)
{
    auto outbox = outboxOf({"a"});
    auto copy = outbox;
    const auto entry = outbox.take(now);

    EXPECT_EQ(outbox.recover(), 0u);
    EXPECT_EQ(copy.recover(), 0u);
    EXPECT_TRUE(copy.retry(entry, now, "no answer"));
}

TEST(Outbox, RecoversOnlyWhatBeganBefore)
{
    auto outbox = outboxOf({"a", "b"});
    ASSERT_TRUE(outbox.begin(outbox.entries()[0], now));
    ASSERT_TRUE(outbox.begin(outbox.entries()[1], now + 1));
    Outbox other(besides(outbox.context()));

    EXPECT_EQ(other.recover(now + 1), 1u);

    EXPECT_THAT(namesOf(other.entries(OutboxState::Pending)), ElementsAre("a"));
    EXPECT_EQ(other.entries()[0]->begunAt(), std::nullopt);
}

TEST(Outbox, SavesWhateverElseIsUnsavedInTheContext)
{
    auto outbox = outboxOf({"a"});
    outbox.context()->insert("Note")->setValue("text", "n");

    EXPECT_NE(outbox.take(now), nullptr);

    EXPECT_EQ(besides(outbox.context())->fetch({.entity = "Note"}).size(), 1u);
}

TEST(Outbox, LeavesARequestAsItWasWhenTheSaveFails)
{
    auto outbox = outboxOf({"a"});
    const auto note = outbox.context()->insert("Note"); // without its text, so that nothing is saved
    const auto entry = outbox.next(now);

    EXPECT_EQ(failureOf([&] { EXPECT_FALSE(outbox.begin(entry, now)); }), StoreError::Kind::InvalidValue);
    EXPECT_EQ(entry->state(), OutboxState::Pending);
    EXPECT_EQ(entry->attempts(), 0);
    EXPECT_EQ(nameOf(outbox.next(now)), "a");

    note->setValue("text", "n");
    EXPECT_TRUE(outbox.begin(entry, now));
    EXPECT_EQ(entry->attempts(), 1);
}

TEST(Outbox, KeepsARemovalThatCouldNotBeSavedForTheNextCall)
{
    auto outbox = outboxOf({"a"});
    const auto entry = outbox.take(now);
    const auto note = outbox.context()->insert("Note");

    EXPECT_EQ(failureOf([&] { outbox.finish(entry); }), StoreError::Kind::InvalidValue);
    EXPECT_THAT(outbox.entries(), IsEmpty());

    note->setValue("text", "n");
    EXPECT_TRUE(outbox.finish(entry));
    EXPECT_THAT(Outbox(besides(outbox.context())).entries(), IsEmpty());
}

TEST(Outbox, RefusesATimeThatIsNoNumber)
{
    auto outbox = outboxOf({"a"});
    const auto entry = outbox.take(now);
    const Date noDate(std::numeric_limits<double>::quiet_NaN());

    EXPECT_EQ(failureOf([&] { outbox.retry(entry, noDate, "no answer"); }), StoreError::Kind::InvalidValue);

    EXPECT_EQ(entry->state(), OutboxState::Sending);
    EXPECT_TRUE(outbox.retry(entry, now, "no answer"));
}

TEST(Outbox, NeverSendsBeforeTheEndOfTime)
{
    auto outbox = outboxOf({"a"});

    outbox.retry(outbox.take(now), Date::distantFuture(), "no answer");

    EXPECT_THAT(outbox.next(Date(1e300)), IsNull());
    EXPECT_EQ(outbox.dueDate(), Date::distantFuture());
    EXPECT_EQ(nameOf(outbox.next(Date::distantFuture())), "a");
}

TEST(Outbox, NeverCountsBeyondTheLargestNumber)
{
    auto outbox = outboxOf({"a"});
    const auto entry = outbox.next(now);
    constexpr auto most = std::numeric_limits<std::int64_t>::max();
    entry->setValue("attempts", most);
    outbox.context()->save();

    EXPECT_TRUE(outbox.begin(entry, now));
    EXPECT_EQ(entry->attempts(), most);
    EXPECT_EQ(outbox.retryOrGiveUp(entry, {}, "no answer", now), std::nullopt);
}

TEST(OutboxCounts, AreAValue)
{
    const OutboxCounts counts{.pending = 1, .sending = 2, .givenUp = 3};

    EXPECT_EQ(std::unordered_set({counts, counts}).size(), 1u);
    EXPECT_NE(counts, OutboxCounts());
    EXPECT_EQ(counts.description(), "1 pending, 2 sending, 3 given up");
}

TEST(OutboxDeath, SendsFromAContextWithoutParentOnly)
{
    Outbox outbox(make<NSManagedObjectContext>(outboxContext()));
    const auto entry = outbox.add(requestNamed("a")).entry;

    constexpr auto message = "What a context with a parent saves is not kept yet: file Foundation/Outbox";
    EXPECT_DEATH((void)outbox.next(now), message);
    EXPECT_DEATH((void)outbox.begin(entry, now), message);
    EXPECT_DEATH(outbox.recover(), message);
}

TEST(OutboxDeath, UsesEntriesOfItsContextOnly)
{
    auto outbox = outboxOf({"a"});
    const auto foreign = Outbox(besides(outbox.context())).next(now);

    constexpr auto message = "Only entries of the outbox's context can be used: file Foundation/Outbox";
    EXPECT_DEATH((void)outbox.begin(foreign, now), message);
    EXPECT_DEATH(outbox.finish(nullptr), message);
}
