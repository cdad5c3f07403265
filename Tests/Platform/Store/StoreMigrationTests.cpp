#include "Orrenby/Platform/Store/StoreMigration.hpp"

#include "Orrenby/Platform/Store/Connection.hpp"
#include "Orrenby/Platform/Store/NSManagedObjectContext.hpp"
#include "Orrenby/Platform/Store/StoreSchema.hpp"
#include "Tests/Platform/Store/StoreFailure.hpp"
#include "Tests/Support/TemporaryFolder.hpp"
#include <gmock/gmock.h>
#include <stdexcept>

using namespace orrenby;
using namespace orrenby::tests;
using Kind = StoreError::Kind;
using testing::ElementsAre;
using testing::Optional;

namespace {

RelationshipDescription friendsOf(std::string entity)
{
    return {.name = "friends", .destination = std::move(entity), .inverse = "friends", .isToMany = true};
}

EntityOptions company(std::string staff, std::string employer)
{
    return {.name = "Company",
        .attributes = {{.name = "name"}},
        .relationships = {{.name = "staff",
            .destination = std::move(staff),
            .inverse = std::move(employer),
            .isToMany = true}}};
}

EntityOptions member(std::vector<RelationshipDescription> relationships)
{
    return {.name = "Member",
        .attributes = {{.name = "first"}, {.name = "last"},
            {.name = "isActive", .kind = AttributeKind::Bool, .defaultValue = true}},
        .relationships = std::move(relationships)};
}

/// People with a name of two words, friends and an employer.
Ref<const NSManagedObjectModel> firstModel()
{
    return NSManagedObjectModel::make(1,
        {{.name = "Person",
             .attributes = {{.name = "name"},
                 {.name = "age", .kind = AttributeKind::Int, .isOptional = true}},
             .relationships = {{.name = "employer", .destination = "Company", .inverse = "staff"},
                 friendsOf("Person")}},
            company("Person", "employer")});
}

/// Members with both words apart, of a firm; without an age.
Ref<const NSManagedObjectModel> secondModel()
{
    return NSManagedObjectModel::make(2,
        {member({{.name = "firm", .destination = "Company", .inverse = "staff"}, friendsOf("Member")}),
            company("Member", "firm")});
}

/// Companies are gone.
Ref<const NSManagedObjectModel> thirdModel()
{
    return NSManagedObjectModel::make(3, {member({friendsOf("Member")})});
}

/// Splits the names of people.
MigrationStep firstStep()
{
    //! [Mapping what changed]
    const auto split = [](MigrationMapping& mapping) {
        mapping.renameEntity("Person", "Member");
        mapping.renameKey("Member", "employer", "firm");
        mapping.dropKey("Member", "name");
        mapping.dropKey("Member", "age");
        mapping.change("Member", [](MigratedObject& person) {
            const auto name = person.oldValue("name").text();
            const auto blank = name.find(' ');
            person.setValue("first", name.substr(0, blank));
            person.setValue("last", name.substr(blank + 1));
        });
    };
    //! [Mapping what changed]
    return {.from = firstModel(), .to = secondModel(), .mapping = split};
}

MigrationStep secondStep()
{
    return {.from = secondModel(), .to = thirdModel(), .mapping = [](MigrationMapping& mapping) {
                mapping.dropEntity("Company");
                mapping.dropKey("Member", "firm");
            }};
}

/// Eva and Ada, friends, at one company; a third one was deleted.
StoreSettings savedFile(const TemporaryFolder& folder)
{
    const StoreSettings settings{.path = folder.file("store")};
    const auto context = make<NSManagedObjectContext>(PersistentStore::open(firstModel(), settings));
    const auto company = context->insert("Company");
    company->setValue("name", "Acme");
    Ref<NSManagedObject> friendOfAll;
    for (const auto* const name : {"Eva Lind", "Ada Berg", "Bob Holm"}) {
        const auto person = context->insert("Person");
        person->setValue("name", name);
        person->setObject("employer", company);
        if (friendOfAll)
            person->addObject("friends", friendOfAll);
        friendOfAll = person;
    }
    context->save();
    context->delete_(friendOfAll);
    context->save();
    return settings;
}

std::vector<std::string> lastNames(
    const Ref<const NSManagedObjectModel>& model, const StoreSettings& settings)
{
    const auto context = make<NSManagedObjectContext>(PersistentStore::open(model, settings));
    std::vector<std::string> names;
    for (const auto& member : context->fetch({.entity = "Member"}))
        names.emplace_back(member->value("last").text());
    return names;
}

bool opens(const Ref<const NSManagedObjectModel>& model, const StoreSettings& settings)
{
    return PersistentStore::tryOpen(model, settings).isSuccess();
}

MigrationStep stepWith(std::function<void(MigrationMapping&)> mapping)
{
    return {.from = firstModel(), .to = secondModel(), .mapping = std::move(mapping)};
}

} // namespace

