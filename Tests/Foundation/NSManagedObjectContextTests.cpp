#include "Orrenby/Foundation/NSManagedObjectContext.hpp"

#include "Orrenby/Platform/Errors/AnyError.hpp"
#include "Orrenby/Platform/Observing/NotificationCenter.hpp"
#include "Orrenby/Platform/Scheduling/DispatchQueue.hpp"
#include <gmock/gmock.h>
#include <stdexcept>
#include <thread>

using namespace orrenby;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Context = Ref<NSManagedObjectContext>;

Context makeContext()
{
    const auto model = NSManagedObjectModel::make(1, {{.name = "Note", .attributes = {{.name = "text"}}}});
    return make<NSManagedObjectContext>(PersistentStore::open(model));
}

void insertNote(const Context& context, const Any& text = "text")
{
    context->insert("Note")->setValue("text", text);
}

std::size_t savedNotes(const Context& context)
{
    return make<NSManagedObjectContext>(context->persistentStore())->fetch({.entity = "Note"}).size();
}

} // namespace

TEST(NSManagedObjectContextValidity, IsFalseUntilItIsSet)
{
    const auto context = makeContext();

    EXPECT_FALSE(context | isValid);
    setIsValid(context, true);
    EXPECT_TRUE(isValid(context));
    setIsValid(context, false);
    EXPECT_FALSE(context | isValid);
}

TEST(NSManagedObjectContextValidity, IsABooleanInTheUserInformation)
{
    const auto context = makeContext();

    setIsValid(context, true);

    EXPECT_EQ(context->userInfo(), Dictionary({{"CoreDataServiceContextIsValidKey", true}}));
}

TEST(NSManagedObjectContextValidity, WhatIsNoBooleanIsFalse)
{
    const auto context = makeContext();

    for (const Any& value : {Any(1), Any(1.0), Any("true"), Any()}) {
        context->userInfo().set("CoreDataServiceContextIsValidKey", value);
        EXPECT_FALSE(context | isValid) << value.description();
    }
}

TEST(NSManagedObjectContextValidity, IsSetForTheContextAlone)
{
    const auto parent = makeContext();
    const auto context = make<NSManagedObjectContext>(parent);

    set(context, {.valid = true});

    EXPECT_TRUE(context | isValid);
    EXPECT_FALSE(parent | isValid);
}

TEST(NSManagedObjectContextValidity, IsSetForOneLevelOfParents)
{
    const auto grandparent = makeContext();
    const auto parent = make<NSManagedObjectContext>(grandparent);
    const auto context = make<NSManagedObjectContext>(parent);

    set(context, {.valid = true, .withParent = true});
    EXPECT_TRUE(context | isValid);
    EXPECT_TRUE(parent | isValid);
    EXPECT_FALSE(grandparent | isValid);

    set(context, {.valid = false, .withParent = true});
    EXPECT_FALSE(context | isValid);
    EXPECT_FALSE(parent | isValid);
}

TEST(NSManagedObjectContextValidity, WithoutAParentOnlyTheContextChanges)
{
    const auto context = makeContext();
    setIsValid(context, true);

    set(context, {.valid = false, .withParent = true});

    EXPECT_FALSE(context | isValid);
}

TEST(NSManagedObjectContextValidity, OfTheParentIsSetOnItsQueue)
{
    const auto parent = makeContext();
    const auto context = make<NSManagedObjectContext>(parent);
    parent->perform([&] { setIsValid(parent, false); });

    set(context, {.valid = true, .withParent = true});

    EXPECT_TRUE(parent | isValid);
}

TEST(NSManagedObjectContextValidity, OfTheParentMayBeSetOnItsQueue)
{
    const auto parent = makeContext();
    const auto context = make<NSManagedObjectContext>(parent);

    parent->performAndWait([&] { set(context, {.valid = true, .withParent = true}); });

    EXPECT_TRUE(parent | isValid);
}

