#include "Orrenby/Platform/Store/NSManagedObjectModel.hpp"

#include "Orrenby/Platform/Store/Connection.hpp"
#include "Orrenby/Platform/Store/StoreSchema.hpp"
#include "Tests/Platform/Store/StoreFailure.hpp"
#include <gmock/gmock.h>

using namespace orrenby;
using namespace orrenby::tests;
using Kind = StoreError::Kind;
using testing::Eq;
using testing::HasSubstr;
using testing::IsNull;

namespace {

std::string faultOf(std::vector<EntityOptions> entities, std::int64_t version = 1)
{
    const auto outcome = NSManagedObjectModel::tryMake(version, std::move(entities));
    return outcome.isFailure() ? outcome.error()->description() : "";
}

EntityOptions company()
{
    return {.name = "Company",
        .relationships = {
            {.name = "staff", .destination = "Person", .inverse = "employer", .isToMany = true}}};
}
EntityOptions person()
{
    return {.name = "Person",
        .relationships = {{.name = "employer", .destination = "Company", .inverse = "staff"}}};
}

} // namespace

TEST(NSManagedObjectModel, TiesEntitiesTogether)
{
    //! [Declaring a model]
    const auto model = NSManagedObjectModel::make(1,
        {{.name = "Person",
             .attributes = {{.name = "name"}, {.name = "age", .kind = AttributeKind::Int, .isOptional = true},
                 {.name = "isActive", .kind = AttributeKind::Bool, .defaultValue = true}},
             .relationships = {{.name = "employer", .destination = "Company", .inverse = "staff"}}},
            {.name = "Company",
                .attributes = {{.name = "name"}},
                .relationships = {{.name = "staff",
                    .destination = "Person",
                    .inverse = "employer",
                    .isToMany = true,
                    .deleteRule = DeleteRule::Cascade}}}});

    EXPECT_EQ(model->entity("Person")->name(), "Person");
    EXPECT_EQ(model->entity("Company")->relationship("staff")->destination, "Person");
    //! [Declaring a model]
    EXPECT_EQ(model->entity("Person")->attribute("age")->kind, AttributeKind::Int);
    EXPECT_THAT(model->entity("Person")->attribute("employer"), IsNull());
    EXPECT_THAT(model->entity("Nobody"), IsNull());
}

TEST(NSManagedObjectModel, LivesAsLongAsOneOfItsEntitiesIsHeld)
{
    const auto entity = NSManagedObjectModel::make(1, {company(), person()})->entity("Person");

    EXPECT_EQ(entity->relationships()[0].destination->name(), "Company");
}

TEST(NSManagedObjectModel, WithoutEntitiesIsAModel) { EXPECT_EQ(faultOf({}), ""); }

TEST(NSManagedObjectModel, ListsItsEntitiesByName)
{
    const auto model = NSManagedObjectModel::make(1, {person(), company()});

    ASSERT_EQ(model->entities().size(), 2u);
    EXPECT_EQ(model->entities()[0]->name(), "Company");
}

TEST(NSManagedObjectModel, RefusesVersionsBelowOne)
{
    EXPECT_EQ(faultOf({}, 0), "InvalidModel: A model's version is 1 or more, not 0");
}

TEST(NSManagedObjectModel, RefusesNamesThatAreNone)
{
    EXPECT_EQ(faultOf({{}}), "InvalidModel: An entity has no name");
    for (const char* name : {"", "1a", "_key", "a b", "a.b", "a\"b", "\xC3\xA4"})
        EXPECT_THAT(faultOf({{.name = name}}), HasSubstr("has a name that is none")) << name;
    EXPECT_THAT(faultOf({{.name = std::string(201, 'a')}}), HasSubstr("has a name that is none"));
    EXPECT_THAT(
        faultOf({{.name = "A", .attributes = {{.name = "b\"c"}}}}), HasSubstr("has a name that is none"));
}

TEST(NSManagedObjectModel, RefusesNamesThatAreReserved)
{
    EXPECT_EQ(faultOf({{.name = "SQLite_x"}}), "InvalidModel: Entity SQLite_x has a name that is reserved");
}

TEST(NSManagedObjectModel, RefusesNamesThatDifferOnlyInCase)
{
    EXPECT_EQ(
        faultOf({{.name = "Person"}, {.name = "PERSON"}}), "InvalidModel: Entity PERSON stands there twice");
    EXPECT_EQ(faultOf({{.name = "A", .attributes = {{.name = "name"}, {.name = "Name"}}}}),
        "InvalidModel: A.Name stands there twice");
    EXPECT_EQ(faultOf({{.name = "A",
                  .attributes = {{.name = "a"}},
                  .relationships = {{.name = "a", .destination = "A"}}}}),
        "InvalidModel: A.a stands there twice");
}

