#include "Orrenby/Foundation/BaseManagedObject.hpp"

#include "Orrenby/Platform/Store/ManagedMembers.hpp"
#include "Orrenby/Platform/Store/NSManagedObjectContext.hpp"
#include <gmock/gmock.h>

using namespace orrenby;
using testing::IsNull;

namespace {

Ref<const NSManagedObjectModel> notes()
{
    return NSManagedObjectModel::make(1, {{.name = "Note", .attributes = {{.name = "text"}}}});
}

} // namespace

TEST(BaseManagedObject, IsTheBaseOfStoredObjects)
{
    //! [Deriving stored objects]
    class Note : public BaseManagedObject {
    public:
        using BaseManagedObject::BaseManagedObject;
        Attribute<std::string, "text"> text{*this};
    };
    const auto model = NSManagedObjectModel::make(
        1, {{.name = "Note", .attributes = {{.name = "text"}}, .objectClass = managedObjectClass<Note>}});
    const auto context = make<NSManagedObjectContext>(PersistentStore::open(model));

    const auto note = make<Note>(model->entity("Note"), context);
    note->text = "Call Eva";
    context->save();

    EXPECT_EQ(context->fetch<Note>({.entity = "Note"}).at(0), note);
    //! [Deriving stored objects]
}

TEST(BaseManagedObject, ForwardsItsEntityAndContext)
{
    const auto model = notes();
    const auto context = make<NSManagedObjectContext>(PersistentStore::open(model));

    const auto object = make<BaseManagedObject>(model->entity("Note"), context);

    EXPECT_EQ(object->entity(), model->entity("Note"));
    EXPECT_EQ(object->managedObjectContext(), context);
    EXPECT_TRUE(object->isInserted());
}

TEST(BaseManagedObject, NeedsNoContext)
{
    const auto object = make<BaseManagedObject>(notes()->entity("Note"));

    EXPECT_THAT(object->managedObjectContext(), IsNull());
    EXPECT_FALSE(object->isInserted());
}

TEST(BaseManagedObject, AddsNoState) { EXPECT_EQ(sizeof(BaseManagedObject), sizeof(NSManagedObject)); }