TEST(NSManagedObjectContextSaveChanges, SavesAValidContext)
{
    //! [Saving what is valid]
    const auto context = makeContext();
    context->insert("Note")->setValue("text", "Call Eva");

    context | saveChanges;
    EXPECT_TRUE(context->hasChanges());

    setIsValid(context, true);
    context | saveChanges;
    EXPECT_FALSE(context->hasChanges());
    //! [Saving what is valid]
    EXPECT_EQ(savedNotes(context), 1u);
}

TEST(NSManagedObjectContextSaveChanges, OfAnInvalidContextSavesNothingAndThrowsNothing)
{
    const auto context = makeContext();
    setIsValid(context, true);
    setIsValid(context, false);
    insertNote(context);
    insertNote(context, Any()); // no save would take it

    EXPECT_NO_THROW(saveChanges(context));

    EXPECT_EQ(context->insertedObjects().size(), 2u);
    EXPECT_EQ(savedNotes(context), 0u);
}

TEST(NSManagedObjectContextSaveChanges, OfAContextThatWasNeverMarkedSavesNothing)
{
    const auto context = makeContext();
    insertNote(context);

    saveChanges(context);

    EXPECT_TRUE(context->hasChanges());
    EXPECT_EQ(savedNotes(context), 0u);
}

TEST(NSManagedObjectContextSaveChanges, OutlivesAContextThatIsLetGoByWhoHearsOfTheSave)
{
    auto context = makeContext();
    const auto store = context->persistentStore();
    setIsValid(context, true);
    insertNote(context);
    const auto token = NotificationCenter::defaultCenter()->addObserver(
        {.name = NSManagedObjectContextDidSaveNotification}, [&](const Notification&) { context = nullptr; });

    saveChanges(context);

    NotificationCenter::defaultCenter()->removeObserver(token);
    EXPECT_EQ(savedNotes(make<NSManagedObjectContext>(store)), 1u);
}

TEST(NSManagedObjectContextTrySaveChanges, GivesTheFailureOfASave)
{
    const auto context = makeContext();
    setIsValid(context, true);

    //! [Saving without a throw]
    const auto note = context->insert("Note"); // its text is missing
    EXPECT_EQ((context | trySaveChanges).error()->kind(), StoreError::Kind::InvalidValue);

    note->setValue("text", "Call Eva");
    EXPECT_TRUE((context | trySaveChanges).isSuccess());
    //! [Saving without a throw]
    EXPECT_EQ(savedNotes(context), 1u);
}

TEST(NSManagedObjectContextTrySaveChanges, SucceedsWhereNothingIsToBeSaved)
{
    const auto context = makeContext();

    EXPECT_TRUE(trySaveChanges(context).isSuccess());
    insertNote(context, Any());
    EXPECT_TRUE(trySaveChanges(context).isSuccess()) << "it is not valid";
    EXPECT_TRUE(context->hasChanges());
}

TEST(NSManagedObjectContextSaveChanges, WithoutChangesDoesNothing)
{
    const auto context = makeContext();
    setIsValid(context, true);

    EXPECT_NO_THROW(saveChanges(context));
}

TEST(NSManagedObjectContextSaveChanges, ThrowsTheFailureOfASaveAndKeepsTheChanges)
{
    const auto context = makeContext();
    setIsValid(context, true);
    insertNote(context, Any());

    EXPECT_THROW(saveChanges(context), StoreError);
    EXPECT_TRUE(context->hasChanges());
}

TEST(NSManagedObjectContextCommit, PreparesRunsSavesAndCleansUpInThisOrder)
{
    const auto context = makeContext();
    std::vector<std::string> steps;

    //! [Committing a transaction]
    commit(context,
        {.prepare = [&](const Context&) { steps.push_back("prepare"); },
            .cleanup = [&](const Context& own) { steps.push_back(own->hasChanges() ? "unsaved" : "saved"); }},
        [&](const Context& own) {
            own->insert("Note")->setValue("text", "Call Eva");
            steps.push_back("transaction");
        });

    EXPECT_THAT(steps, ElementsAre("prepare", "transaction", "saved"));
    //! [Committing a transaction]
    EXPECT_EQ(savedNotes(context), 1u);
}

