#include "Orrenby/Foundation/NSManagedObjectContext+Observe.hpp"

#include "Orrenby/Platform/Observing/NotificationCenter.hpp"
#include <gmock/gmock.h>
#include <string>

using namespace orrenby;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using Context = Ref<NSManagedObjectContext>;
using Objects = std::vector<Ref<NSManagedObject>>;
using Texts = std::vector<std::string>;

Context makeContext()
{
    const auto model = NSManagedObjectModel::make(1,
        {{.name = "Note", .attributes = {{.name = "text"}}},
            {.name = "Tag", .attributes = {{.name = "text"}}}});
    return make<NSManagedObjectContext>(PersistentStore::open(model));
}

Ref<NSManagedObject> insertNote(const Context& context, const char* text)
{
    auto note = context->insert("Note");
    note->setValue("text", text);
    return note;
}

const NSFetchRequest notes = {.entity = "Note", .sortDescriptors = {{"text"}}};

/// The texts of each result, and the number of failures.
struct Received {
    std::vector<Texts> results;
    int failures = 0;

    auto recorder()
    {
        return [this](const Streams::Payload<Objects, StoreError>& payload) {
            if (payload.isError()) {
                ++failures;
                return;
            }
            Texts texts;
            for (const auto& note : *payload.asValue())
                texts.emplace_back(note->value("text").text());
            results.push_back(texts);
        };
    }
};

/// Until everything that was handed to the queue of the context is done.
void finish(const Context& context)
{
    context->performAndWait([] {});
}

} // namespace

TEST(ObservedFetch, GivesTheResultNowAndAfterEachSaveThatChangesIt)
{
    auto received = Received();
    const auto context = makeContext();

    //! [Observing a fetch]
    const auto handle = observe(context, {.entity = "Note", .sortDescriptors = {{"text"}}})
                            .sink(received.recorder());
    insertNote(context, "level rising");
    context->save();
    //! [Observing a fetch]
    insertNote(context, "bank dry");
    context->save();

    EXPECT_THAT(
        received.results, ElementsAre(IsEmpty(), Texts{"level rising"}, Texts{"bank dry", "level rising"}));
    EXPECT_EQ(received.failures, 0);
}

TEST(ObservedFetch, GivesChangedAndDeletedObjects)
{
    auto received = Received();
    const auto context = makeContext();
    const auto note = insertNote(context, "a");
    context->save();
    const auto handle = observe(context, notes).sink(received.recorder());

    note->setValue("text", "b");
    context->save();
    context->delete_(note);
    context->save();

    EXPECT_THAT(received.results, ElementsAre(Texts{"a"}, Texts{"b"}, IsEmpty()));
}

TEST(ObservedFetch, IsSilentWhenASaveChangesNothingOfIt)
{
    auto received = Received();
    const auto context = makeContext();
    insertNote(context, "a");
    const auto handle = observe(context, notes).sink(received.recorder());

    context->save(); // of what the first value had already
    context->insert("Tag")->setValue("text", "other");
    context->save();
    insertNote(context, "unsaved");

    EXPECT_THAT(received.results, ElementsAre(Texts{"a"}));
}

TEST(ObservedFetch, PassesOverWhatLiesBeyondItsLimit)
{
    auto received = Received();
    const auto context = makeContext();
    insertNote(context, "a");
    context->save();
    const auto handle = observe(context, {.entity = "Note", .sortDescriptors = {{"text"}}, .fetchLimit = 1})
                            .sink(received.recorder());

    insertNote(context, "b");
    context->save();

    EXPECT_THAT(received.results, ElementsAre(Texts{"a"}));
}

TEST(ObservedFetch, SeesWhatOtherContextsOfTheStoreSave)
{
    auto received = Received();
    const auto context = makeContext();
    const auto other = make<NSManagedObjectContext>(context->persistentStore());
    auto handle = context->performAndWait([&] { return observe(context, notes).sink(received.recorder()); });

    const auto note = insertNote(other, "a");
    other->save();
    finish(context);
    note->setValue("text", "b");
    other->save();
    finish(context);

    EXPECT_THAT(received.results, ElementsAre(IsEmpty(), Texts{"a"}, Texts{"b"}));
    context->performAndWait([&] { handle = {}; });
}

TEST(ObservedFetch, SeesWhatAChildSavesIntoItsContext)
{
    auto received = Received();
    const auto context = makeContext();
    const auto child = make<NSManagedObjectContext>(context);
    const auto handle = context->performAndWait(
        [&] { return observe(context, notes).sink(received.recorder()); });

    insertNote(child, "a");
    child->save();
    finish(context);

    EXPECT_THAT(received.results, ElementsAre(IsEmpty(), Texts{"a"}));
}

TEST(ObservedFetch, IgnoresOtherStores)
{
    auto received = Received();
    const auto context = makeContext();
    const auto other = makeContext();
    const auto handle = observe(context, notes).sink(received.recorder());

    insertNote(other, "a");
    other->save();
    finish(context);

    EXPECT_THAT(received.results, ElementsAre(IsEmpty()));
}

TEST(ObservedFetch, EndsItsWorkWithTheSubscription)
{
    auto received = Received();
    const auto observers = NotificationCenter::defaultCenter()->observerCount();
    const auto context = makeContext();
    auto handle = observe(context, notes).sink(received.recorder());
    EXPECT_EQ(NotificationCenter::defaultCenter()->observerCount(), observers + 1);

    handle = {};
    insertNote(context, "a");
    context->save();

    EXPECT_EQ(NotificationCenter::defaultCenter()->observerCount(), observers);
    EXPECT_THAT(received.results, ElementsAre(IsEmpty()));
    EXPECT_EQ(context.use_count(), 1);
}

TEST(ObservedFetch, DoesNothingBeforeSomebodySubscribes)
{
    const auto observers = NotificationCenter::defaultCenter()->observerCount();

    const auto publisher = observe(makeContext(), {.entity = "No such"});

    EXPECT_EQ(NotificationCenter::defaultCenter()->observerCount(), observers);
}

TEST(ObservedFetch, SendsAFailureInThePlaceOfAResult)
{
    auto received = Received();
    const auto context = makeContext();

    const auto handle = observe(context, {.entity = "No such"}).sink(received.recorder());
    insertNote(context, "a");
    context->save();

    EXPECT_EQ(received.failures, 2);
    EXPECT_THAT(received.results, IsEmpty());
}
