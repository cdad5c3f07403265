#include "Orrenby/Foundation/Outbox/Outbox.hpp"

#include "Tests/Foundation/Outbox/OutboxParts.hpp"
#include "Tests/Platform/Store/StoreFailure.hpp"
#include <gmock/gmock.h>

using namespace orrenby;
using namespace orrenby::tests;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::IsNull;

namespace {

/// Two senders of one store, as two processes are of one file.
struct Two {
    explicit Two(const std::vector<std::string>& names) { addSaved(first, names); }

    Outbox first = Outbox(outboxContext());
    Outbox second = Outbox(besides(first.context()));
};

} // namespace

TEST(OutboxConflicts, AnEntryIsBegunByOneOnly)
{
    Two two({"a", "b"});
    const auto mine = two.first.next(now);
    const auto theirs = two.second.next(now);

    EXPECT_TRUE(two.second.begin(theirs, now));
    EXPECT_FALSE(two.first.begin(mine, now));

    EXPECT_EQ(mine->state(), OutboxState::Sending);
    EXPECT_EQ(mine->attempts(), 1);
    EXPECT_FALSE(two.first.context()->hasChanges());
    EXPECT_EQ(nameOf(two.first.take(now)), "b");
    EXPECT_THAT(two.second.take(now), IsNull());
}

TEST(OutboxConflicts, AnEntryThatSomebodyElseDeliveredIsNotBegun)
{
    Two two({"a"});
    const auto mine = two.first.next(now);
    two.second.finish(two.second.take(now));

    EXPECT_FALSE(two.first.begin(mine, now));

    EXPECT_THAT(two.first.entries(), IsEmpty());
    EXPECT_FALSE(two.first.context()->hasChanges());
    EXPECT_THAT(two.first.take(now), IsNull());
}

TEST(OutboxConflicts, WhatWasTakenOverIsNotTriedAgainByItsFirstSender)
{
    Two two({"a"});
    const auto mine = two.first.take(now);
    EXPECT_EQ(two.second.recover(), 1u);
    const auto theirs = two.second.take(now);

    EXPECT_FALSE(two.first.retry(mine, now + 5, "too late"));
    EXPECT_FALSE(two.first.giveUp(mine, "too late"));
    EXPECT_EQ(two.first.retryOrGiveUp(mine, {.limit = 0}, "too late", now), std::nullopt);

    EXPECT_EQ(theirs->attempts(), 2);
    EXPECT_TRUE(two.second.retry(theirs, now, "no answer"));
}

TEST(OutboxConflicts, WhatWasTakenOverIsNotTriedAgainEvenWhenThatWasRead)
{
    Two two({"a"});
    const auto mine = two.first.take(now);
    two.second.recover();
    const auto theirs = two.second.take(now);
    EXPECT_EQ(two.first.entries().at(0)->attempts(), 2); // reads what was saved

    EXPECT_FALSE(two.first.retry(mine, now + 5, "too late"));

    EXPECT_EQ(theirs->state(), OutboxState::Sending);
}

TEST(OutboxConflicts, WhatWasDeliveredIsGoneWhateverOthersDidToIt)
{
    Two two({"a"});
    const auto mine = two.first.take(now);
    two.second.recover();
    const auto theirs = two.second.take(now);

    EXPECT_TRUE(two.first.finish(mine));
    EXPECT_FALSE(two.second.finish(theirs));

    EXPECT_THAT(Outbox(besides(two.first.context())).entries(), IsEmpty());
    EXPECT_FALSE(two.second.context()->hasChanges());
}

TEST(OutboxConflicts, WhatIsGoneIsNeitherTriedAgainNorGivenUp)
{
    Two two({"a"});
    const auto mine = two.first.take(now);
    two.second.remove(two.second.entries().at(0));

    EXPECT_FALSE(two.first.retry(mine, now, "no answer"));
    EXPECT_FALSE(two.first.giveUp(mine, "no answer"));
    EXPECT_FALSE(two.first.finish(mine));

    EXPECT_FALSE(two.first.context()->hasChanges());
}

TEST(OutboxConflicts, RecoveringMeetsWhoeverIsStillSending)
{
    Two two({"a", "b"});
    const auto slow = two.first.take(now);
    const auto done = two.first.take(now);
    two.second.entries(); // known there as being sent
    two.first.finish(done);

    EXPECT_EQ(two.second.recover(), 1u);

    EXPECT_THAT(namesOf(two.second.entries(OutboxState::Pending)), ElementsAre("a"));
}

TEST(OutboxConflicts, OfTwoOfTheSameKeyOnlyTheOneThatWasSavedFirstIsSent)
{
    Two two({});
    two.first.add(requestNamed("first"), {.key = "k"});
    two.second.add(requestNamed("second"), {.key = "k"}); // neither sees the other
    two.first.context()->save();
    two.second.context()->save();
    addSaved(two.first, {"other"});

    EXPECT_EQ(nameOf(two.second.take(now)), "first");
    EXPECT_EQ(nameOf(two.second.take(now)), "other");
    EXPECT_THAT(two.second.take(now), IsNull());
    EXPECT_EQ(two.second.dueDate(), std::nullopt);
    EXPECT_EQ(nameOf(two.first.add(requestNamed("third"), {.key = "k"}).entry), "first");

    two.second.finish(two.second.entries().at(0));
    EXPECT_THAT(namesOf(two.first.entries()), ElementsAre("other"));
}

TEST(OutboxConflicts, TheSecondOfTheSameKeyWaitsWithTheFirst)
{
    Two two({});
    two.first.add(requestNamed("first"), {.key = "k"});
    two.second.add(requestNamed("second"), {.key = "k"});
    two.first.context()->save();
    two.second.context()->save();

    const auto first = two.first.take(now);
    two.first.retry(first, now + 10, "no answer");

    EXPECT_THAT(two.first.next(now), IsNull());
    EXPECT_EQ(two.first.dueDate(), now + 10);
    EXPECT_EQ(nameOf(two.first.next(now + 10)), "first");
}

TEST(OutboxConflicts, OthersOfTheContextAreTheApplicationsOwn)
{
    Two two({"a"});
    const auto& context = two.first.context();
    const auto note = context->insert("Note");
    note->setValue("text", "1");
    context->save();
    const auto theirs = two.second.context()->fetch({.entity = "Note"}).at(0);
    theirs->setValue("text", "2");
    two.second.context()->save();
    note->setValue("text", "3");
    const auto entry = two.first.next(now);

    EXPECT_EQ(failureOf([&] { EXPECT_FALSE(two.first.begin(entry, now)); }), StoreError::Kind::Conflict);
    EXPECT_EQ(entry->attempts(), 0);
    EXPECT_EQ(note->value("text"), Any("3"));

    context->refresh(note, true);
    EXPECT_TRUE(two.first.begin(entry, now));
    EXPECT_EQ(entry->attempts(), 1);
}