TEST(NSManagedObjectContextCommit, NeedsNeitherPreparationNorCleanup)
{
    const auto context = makeContext();

    commit(context, {}, [](const Context& own) { insertNote(own); });

    EXPECT_EQ(savedNotes(context), 1u);
}

TEST(NSManagedObjectContextCommit, DoesNotAskWhetherTheContextIsValid)
{
    const auto context = makeContext();
    setIsValid(context, false);

    commit(context, {}, [](const Context& own) { insertNote(own); });

    EXPECT_FALSE(context->hasChanges());
}

TEST(NSManagedObjectContextCommit, ATransactionThatThrowsIsNotSavedButCleanedUp)
{
    const auto context = makeContext();
    std::vector<std::string> steps;

    EXPECT_THROW(commit(context, {.cleanup = [&](const Context&) { steps.push_back("cleanup"); }},
                     [&](const Context& own) {
                         insertNote(own);
                         throw std::runtime_error("no");
                     }),
        std::runtime_error);

    EXPECT_THAT(steps, ElementsAre("cleanup"));
    EXPECT_EQ(savedNotes(context), 0u);
    EXPECT_TRUE(context->hasChanges());
}

TEST(NSManagedObjectContextCommit, ASaveThatFailsIsThrownAfterTheCleanup)
{
    const auto context = makeContext();
    bool isCleanedUp = false;

    EXPECT_THROW(commit(context, {.cleanup = [&](const Context&) { isCleanedUp = true; }},
                     [](const Context& own) { insertNote(own, Any()); }),
        StoreError);

    EXPECT_TRUE(isCleanedUp);
    EXPECT_TRUE(context->hasChanges());
}

TEST(NSManagedObjectContextTryCommit, GivesWhatTheTransactionThrows)
{
    const auto context = makeContext();
    bool isCleanedUp = false;

    //! [Committing without a throw]
    const auto outcome = tryCommit(context, {.cleanup = [&](const Context&) { isCleanedUp = true; }},
        [](const Context&) { throw std::runtime_error("no"); });

    EXPECT_STREQ(outcome.error()->cast<std::runtime_error>()->what(), "no");
    //! [Committing without a throw]
    EXPECT_TRUE(isCleanedUp);
}

TEST(NSManagedObjectContextTryCommit, GivesTheFailureOfTheSave)
{
    const auto context = makeContext();

    const auto outcome = tryCommit(context, {}, [](const Context& own) { insertNote(own, Any()); });

    ASSERT_TRUE(outcome.isFailure());
    EXPECT_EQ(outcome.error()->cast<StoreError>()->kind(), StoreError::Kind::InvalidValue);
    EXPECT_TRUE(context->hasChanges());
}

TEST(NSManagedObjectContextTryCommit, SucceedsWhenAllIsSaved)
{
    const auto context = makeContext();

    EXPECT_TRUE(tryCommit(context, {}, [](const Context& own) { insertNote(own); }).isSuccess());
    EXPECT_EQ(savedNotes(context), 1u);
}

TEST(NSManagedObjectContextCommit, TheCleanupMayUndoWhatFailed)
{
    const auto context = makeContext();

    EXPECT_THROW(commit(context, {.cleanup = [](const Context& own) { own->rollback(); }},
                     [](const Context& own) { insertNote(own, Any()); }),
        StoreError);

    EXPECT_FALSE(context->hasChanges());
}

TEST(NSManagedObjectContextCommit, MayBeNestedOnTheQueueOfTheContext)
{
    const auto context = makeContext();

    commit(context, {}, [](const Context& own) {
        commit(own, {}, [](const Context& inner) { insertNote(inner); });
        EXPECT_FALSE(own->hasChanges());
        insertNote(own);
    });

    EXPECT_EQ(savedNotes(context), 2u);
}