TEST(StoreMigration, BringsAFileToALaterVersion)
{
    const TemporaryFolder folder;
    const auto settings = savedFile(folder);

    //! [Migrating a store]
    const std::vector<MigrationStep> steps{firstStep()}; // all there ever were

    const auto report = migrateStore(steps, settings);
    //! [Migrating a store]
    EXPECT_EQ(report, (MigrationReport{.fromVersion = 1, .toVersion = 2, .objectCount = 3}));
    const auto context = make<NSManagedObjectContext>(PersistentStore::open(secondModel(), settings));
    const auto members = context->fetch(
        {.entity = "Member", .predicate = NSPredicate::make("firm.name = 'Acme' AND isActive = YES")});
    ASSERT_EQ(members.size(), 2u);
    EXPECT_EQ(members[0]->value("first"), Any("Eva"));
    EXPECT_EQ(members[1]->value("last"), Any("Berg"));
    EXPECT_THAT(members[0]->objects("friends"), ElementsAre(members[1]));
    EXPECT_EQ(context->fetch({.entity = "Company"}).at(0)->objects("staff"), members);
}

TEST(StoreMigration, NeverGivesANumberAgain)
{
    const TemporaryFolder folder;
    const auto settings = savedFile(folder);
    migrateStore({firstStep()}, settings);
    const auto context = make<NSManagedObjectContext>(PersistentStore::open(secondModel(), settings));
    const auto member = context->insert("Member");
    member->setValue("first", "Kim");
    member->setValue("last", "Falk");
    context->save();

    EXPECT_EQ(member->objectID().description(), "Member/p4");
}

TEST(StoreMigration, TakesSeveralStepsAndBeginsWhereTheFileIs)
{
    const TemporaryFolder folder;
    const auto settings = savedFile(folder);

    EXPECT_EQ(migrateStore({firstStep()}, settings).toVersion, 2);
    EXPECT_EQ(migrateStore({firstStep(), secondStep()}, settings),
        (MigrationReport{.fromVersion = 2, .toVersion = 3, .objectCount = 2}));
    EXPECT_EQ(migrateStore({firstStep(), secondStep()}, settings),
        (MigrationReport{.fromVersion = 3, .toVersion = 3}));
    EXPECT_THAT(lastNames(thirdModel(), settings), ElementsAre("Lind", "Berg"));
}

TEST(StoreMigration, LeavesTheTablesOfANewFile)
{
    const TemporaryFolder folder;
    const auto settings = savedFile(folder);
    migrateStore({firstStep(), secondStep()}, settings);
    PersistentStore::open(thirdModel(), {.path = folder.file("new")});
    const auto tables = [](const std::string& path) {
        detail::Connection connection(StoreSettings{.path = path});
        auto select = connection.prepare("SELECT name || coalesce(sql, '') FROM sqlite_schema ORDER BY 1");
        std::vector<std::string> texts;
        while (select.step())
            texts.emplace_back(select.text(0));
        return texts;
    };

    EXPECT_EQ(tables(folder.file("store")), tables(folder.file("new")));
    EXPECT_EQ(detail::Connection(settings).integer("SELECT count(*) FROM pragma_integrity_check"
                                                   " WHERE integrity_check = 'ok'"),
        1);
}

TEST(StoreMigration, ADryRunDoesEverythingAndKeepsNothing)
{
    const TemporaryFolder folder;
    const auto settings = savedFile(folder);

    EXPECT_EQ(migrateStore({firstStep(), secondStep()}, settings, {.isDryRun = true}),
        (MigrationReport{.fromVersion = 1, .toVersion = 3, .objectCount = 5}));
    EXPECT_TRUE(opens(firstModel(), settings));
    EXPECT_FALSE(opens(thirdModel(), settings));
    EXPECT_EQ(migrateStore({firstStep()}, settings).toVersion, 2);
}

