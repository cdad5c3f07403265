#include "Orrenby/Platform/Store/StoreMigration.hpp"

#include "Orrenby/Platform/Store/Connection.hpp"
#include "Orrenby/Platform/Store/NSManagedObjectContext.hpp"
#include "Orrenby/Platform/World/Clock.hpp"
#include "Orrenby/Platform/World/World.hpp"
#include "Tests/Platform/Store/StoreFailure.hpp"
#include "Tests/Support/TemporaryFolder.hpp"
#include <gmock/gmock.h>

using namespace orrenby;
using namespace orrenby::tests;
using Kind = StoreError::Kind;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

namespace {

/// Notes, with one attribute more in every version.
Ref<const NSManagedObjectModel> notes(std::int64_t version)
{
    EntityOptions note{.name = "Note", .attributes = {{.name = "text"}}};
    for (std::int64_t number = 2; number <= version; ++number)
        note.attributes.push_back({.name = "more" + std::to_string(number), .isOptional = true});
    return NSManagedObjectModel::make(version, {note});
}

MigrationStep stepFrom(std::int64_t version) { return {.from = notes(version), .to = notes(version + 1)}; }

/// A file of the first version with one note.
StoreSettings savedFile(const TemporaryFolder& folder)
{
    const StoreSettings settings{.path = folder.file("store")};
    const auto context = make<NSManagedObjectContext>(PersistentStore::open(notes(1), settings));
    context->insert("Note")->setValue("text", "Call Eva");
    context->save();
    return settings;
}

std::vector<std::int64_t> versionsIn(const StoreSettings& settings)
{
    std::vector<std::int64_t> versions;
    for (const auto& record : migrationHistory(settings))
        versions.push_back(record.version);
    return versions;
}

std::string refusal(const std::vector<MigrationStep>& steps, const StoreSettings& settings)
{
    try {
        migrateStore(steps, settings);
        return "";
    } catch (const StoreError& error) {
        return error.description();
    }
}

class HeldClock final : public Clock {
public:
    Date now() const override { return Date(86'400.5); }
    double monotonicSeconds() const override { return 0; }
};

} // namespace

TEST(MigrationHistory, SaysWhichStepsAFileHasTakenAndWhen)
{
    auto world = World::current();
    world.setClock(std::make_shared<HeldClock>());
    const auto override = World::Override(world);
    const TemporaryFolder folder;
    const auto settings = savedFile(folder);

    //! [Reading the history of a file]
    migrateStore({stepFrom(1), stepFrom(2)}, settings);

    const auto history = migrationHistory(settings);
    //! [Reading the history of a file]
    EXPECT_THAT(history,
        ElementsAre(MigrationRecord{2, stepFrom(1).checksum(), Date(86'400.5)},
            MigrationRecord{3, stepFrom(2).checksum(), Date(86'400.5)}));
}

TEST(MigrationHistory, IsEmptyWithoutStepsOrAFile)
{
    const TemporaryFolder folder;

    EXPECT_THAT(migrationHistory(savedFile(folder)), IsEmpty());
    EXPECT_THAT(migrationHistory({.path = folder.file("missing")}), IsEmpty());
    EXPECT_THAT(migrationHistory({}), IsEmpty());
    EXPECT_FALSE(std::filesystem::exists(folder.file("missing")));
}

TEST(MigrationHistory, IsNotReadFromWhatIsNoStore)
{
    const TemporaryFolder folder;
    detail::Connection(StoreSettings{.path = folder.file("other")}).execute("CREATE TABLE mine (a)");
    folder.file("text", "no store at all");

    EXPECT_THAT(
        failureOf([&] { migrationHistory({.path = folder.file("other")}); }), Optional(Kind::SchemaMismatch));
    EXPECT_THAT(failureOf([&] { migrationHistory({.path = folder.file("text")}); }), Optional(Kind::Corrupt));
}

TEST(MigrationHistory, IsGivenWithItsFailure)
{
    const TemporaryFolder folder;
    const auto path = folder.file("text", "no store at all");

    //! [Reading a history without a throw]
    EXPECT_EQ(tryMigrationHistory({.path = path}).error()->kind(), StoreError::Kind::Corrupt);
    //! [Reading a history without a throw]
    EXPECT_THAT(tryMigrationHistory({.path = folder.file("missing")}).value(), Optional(IsEmpty()));
}

TEST(MigrationHistory, KeepsNothingOfADryRunOrAFailedStep)
{
    const TemporaryFolder folder;
    const auto settings = savedFile(folder);
    auto failing = stepFrom(2);
    failing.mapping = [](MigrationMapping& mapping) {
        mapping.change("Note", [](MigratedObject& note) { note.setValue("unknown", 1); });
    };

    migrateStore({stepFrom(1), stepFrom(2)}, settings, {.isDryRun = true});
    EXPECT_THAT(versionsIn(settings), IsEmpty());
    EXPECT_EQ(refusal({stepFrom(1), failing}, settings), "MigrationFailed: There is no attribute unknown");
    EXPECT_THAT(versionsIn(settings), ElementsAre(2));
}

TEST(MigrationHistory, AStepThatWasTakenMayNotChange)
{
    const TemporaryFolder folder;
    const auto settings = savedFile(folder);
    migrateStore({stepFrom(1)}, settings);
    auto renaming = stepFrom(1);
    renaming.mapping = [](MigrationMapping& mapping) { mapping.dropKey("Note", "text"); };
    auto revised = stepFrom(1);
    revised.revision = "2";

    for (const auto& step : {renaming, revised}) {
        EXPECT_EQ(
            refusal({step}, settings), "SchemaMismatch: The file has come to version 2 by another step");
        EXPECT_EQ(refusal({step, stepFrom(2)}, settings),
            "SchemaMismatch: The file has come to version 2 by another step");
    }
    EXPECT_THAT(versionsIn(settings), ElementsAre(2));
}

TEST(MigrationHistory, StepsThatAreNoLongerKeptAreNotAskedFor)
{
    const TemporaryFolder folder;
    const auto settings = savedFile(folder);
    migrateStore({stepFrom(1), stepFrom(2)}, settings);

    EXPECT_EQ(migrateStore({stepFrom(3)}, settings).toVersion, 4);
    EXPECT_THAT(versionsIn(settings), ElementsAre(2, 3, 4));
}

TEST(MigrationHistory, AForeignHistoryIsRefused)
{
    const TemporaryFolder folder;
    const auto settings = savedFile(folder);
    migrateStore({stepFrom(1), stepFrom(2)}, settings);
    const auto after = [&](const char* sql) {
        const auto copy = folder.file("copy");
        std::filesystem::copy_file(settings.path, copy, std::filesystem::copy_options::overwrite_existing);
        detail::Connection(StoreSettings{.path = copy}).execute(sql);
        return refusal({stepFrom(3)}, {.path = copy});
    };

    EXPECT_EQ(after("UPDATE _history SET version = 4 WHERE version = 3"),
        "SchemaMismatch: The steps that the file has taken do not lead to its version 3");
    EXPECT_EQ(after("DELETE FROM _history WHERE version = 3"),
        "SchemaMismatch: The steps that the file has taken do not lead to its version 3");
    EXPECT_EQ(after("UPDATE _history SET version = 1 WHERE version = 2"),
        "SchemaMismatch: The steps that the file has taken do not lead to its version 3");
    EXPECT_EQ(after("UPDATE _history SET model = 'other'"),
        "SchemaMismatch: The steps that the file has taken lead to another model of version 3");
    EXPECT_EQ(after("DELETE FROM _history"), "");
}

TEST(MigrationHistory, AFileFromBeforeItGetsOne)
{
    const TemporaryFolder folder;
    const auto settings = savedFile(folder);
    detail::Connection(settings).execute("DROP TABLE _history");

    EXPECT_TRUE(PersistentStore::tryOpen(notes(1), settings).isSuccess());
    EXPECT_THAT(versionsIn(settings), IsEmpty());
    EXPECT_EQ(migrateStore({stepFrom(1)}, settings).objectCount, 1);
    EXPECT_THAT(versionsIn(settings), ElementsAre(2));
}

TEST(MigrationStep, HasAChecksumOfWhatItDoes)
{
    const auto with = [](std::function<void(MigrationMapping&)> mapping) {
        auto step = stepFrom(1);
        step.mapping = std::move(mapping);
        return step.checksum();
    };
    const auto plain = stepFrom(1).checksum();

    EXPECT_EQ(plain.size(), 40u);
    EXPECT_EQ(with([](MigrationMapping&) {}), plain);
    EXPECT_NE(stepFrom(2).checksum(), plain);
    EXPECT_NE(with([](auto& mapping) { mapping.renameEntity("Note", "Memo"); }), plain);
    EXPECT_NE(with([](auto& mapping) { mapping.renameKey("Note", "text", "body"); }), plain);
    EXPECT_NE(with([](auto& mapping) { mapping.dropEntity("Note"); }), plain);
    EXPECT_NE(with([](auto& mapping) { mapping.dropKey("Note", "text"); }), plain);
    EXPECT_NE(with([](auto& mapping) { mapping.change("Note", [](MigratedObject&) {}); }), plain);
}

TEST(MigrationMapping, DescribesItself)
{
    MigrationMapping mapping;
    mapping.renameEntity("Note", "Memo");
    mapping.renameKey("Memo", "text", "body");
    mapping.dropEntity("Company");
    mapping.dropKey("Memo", "age");
    mapping.change("Memo", [](MigratedObject&) {});

    EXPECT_EQ(mapping.description(),
        "Memo was Note\nMemo.body was text\nCompany is dropped\nMemo.age is dropped\nMemo is changed\n");
    EXPECT_EQ(MigrationMapping().description(), "");
}

TEST(MigrationMapping, CopiesGoTheirOwnWays)
{
    MigrationMapping first;
    first.renameEntity("Note", "Memo");
    auto second = first;
    second.dropEntity("Company");
    MigrationMapping third;
    third.dropKey("Memo", "age");

    third = first;
    first.dropKey("Memo", "text");

    EXPECT_EQ(first.description(), "Memo was Note\nMemo.text is dropped\n");
    EXPECT_EQ(second.description(), "Memo was Note\nCompany is dropped\n");
    EXPECT_EQ(third.description(), "Memo was Note\n");
}