TEST(NSManagedObjectContextCommit, RunsAfterWhatTheQueueWasGivenBefore)
{
    const auto context = makeContext();
    context->perform([&] { insertNote(context); });

    commit(context, {}, [](const Context& own) { EXPECT_TRUE(own->hasChanges()); });

    EXPECT_EQ(savedNotes(context), 1u);
}

TEST(NSManagedObjectContextCommit, KeepsTheQueueUntilItHasCleanedUp)
{
    const auto context = makeContext();
    std::vector<std::string> steps;

    commit(context,
        {.prepare =
                [&](const Context& own) {
                    own->perform([&] { steps.push_back("the queue's next"); });
                    steps.push_back("prepare");
                },
            .cleanup = [&](const Context&) { steps.push_back("cleanup"); }},
        [&](const Context&) { steps.push_back("transaction"); });
    context->performAndWait([] {}); // after what was handed over

    EXPECT_THAT(steps, ElementsAre("prepare", "transaction", "cleanup", "the queue's next"));
}

TEST(NSManagedObjectContextCommit, SavesWhatWasChangedBeforeItToo)
{
    const auto context = makeContext();
    insertNote(context);

    commit(context, {.prepare = [](const Context& own) { insertNote(own); }}, [](const Context&) {});

    EXPECT_EQ(savedNotes(context), 2u);
}

TEST(NSManagedObjectContextCommit, HoldsTheContextThatItsTransactionLetsGo)
{
    auto context = makeContext();
    const auto store = context->persistentStore();
    bool isCleanedUp = false;

    commit(context, {.cleanup = [&](const Context& own) { isCleanedUp = !own->hasChanges(); }},
        [&](const Context& own) {
            context = nullptr;
            insertNote(own);
        });

    EXPECT_TRUE(isCleanedUp);
    EXPECT_EQ(savedNotes(make<NSManagedObjectContext>(store)), 1u);
}

TEST(NSManagedObjectContextCommit, OfAChildReachesItsParentOnly)
{
    const auto parent = makeContext();
    const auto child = make<NSManagedObjectContext>(parent);

    commit(child, {}, [](const Context& own) { insertNote(own); });

    EXPECT_TRUE(parent->hasChanges());
    EXPECT_EQ(savedNotes(parent), 0u);
}

TEST(NSManagedObjectContextCommit, MayBeAskedForFromSeveralThreads)
{
    const auto context = makeContext();
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number)
        threads.emplace_back([&] {
            for (int round = 0; round < 10; ++round)
                commit(context, {}, [](const Context& own) { insertNote(own); });
        });
    for (auto& thread : threads)
        thread.join();

    EXPECT_EQ(savedNotes(context), 40u);
}

TEST(NSManagedObjectContextCommitDeathTest, EndsTheProcessWhenTheCleanupThrows)
{
    const auto context = makeContext();

    EXPECT_DEATH(commit(context, {.cleanup = [](const Context&) { throw 1; }}, [](const Context&) {}), "");
}

TEST(NSManagedObjectContextCommit, OfNothingSavesNothing)
{
    const auto context = makeContext();
    int saves = 0;
    const auto token = NotificationCenter::defaultCenter()->addObserver(
        {.name = NSManagedObjectContextDidSaveNotification}, [&](const Notification&) { ++saves; });

    commit(context, {}, [](const Context&) {});
    EXPECT_EQ(saves, 0);

    commit(context, {}, [](const Context& own) { insertNote(own); });
    EXPECT_EQ(saves, 1);
    NotificationCenter::defaultCenter()->removeObserver(token);
}

TEST(NSManagedObjectContextDeathTest, EndsTheProcessWithoutAContext)
{
    const auto message
        = "Fatal error: Empty reference in place of a context: file Foundation/NSManagedObjectContext";
    const Context none;

    EXPECT_DEATH(static_cast<void>(none | isValid), message);
    EXPECT_DEATH(setIsValid(none, true), message);
    EXPECT_DEATH(set(none, {.valid = true, .withParent = true}), message);
    EXPECT_DEATH(none | saveChanges, message);
    EXPECT_DEATH(commit(none, {}, [](const Context&) {}), message);
}
