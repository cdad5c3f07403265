#include "Examples/Fieldbook/Store/StoreModel.hpp"

#include "Examples/Fieldbook/Store/StoreFile.hpp"
#include "Examples/Fieldbook/Tests/OwnFolder.hpp"
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace fieldbook;
using ::testing::ElementsAre;
using ::testing::Optional;

/// A file of version 1 with two reports, one of which is gone, and a setting.
void writeFirstVersion(const std::filesystem::path& file)
{
    const auto context = orrenby::make<orrenby::NSManagedObjectContext>(
        orrenby::PersistentStore::open(firstStoreModel(), {.path = file.string()}));
    for (const auto* const name : {"a.json", "b.json"}) {
        const auto report = context->insert("Report");
        report->setValue("file", name);
        report->setValue("number", std::int64_t(name[0] - 'a' + 4));
        report->setValue("title", "Rope frayed");
        report->setValue("place", "Quay");
        report->setValue("observer", "Nils");
        report->setValue("severity", "high");
        report->setValue("isThere", name[0] == 'a');
    }
    const auto setting = context->insert("Setting");
    setting->setValue("name", "order");
    setting->setValue("value", "place");
    context->save();
}

TEST(StoreModel, OfVersionOneIsBroughtToTheLatestWithAllThatItHolds)
{
    const OwnFolder folder;
    writeFirstVersion(folder.file("store"));

    const auto store = StoreFile::open(folder.file("store"));

    ASSERT_TRUE(store.isSuccess()) << store.error()->text;
    const auto& memory = *store.unwrap()->memory();
    const auto report = Report{"Rope frayed", "Quay", "Nils", Severity::high, std::nullopt};
    EXPECT_THAT(memory.reports(),
        ElementsAre(RememberedReport{"a.json", 4, report, Sending::notAsked},
            RememberedReport{"b.json", 5, std::nullopt, Sending::notAsked}));
    EXPECT_THAT(memory.setting("order"), Optional(std::string("place")));
}

TEST(StoreModel, OfVersionOneIsMigratedOnce)
{
    const OwnFolder folder;
    const auto settings = orrenby::StoreSettings{.path = folder.file("store")};
    writeFirstVersion(folder.file("store"));

    const auto first = orrenby::migrateStore(storeMigration(), settings);
    const auto second = orrenby::migrateStore(storeMigration(), settings);

    EXPECT_EQ(first, (orrenby::MigrationReport{.fromVersion = 1, .toVersion = 2, .objectCount = 3}));
    EXPECT_EQ(second, (orrenby::MigrationReport{.fromVersion = 2, .toVersion = 2, .objectCount = 0}));
}

TEST(StoreModel, OfALaterVersionIsLeftAsItIs)
{
    const OwnFolder folder;
    orrenby::PersistentStore::open(
        orrenby::NSManagedObjectModel::make(3, {{.name = "Report"}}), {.path = folder.file("store")});
    const auto before = contentOf(folder.file("store"));

    const auto store = StoreFile::open(folder.file("store"));

    ASSERT_TRUE(store.isFailure());
    EXPECT_EQ(store.error()->kind, StoreProblem::Kind::unusable);
    EXPECT_EQ(store.error()->text,
        "cannot use the store \"" + folder.file("store")
            + "\": it belongs to another program, or to a later version of this one");
    EXPECT_EQ(contentOf(folder.file("store")), before);
}

} // namespace