TEST(StoreMigration, NeverDropsAnythingSilently)
{
    const TemporaryFolder folder;
    const auto settings = savedFile(folder);
    const auto failure = [&](std::function<void(MigrationMapping&)> mapping) -> std::string {
        try {
            migrateStore({stepWith(std::move(mapping))}, settings);
            return "";
        } catch (const StoreError& error) {
            return error.description();
        }
    };

    EXPECT_EQ(failure(nullptr), "MigrationFailed: The step would drop the entity Person");
    EXPECT_EQ(failure([](auto& mapping) { mapping.renameEntity("Person", "Member"); }),
        "MigrationFailed: The step would drop the values of Member.name");
    EXPECT_EQ(failure([](auto& mapping) {
        mapping.renameEntity("Person", "Member");
        mapping.renameKey("Member", "name", "first");
        mapping.dropKey("Member", "age");
    }),
        "MigrationFailed: The step would drop the values of Member.employer");
    EXPECT_EQ(failure([](auto& mapping) {
        mapping.renameEntity("Person", "Member");
        mapping.renameKey("Member", "name", "first");
        mapping.renameKey("Member", "employer", "firm");
        mapping.dropKey("Member", "age");
    }),
        "MigrationFailed: Member.last has no value");
    EXPECT_TRUE(opens(firstModel(), settings));
}

TEST(StoreMigration, RefusesNamesThatTheModelsDoNotHave)
{
    const TemporaryFolder folder;
    const auto settings = savedFile(folder);
    const auto failure = [&](std::function<void(MigrationMapping&)> more) -> std::string {
        auto step = firstStep();
        step.mapping = [mapping = step.mapping, more = std::move(more)](MigrationMapping& all) {
            mapping(all);
            more(all);
        };
        try {
            migrateStore({step}, settings);
            return "";
        } catch (const StoreError& error) {
            return error.context().key;
        }
    };

    EXPECT_EQ(failure([](auto& all) { all.renameEntity("Persons", "Company"); }), "Persons");
    EXPECT_EQ(failure([](auto& all) { all.renameEntity("Company", "Companies"); }), "Companies");
    EXPECT_EQ(failure([](auto& all) { all.renameKey("Member", "name", "names"); }), "names");
    EXPECT_EQ(failure([](auto& all) { all.renameKey("Member", "names", "first"); }), "names");
    EXPECT_EQ(failure([](auto& all) { all.dropEntity("Persons"); }), "Persons");
    EXPECT_EQ(failure([](auto& all) { all.dropKey("Member", "names"); }), "names");
    EXPECT_EQ(failure([](auto& all) { all.dropKey("Members", "name"); }), "name");
    EXPECT_EQ(failure([](auto& all) { all.change("Person", [](MigratedObject&) {}); }), "Person");
    EXPECT_TRUE(opens(firstModel(), settings));
}

TEST(StoreMigration, AFailingStepLeavesTheFileAsTheOneBeforeLeftIt)
{
    const TemporaryFolder folder;
    const auto settings = savedFile(folder);
    auto failing = secondStep();
    failing.mapping = [](MigrationMapping& mapping) {
        mapping.dropEntity("Company");
        mapping.dropKey("Member", "firm");
        mapping.change("Member", [](MigratedObject&) { throw std::runtime_error("no"); });
    };

    EXPECT_THROW(migrateStore({firstStep(), failing}, settings), std::runtime_error);
    EXPECT_THAT(lastNames(secondModel(), settings), ElementsAre("Lind", "Berg"));
}

TEST(StoreMigration, RefusesWhatItDoesNotKnow)
{
    const TemporaryFolder folder;
    const auto settings = savedFile(folder);
    migrateStore({firstStep(), secondStep()}, settings);
    const auto other = NSManagedObjectModel::make(3, {{.name = "Other"}});

    EXPECT_THAT(failureOf([&] { migrateStore({firstStep()}, settings); }), Optional(Kind::SchemaMismatch));
    EXPECT_THAT(failureOf([&] { migrateStore({{.from = secondModel(), .to = other}}, settings); }),
        Optional(Kind::SchemaMismatch));
    folder.file("text", "no store at all");
    EXPECT_THAT(failureOf([&] { migrateStore({firstStep()}, {.path = folder.file("text")}); }),
        Optional(Kind::Corrupt));
    EXPECT_THAT(failureOf([] { migrateStore({{.from = firstModel(), .to = thirdModel()}}, {}); }),
        Optional(Kind::MigrationFailed));
    EXPECT_THAT(failureOf([&] {
        migrateStore({firstStep(), firstStep()}, settings);
    }),
        Optional(Kind::MigrationFailed));
}

