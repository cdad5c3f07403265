#include "Orrenby/Platform/Store/PersistentStore.hpp"

#include "Orrenby/Platform/Store/Connection.hpp"
#include "Tests/Platform/Store/StoreFailure.hpp"
#include "Tests/Platform/Store/StoreParts.hpp"
#include "Tests/Support/TemporaryFolder.hpp"
#include <gmock/gmock.h>

using namespace orrenby;
using namespace orrenby::tests;
using Kind = StoreError::Kind;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

namespace {

void savePerson(const Ref<PersistentStore>& store, const std::string& name)
{
    const auto context = make<NSManagedObjectContext>(store);
    insertPerson(context, name);
    context->save();
}

} // namespace

TEST(PersistentStore, KeepsObjectsFromOneStartToTheNext)
{
    const TemporaryFolder folder;
    const auto path = folder.file("store");
    //! [Keeping objects]
    {
        const auto store = PersistentStore::open(peopleModel(), {.path = path});
        const auto context = make<NSManagedObjectContext>(store);
        context->insert<Person>("Person")->name = "Eva";
        context->save();
    }
    const auto store = PersistentStore::open(peopleModel(), {.path = path});
    const auto context = make<NSManagedObjectContext>(store);

    EXPECT_EQ(context->fetch<Person>({.entity = "Person"}).at(0)->name.get(), "Eva");
    //! [Keeping objects]
}

TEST(PersistentStore, RefusesAFileOfAnotherModelAndLeavesItAlone)
{
    const TemporaryFolder folder;
    savePerson(PersistentStore::open(peopleModel(), {.path = folder.file("store")}), "Eva");
    const auto other = NSManagedObjectModel::make(2, {{.name = "Person"}});

    const auto outcome = PersistentStore::tryOpen(other, {.path = folder.file("store")});

    EXPECT_EQ(outcome.error()->kind(), Kind::SchemaMismatch);
    EXPECT_THAT(storedNames(PersistentStore::open(peopleModel(), {.path = folder.file("store")})),
        ElementsAre("Eva"));
}

TEST(PersistentStore, RefusesAFileThatHoldsSomethingElse)
{
    const TemporaryFolder folder;
    detail::Connection(StoreSettings{.path = folder.file("store")}).execute("CREATE TABLE mine (x)");

    EXPECT_EQ(PersistentStore::tryOpen(peopleModel(), {.path = folder.file("store")}).error()->kind(),
        Kind::SchemaMismatch);
}

TEST(PersistentStore, ReadOnlyGivesObjectsAndRefusesToSave)
{
    const TemporaryFolder folder;
    savePerson(PersistentStore::open(peopleModel(), {.path = folder.file("store")}), "Eva");
    const auto store = PersistentStore::open(
        peopleModel(), {.path = folder.file("store"), .isReadOnly = true});

    EXPECT_THAT(storedNames(store), ElementsAre("Eva"));
    EXPECT_THAT(failureOf([&] { savePerson(store, "Ada"); }), Optional(Kind::ReadOnly));
    EXPECT_THAT(storedNames(store), ElementsAre("Eva"));
}

TEST(PersistentStore, AFullDiskLosesNothing)
{
    const TemporaryFolder folder;
    const auto store = PersistentStore::open(
        peopleModel(), {.path = folder.file("store"), .maximumPageCount = 20});
    const auto context = make<NSManagedObjectContext>(store);
    insertPerson(context, "small");
    context->save();
    const auto large = insertPerson(context, std::string(200000, 'x'));

    EXPECT_THAT(failureOf([&] { context->save(); }), Optional(Kind::DiskFull));
    EXPECT_THAT(storedNames(store), ElementsAre("small"));
    EXPECT_TRUE(large->isInserted());

    large->name = "smaller";
    context->save();
    EXPECT_THAT(storedNames(store), ElementsAre("small", "smaller"));
}

TEST(PersistentStore, ASecondProcessWaitsOrIsToldThatTheFileIsBusy)
{
    const TemporaryFolder folder;
    const auto first = PersistentStore::open(peopleModel(), {.path = folder.file("store")});
    const auto second = PersistentStore::open(
        peopleModel(), {.path = folder.file("store"), .busyTimeout = 0});
    detail::Connection writer({.path = folder.file("store")});
    {
        detail::Transaction transaction(writer);
        EXPECT_THAT(failureOf([&] { savePerson(second, "Ada"); }), Optional(Kind::Busy));
    }
    savePerson(second, "Ada");
    savePerson(first, "Eva");

    EXPECT_THAT(storedNames(second), ElementsAre("Ada", "Eva"));
}

TEST(PersistentStore, TwoConnectionsNeverGiveOneNameTwice)
{
    const TemporaryFolder folder;
    const auto first = PersistentStore::open(peopleModel(), {.path = folder.file("store")});
    const auto second = PersistentStore::open(peopleModel(), {.path = folder.file("store")});

    for (int round = 0; round < 5; ++round) {
        savePerson(first, "a");
        savePerson(second, "b");
    }

    EXPECT_EQ(storedNames(first).size(), 10u);
}

TEST(PersistentStore, DamagedFilesGiveErrorsAndNeverCrash)
{
    const TemporaryFolder folder;
    {
        const auto store = PersistentStore::open(peopleModel(), {.path = folder.file("store")});
        for (int number = 0; number < 50; ++number)
            savePerson(store, std::string(100, 'x'));
    }
    const auto content = contentOf(folder.file("store"));
    ASSERT_GT(content.size(), 8192u);

    int failures = 0;
    for (std::size_t round = 0; round < 200; ++round) {
        auto damaged = content;
        for (std::size_t offset = 0; offset < 40; ++offset)
            damaged[(round * 7919 + offset * 104729) % damaged.size()] = static_cast<char>(
                round * 31 + offset);
        folder.file("damaged", damaged);
        const auto failure = failureOf([&] {
            const auto store = PersistentStore::open(peopleModel(), {.path = folder.file("damaged")});
            storedNames(store);
        });
        failures += failure ? 1 : 0;
        std::filesystem::remove(folder.file("damaged-wal"));
        std::filesystem::remove(folder.file("damaged-shm"));
    }
    EXPECT_GT(failures, 0);
}

TEST(PersistentStore, NamesTheKeyOfAValueThatIsOfAnotherKind)
{
    const TemporaryFolder folder;
    const StoreSettings settings{.path = folder.file("store")};
    savePerson(PersistentStore::open(peopleModel(), settings), "Eva");
    detail::Connection(settings).execute("UPDATE Person SET tag = x'010203'");
    const auto context = make<NSManagedObjectContext>(PersistentStore::open(peopleModel(), settings));

    try {
        context->fetch({.entity = "Person"});
        FAIL();
    } catch (const StoreError& error) {
        EXPECT_EQ(error.kind(), Kind::Corrupt);
        EXPECT_EQ(error.context().key, "tag");
    }
}