TEST(NSManagedObjectModel, RefusesDefaultValuesOfAnotherKind)
{
    EXPECT_EQ(faultOf({{.name = "A",
                  .attributes = {{.name = "age", .kind = AttributeKind::Int, .defaultValue = 1.0}}}}),
        "InvalidModel: A.age has a default value of another kind");
}

TEST(NSManagedObjectModel, RefusesRelationshipsThatLeadNowhere)
{
    EXPECT_EQ(faultOf({person()}), "InvalidModel: Person.employer leads to an unknown entity: Company");
    EXPECT_EQ(faultOf({{.name = "A", .relationships = {{.name = "a", .destination = "A", .inverse = "b"}}}}),
        "InvalidModel: A.a has an unknown inverse: b");
}

TEST(NSManagedObjectModel, RefusesInversesThatLeadElsewhere)
{
    auto wrong = person();
    wrong.relationships[0].inverse = "";

    EXPECT_EQ(faultOf({company(), wrong}),
        "InvalidModel: Company.staff has an inverse that leads elsewhere: employer");
}

TEST(NSManagedObjectModel, RefusesMoreThanAThousandColumns)
{
    EntityOptions entity{.name = "A"};
    for (int number = 0; number < 1000; ++number)
        entity.attributes.push_back({.name = "a" + std::to_string(number)});
    EXPECT_EQ(faultOf({entity}), "");

    entity.attributes.push_back({.name = "oneMore"});
    EXPECT_EQ(faultOf({entity}), "InvalidModel: A has more than 1000 attributes and relationships");
}

TEST(NSManagedObjectModel, ModelsThatStoreAlikeHaveOneChecksum)
{
    auto cascading = company();
    cascading.relationships[0].deleteRule = DeleteRule::Cascade;

    const auto checksum = NSManagedObjectModel::make(1, {company(), person()})->checksum();

    EXPECT_EQ(checksum.size(), 40u);
    EXPECT_EQ(NSManagedObjectModel::make(2, {person(), cascading})->checksum(), checksum);
}

TEST(NSManagedObjectModel, ModelsThatStoreOtherwiseHaveOtherChecksums)
{
    const auto checksumOf = [](AttributeDescription attribute) {
        return NSManagedObjectModel::make(1, {{.name = "A", .attributes = {std::move(attribute)}}})
            ->checksum();
    };

    EXPECT_NE(checksumOf({.name = "a"}), checksumOf({.name = "b"}));
    EXPECT_NE(checksumOf({.name = "a"}), checksumOf({.name = "a", .kind = AttributeKind::Int}));
    EXPECT_NE(checksumOf({.name = "a"}), checksumOf({.name = "a", .isOptional = true}));
}

TEST(NSManagedObjectModel, MakesTablesWhoseNamesNeverMeet)
{
    const auto model = NSManagedObjectModel::make(1,
        {{.name = "A_b", .relationships = {{.name = "c", .destination = "A", .isToMany = true}}},
            {.name = "A", .relationships = {{.name = "b_c", .destination = "A", .isToMany = true}}},
            {.name = "Select", .attributes = {{.name = "from"}}}});
    detail::Connection connection({});

    for (const auto& statement : detail::schemaStatements(*model))
        EXPECT_EQ(failureOf([&] { connection.execute(statement); }), std::nullopt) << statement;
}

TEST(NSEntityDescription, StandsAloneWithoutAName)
{
    const auto entity = NSEntityDescription::make({.attributes = {{.name = "a"}}});

    EXPECT_EQ(entity->name(), std::nullopt);
    EXPECT_EQ(entity->attributes().size(), 1u);
    EXPECT_EQ(entity->description(), "NSEntityDescription()");
}

TEST(NSManagedObjectID, PrintsItsEntityAndNumber)
{
    const auto entity = NSEntityDescription::make({.name = "Person"});

    EXPECT_EQ(NSManagedObjectID(entity, 12).description(), "Person/p12");
    EXPECT_EQ(NSManagedObjectID(entity, -3).description(), "Person/t3");
    EXPECT_EQ(NSManagedObjectID(nullptr, 1).description(), "/p1");
}
