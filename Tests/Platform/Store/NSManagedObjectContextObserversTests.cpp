#include "Orrenby/Platform/Store/NSManagedObjectContext.hpp"

#include "Tests/Platform/Store/StoreParts.hpp"
#include "Tests/Support/Recorder.hpp"
#include <gmock/gmock.h>

using namespace orrenby;
using namespace orrenby::tests;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// Gives up what was changed in the context, which is all of it the person's.
using GivingUp = void (*)(const Ref<NSManagedObjectContext>&, const Ref<Person>&);

class NSManagedObjectContextThatGivesUp : public testing::TestWithParam<GivingUp> {
protected:
    void giveUpChanges() { GetParam()(team.context, team.a); }

    const Team team = savedTeam();
};

} // namespace

TEST_P(NSManagedObjectContextThatGivesUp, TellsOfAttributesAndOfBothKindsOfRelationships)
{
    const auto& a = team.a;
    a->name = "z";
    a->employer = nullptr;
    a->friends.erase(team.b);
    const auto recorder = makeRecorder();
    for (const auto* key : {"name", "employer", "friends", "age"})
        a->addObserver(recorder, key, {});

    giveUpChanges();

    EXPECT_THAT(
        recorder->told, ElementsAre("name: none -> none", "employer: none -> none", "friends: none -> none"));
    EXPECT_THAT(a->friends.get(), ElementsAre(team.b));
}

TEST_P(NSManagedObjectContextThatGivesUp, ShowsObserversNothingHalfGivenUp)
{
    const auto& a = team.a;
    a->name = "z";
    a->age = 7;
    const auto recorder = makeRecorder([&](const KeyValueChange&) {
        EXPECT_EQ(a->age.get(), std::nullopt);
        EXPECT_FALSE(team.context->hasChanges());
    });
    a->addObserver(recorder, "name", {});

    giveUpChanges();

    EXPECT_EQ(recorder->told.size(), 1u);
}

TEST_P(NSManagedObjectContextThatGivesUp, KeepsAndSavesWhatAnObserverChangesThen)
{
    const auto& a = team.a;
    a->name = "z";
    a->age = 7;
    const auto recorder = makeRecorder([&](const KeyValueChange&) { a->age = 8; });
    a->addObserver(recorder, "name", {});

    giveUpChanges();

    EXPECT_EQ(a->age.get(), 8);
    EXPECT_THAT(team.context->updatedObjects(), ElementsAre(a));
    team.context->save();
    const auto other = make<NSManagedObjectContext>(team.context->persistentStore());
    EXPECT_EQ(other->object<Person>(a->objectID())->age.get(), 8);
}

TEST_P(NSManagedObjectContextThatGivesUp, GivesUpWhatAnObserverChangedToo)
{
    const auto& a = team.a;
    a->name = "z";
    const auto recorder = makeRecorder([&](const KeyValueChange&) { a->age = 8; });
    a->addObserver(recorder, "name", {});
    giveUpChanges();
    a->removeObserver(*recorder, "name");

    giveUpChanges();

    EXPECT_EQ(a->name.get(), "a");
    EXPECT_EQ(a->age.get(), std::nullopt);
    EXPECT_FALSE(team.context->hasChanges());
}

INSTANTIATE_TEST_SUITE_P(NSManagedObjectContext, NSManagedObjectContextThatGivesUp,
    testing::Values(
        +[](const Ref<NSManagedObjectContext>& context, const Ref<Person>&) { context->rollback(); },
        +[](const Ref<NSManagedObjectContext>& context, const Ref<Person>& person) {
            context->refresh(person, false);
        }),
    [](const auto& giving) { return giving.index == 0 ? "ByRollback" : "ByRefresh"; });

TEST(NSManagedObjectContextObservers, MayChangeAnotherObjectDuringARollback)
{
    const auto [context, company, a, b] = savedTeam();
    a->name = "y";
    b->name = "z";
    const auto whenBack = [](const Ref<Person>& changed) {
        return makeRecorder([=](const KeyValueChange&) { changed->age = 8; });
    };
    const auto first = whenBack(b);
    const auto second = whenBack(a);
    a->addObserver(first, "name", {});
    b->addObserver(second, "name", {});

    context->rollback();

    // The first was given back already when the second was told, the second was not yet when the first was.
    EXPECT_EQ(a->age.get(), 8);
    EXPECT_EQ(b->age.get(), std::nullopt);
    EXPECT_THAT(context->updatedObjects(), ElementsAre(a));
}

TEST(NSManagedObjectContextObservers, KeepWhatTheyChangeWhenAFetchBringsNewerValues)
{
    const auto [context, company, a, b] = savedTeam();
    const auto other = make<NSManagedObjectContext>(context->persistentStore());
    const auto theirs = other->object<Person>(a->objectID());
    theirs->name = "A";
    theirs->age = 7;
    other->save();
    const auto recorder = makeRecorder([a = a](const KeyValueChange&) { a->age = 8; });
    a->addObserver(recorder, "name", {});

    context->fetch<Person>(peopleByName());

    EXPECT_EQ(a->name.get(), "A");
    EXPECT_EQ(a->age.get(), 8);
    context->save();
    EXPECT_THAT(storedNames(context->persistentStore()), ElementsAre("A", "b"));
}

TEST(NSManagedObjectContextObservers, AreToldOfNothingWhenAnUnchangedObjectIsRefreshed)
{
    const auto [context, company, a, b] = savedTeam();
    const auto recorder = makeRecorder();
    for (const auto* key : {"name", "employer", "friends"})
        a->addObserver(recorder, key, {});

    context->refresh(a, false);
    context->refresh(a, true);
    context->rollback();

    EXPECT_THAT(recorder->told, IsEmpty());
}