TEST(StoreMigration, GivesItsFailureInsteadOfThrowingIt)
{
    const TemporaryFolder folder;
    const auto settings = savedFile(folder);
    auto failing = secondStep();
    failing.mapping = [](MigrationMapping&) { throw std::runtime_error("no"); };

    //! [Migrating without a throw]
    const auto missing = tryMigrateStore({secondStep()}, settings);
    EXPECT_EQ(missing.error()->cast<StoreError>()->kind(), Kind::MigrationFailed);
    //! [Migrating without a throw]

    const auto thrown = tryMigrateStore({firstStep(), failing}, settings);
    EXPECT_STREQ(thrown.error()->cast<std::runtime_error>()->what(), "no");
    EXPECT_EQ(tryMigrateStore({firstStep()}, settings).value()->toVersion, 2);
}

TEST(StoreMigration, NeedsTheStepFromTheVersionOfTheFile)
{
    const TemporaryFolder folder;
    const auto settings = savedFile(folder);

    EXPECT_THAT(failureOf([&] { migrateStore({secondStep()}, settings); }), Optional(Kind::MigrationFailed));
}

TEST(StoreMigration, RefusesValuesOfAnotherKindAndUnknownKeys)
{
    const TemporaryFolder folder;
    const auto settings = savedFile(folder);
    const auto failure = [&](MigrationMapping::Change change) {
        auto step = firstStep();
        const auto mapping = step.mapping;
        step.mapping = [=](MigrationMapping& mapped) {
            mapping(mapped);
            mapped.change("Member", change);
        };
        return failureOf([&] { migrateStore({step}, settings); });
    };

    EXPECT_THAT(failure([](auto& object) { object.setValue("first", 1); }), Optional(Kind::MigrationFailed));
    EXPECT_THAT(failure([](auto& object) { object.setValue("name", "x"); }), Optional(Kind::MigrationFailed));
    EXPECT_THAT(failure([](auto& object) { object.oldValue("first"); }), Optional(Kind::MigrationFailed));
}

TEST(StoreMigration, HasNothingToDoWithoutAFile)
{
    const TemporaryFolder folder;

    EXPECT_EQ(migrateStore({firstStep()}, {.path = folder.file("store")}), MigrationReport());
    EXPECT_FALSE(std::filesystem::exists(folder.file("store")));
    EXPECT_EQ(migrateStore({}, savedFile(folder)), MigrationReport());
}

TEST(StoreMigration, NeedsAFileOfTheVeryModelsThatItsStepsTellOf)
{
    const TemporaryFolder folder;
    const auto settings = savedFile(folder);
    const auto otherFirst = NSManagedObjectModel::make(
        1, {{.name = "Person", .attributes = {{.name = "other"}}}});
    const auto otherSecond = NSManagedObjectModel::make(
        2, {{.name = "Person", .attributes = {{.name = "other"}}}});
    const auto keepAll = [](MigrationMapping&) {};

    EXPECT_THAT(failureOf([&] {
        migrateStore({{.from = otherFirst, .to = otherSecond, .mapping = keepAll}}, settings);
    }),
        Optional(Kind::SchemaMismatch));
    EXPECT_TRUE(opens(firstModel(), settings));

    const StoreSettings later{.path = folder.file("later")};
    ASSERT_TRUE(opens(otherSecond, later));
    EXPECT_THAT(failureOf([&] { migrateStore({firstStep()}, later); }), Optional(Kind::SchemaMismatch));
    EXPECT_TRUE(opens(otherSecond, later));
}

TEST(StoreMigration, RefusesObjectsWithoutARelationshipThatIsNoLongerOptional)
{
    const TemporaryFolder folder;
    const StoreSettings settings{.path = folder.file("store")};
    const auto model = [](std::int64_t version, bool isOptional) {
        return NSManagedObjectModel::make(version,
            {{.name = "Leaf",
                 .relationships = {{.name = "tree", .destination = "Tree", .isOptional = isOptional}}},
                {.name = "Tree"}});
    };
    const MigrationStep step{
        .from = model(1, true), .to = model(2, false), .mapping = [](MigrationMapping&) {}};
    const auto context = make<NSManagedObjectContext>(PersistentStore::open(step.from, settings));
    const auto leaf = context->insert("Leaf");
    context->save();

    EXPECT_THAT(failureOf([&] { migrateStore({step}, settings); }), Optional(Kind::MigrationFailed));

    leaf->setObject("tree", context->insert("Tree"));
    context->save();
    EXPECT_EQ(migrateStore({step}, settings).objectCount, 2u);
}
