#include "Orrenby/Utilities/Log+Models.hpp"

#include "Orrenby/Platform/Errors/NSError.hpp"
#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/Objects/NSSet.hpp"
#include "Orrenby/Platform/Store/NSManagedObjectContext.hpp"
#include "Tests/Utilities/Log/LogFixture.hpp"
#include <gmock/gmock.h>

using namespace orrenby;
using testing::ElementsAre;

namespace {

Ref<NSManagedObjectContext> makeContext()
{
    return make<NSManagedObjectContext>(PersistentStore::open(NSManagedObjectModel::make(
        1, {{.name = "Person", .attributes = {{.name = "name"}}}, {.name = "Company"}})));
}

/// The error that the critical-error handler receives for it.
NSError reported(const Ref<NSManagedObject>& object, Any value)
{
    std::optional<NSError> error;
    Log::onCriticalError([&](const Log::Event&, const NSError& received) { error = received; });
    Log::critical(object, {.relation = "employer", .value = std::move(value)});
    Log::onCriticalError(nullptr);
    return error.value();
}

class LogModels : public LogFixture {};

} // namespace

TEST_F(LogModels, ReportsWhatDoesNotBelongInARelationship)
{
    const auto context = makeContext();
    //! [Reporting a wrong member]
    const auto person = context->insert("Person");

    Log::critical(person, {.relation = "employer", .value = "Acme"});

    EXPECT_THAT(capture.messages(Log::Level::critical),
        ElementsAre("Domain: InvalidObjectInCoreDataRelationship Person:employer Code: 0"));
    //! [Reporting a wrong member]
}

TEST_F(LogModels, CarriesItsOwnPlace)
{
    Log::critical(makeContext()->insert("Person"), {.relation = "employer", .value = 1});

    const auto event = capture.entries().at(0).event;
    EXPECT_EQ(event.filename(), "Log+Models");
    EXPECT_EQ(event.function(), "critical(_:relation:value:)");
}

TEST_F(LogModels, GivesTheHandlerTheError)
{
    const auto error = reported(makeContext()->insert("Person"), "Acme");

    EXPECT_EQ(error,
        NSError("InvalidObjectInCoreDataRelationship Person:employer", 0,
            {{"Entity", "Person"}, {"Value", "Acme"}, {"Type", "String"}, {"Relationship Key", "employer"}}));
}

TEST_F(LogModels, NamesTheTypeOfAStoredObject)
{
    const auto context = makeContext();
    const auto company = context->insert("Company");

    const auto error = reported(context->insert("Person"), company);

    EXPECT_EQ(error.userInfo()["Type"], Any("NSManagedObject"));
    EXPECT_EQ(error.userInfo()["Value"], Any(company));
}

TEST_F(LogModels, ListsTheMembersOfASet)
{
    const auto context = makeContext();
    const auto company = context->insert("Company");

    const auto error = reported(context->insert("Person"), NSSet{company, 7, "x"});

    EXPECT_EQ(error.userInfo()["Members"], Any(Array{company, 7, "x"}));
    EXPECT_EQ(error.userInfo()["Member Types"], Any(Array{"NSManagedObject", "Int", "String"}));
    EXPECT_EQ(error.userInfo()["Type"], Any("NSSet"));
}

TEST_F(LogModels, ListsTheMembersOfAnEmptySet)
{
    const auto error = reported(makeContext()->insert("Person"), NSSet());

    EXPECT_EQ(error.userInfo()["Members"], Any(Array{}));
    EXPECT_EQ(error.userInfo()["Member Types"], Any(Array{}));
}

TEST_F(LogModels, OtherValuesHaveNoMembers)
{
    const auto error = reported(makeContext()->insert("Person"), Array{1, 2});

    EXPECT_THAT(error.userInfo().keys(), ElementsAre("Entity", "Value", "Type", "Relationship Key"));
}

TEST_F(LogModels, NoValueIsANullOfNoType)
{
    const auto error = reported(makeContext()->insert("Person"), Any());

    EXPECT_EQ(error.userInfo()["Value"], Any());
    EXPECT_TRUE(error.userInfo().contains("Value"));
    EXPECT_EQ(error.userInfo()["Type"], Any("Optional<Any>"));
}

TEST_F(LogModels, AnEntityWithoutANameLeavesItOut)
{
    const auto object = make<NSManagedObject>(NSEntityDescription::make({}));

    const auto error = reported(object, 1);

    EXPECT_EQ(error.domain(), "InvalidObjectInCoreDataRelationship :employer");
    EXPECT_FALSE(error.userInfo().contains("Entity"));
}

TEST_F(LogModels, TakesProblemsThatAreKeptInVariables)
{
    const auto object = make<NSManagedObject>(NSEntityDescription::make({}));
    const auto problem = Log::RelationProblem{.relation = "employer", .value = 1};

    Log::critical(object, problem);

    EXPECT_EQ(capture.entries().size(), 1u);
}

TEST(LogModelsDeathTest, NeedAnObject)
{
    EXPECT_DEATH(Log::critical(Ref<NSManagedObject>(), {.relation = "employer", .value = 1}),
        "Empty reference in place of a stored object.*Utilities/Log\\+Models");
}
