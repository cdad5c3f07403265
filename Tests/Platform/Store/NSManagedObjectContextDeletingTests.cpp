#include "Orrenby/Platform/Store/NSManagedObjectContext.hpp"

#include "Tests/Platform/Store/StoreFailure.hpp"
#include "Tests/Platform/Store/StoreParts.hpp"
#include <gmock/gmock.h>

using namespace orrenby;
using namespace orrenby::tests;
using Kind = StoreError::Kind;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsNull;
using testing::Optional;

TEST(NSManagedObjectContext, NullifiesReferencesToWhatIsDeleted)
{
    const auto [context, company, a, b] = savedTeam();

    context->delete_(company);
    context->delete_(b);
    EXPECT_THAT(a->employer.get(), IsNull());
    EXPECT_THAT(a->friends.get(), IsEmpty());
    context->save();

    EXPECT_THAT(storedNames(context->persistentStore()), ElementsAre("a"));
}

TEST(NSManagedObjectContext, CascadesDeletions)
{
    const auto context = peopleContext(DeleteRule::Cascade);
    const auto company = context->insert<Company>("Company");
    company->staff.insert(insertPerson(context, "a"));
    company->staff.insert(insertPerson(context, "b"));
    insertPerson(context, "c");
    context->save();

    context->delete_(company);
    context->delete_(company);
    context->save();

    EXPECT_THAT(storedNames(context->persistentStore()), ElementsAre("c"));
}

TEST(NSManagedObjectContext, DeniesDeletionsUntilNothingIsInTheWay)
{
    const auto [context, company, a, b] = savedTeam(DeleteRule::Deny);

    context->delete_(company);
    EXPECT_THAT(failureOf([&] { context->save(); }), Optional(Kind::DeleteDenied));
    EXPECT_THAT(context->deletedObjects(), ElementsAre(company));

    a->employer = nullptr;
    context->save();
    EXPECT_THAT(context->fetch({.entity = "Company"}), IsEmpty());
}

TEST(NSManagedObjectContext, WithoutARuleADanglingReferenceMakesTheSaveFail)
{
    const auto [context, company, a, b] = savedTeam(DeleteRule::NoAction);

    context->delete_(company);
    EXPECT_THAT(failureOf([&] { context->save(); }), Optional(Kind::Constraint));
    EXPECT_TRUE(context->hasChanges());

    context->delete_(a);
    context->save();
    EXPECT_THAT(storedNames(context->persistentStore()), ElementsAre("b"));
}

TEST(NSManagedObjectContext, AnObjectDeletedBeforeItWasSavedNeverWas)
{
    const auto context = peopleContext();
    const auto a = insertPerson(context, "a");

    context->delete_(a);
    a->name = "b";

    EXPECT_FALSE(context->hasChanges());
    EXPECT_TRUE(a->isDeleted());
    EXPECT_THAT(context->fetch({.entity = "Person"}), IsEmpty());
}

TEST(NSManagedObjectContext, CascadesThroughCircles)
{
    const auto model = NSManagedObjectModel::make(1,
        {{.name = "Node",
            .relationships = {{.name = "next",
                                  .destination = "Node",
                                  .inverse = "previous",
                                  .deleteRule = DeleteRule::Cascade},
                {.name = "previous", .destination = "Node", .inverse = "next"}}}});
    const auto context = make<NSManagedObjectContext>(PersistentStore::open(model));
    std::vector<Ref<NSManagedObject>> nodes;
    for (int number = 0; number < 3; ++number)
        nodes.push_back(context->insert("Node"));
    for (std::size_t number = 0; number < 3; ++number)
        nodes[number]->setObject("next", nodes[(number + 1) % 3]);
    context->save();

    context->delete_(nodes[1]);
    context->save();

    EXPECT_THAT(context->fetch({.entity = "Node"}), IsEmpty());
}

TEST(NSManagedObjectContext, DeletesWhatIsInTheWayTogetherWithIt)
{
    const auto [context, company, a, b] = savedTeam(DeleteRule::Deny);

    context->delete_(company);
    context->delete_(a);
    context->save();

    EXPECT_THAT(context->fetch({.entity = "Company"}), IsEmpty());
}

TEST(NSManagedObjectContext, DeniesDeletionsOfWhatLeadsToOneObject)
{
    const auto model = NSManagedObjectModel::make(1,
        {{.name = "Leaf",
             .relationships = {{.name = "tree", .destination = "Tree", .deleteRule = DeleteRule::Deny}}},
            {.name = "Tree"}});
    const auto first = make<NSManagedObjectContext>(PersistentStore::open(model));
    const auto saved = first->insert("Leaf");
    saved->setObject("tree", first->insert("Tree"));
    first->save();
    const auto context = make<NSManagedObjectContext>(first->persistentStore());
    const auto leaf = context->object(saved->objectID());

    context->delete_(leaf);
    const auto outcome = context->trySave();
    EXPECT_EQ(outcome.error()->kind(), Kind::DeleteDenied);
    EXPECT_EQ(outcome.error()->context().key, "tree");

    context->delete_(context->fetch({.entity = "Tree"}).at(0));
    context->save();
    EXPECT_THAT(context->fetch({.entity = "Leaf"}), IsEmpty());
    EXPECT_THAT(context->fetch({.entity = "Tree"}), IsEmpty());
}

TEST(NSManagedObjectContext, WhatIsDeletedButNotSavedDoesNotExist)
{
    const auto [context, company, a, b] = savedTeam();

    context->delete_(a);

    EXPECT_THAT(context->existingObject(a->objectID()), IsNull());
}
