// Texts of predicates may be anything: they are refused at a byte of theirs, or mean the same after they are
// printed and read again, and the store finds with them what is found in memory.

#include "Fuzz/Support/RequireThat.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include "Orrenby/Platform/Store/NSManagedObjectContext.hpp"
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

using namespace orrenby;

namespace {

Ref<const NSManagedObjectModel> model()
{
    return NSManagedObjectModel::make(1,
        {{.name = "Item",
            .attributes = {{.name = "name"}, {.name = "age", .kind = AttributeKind::Int, .isOptional = true},
                {.name = "rate", .kind = AttributeKind::Double, .isOptional = true},
                {.name = "flag", .kind = AttributeKind::Bool, .isOptional = true}},
            .relationships = {{.name = "next", .destination = "Item", .inverse = "others"},
                {.name = "others", .destination = "Item", .inverse = "next", .isToMany = true},
                {.name = "near", .destination = "Item", .inverse = "near", .isToMany = true}}}});
}

/// A few objects in a ring, some of whose values are empty.
Ref<PersistentStore> store()
{
    const auto context = make<NSManagedObjectContext>(PersistentStore::open(model()));
    Ref<NSManagedObject> last;
    for (const auto* const name : {"", "a", "A*", "\xC3\xA4?", "\xFF"}) {
        const auto item = context->insert("Item");
        const auto number = static_cast<std::int64_t>(context->insertedObjects().size());
        item->setValue("name", name);
        item->setValue("next", last);
        if (number % 2 == 0)
            item->setValue("age", number - 3);
        else
            item->setValue("rate", static_cast<double>(number) / 2);
        item->setValue("flag", number < 3);
        last = item;
    }
    context->save();
    return context->persistentStore();
}

/// Has changes that come to nothing, so that it looks for itself.
Ref<NSManagedObjectContext> changedContext(const Ref<PersistentStore>& store)
{
    auto context = make<NSManagedObjectContext>(store);
    const auto item = context->fetch({.entity = "Item"}).at(0);
    item->setValue("name", "changed");
    item->setValue("name", "");
    return context;
}

/// The names of what is found; nothing when the predicate does not fit.
std::optional<std::vector<NSManagedObjectID>> found(
    NSManagedObjectContext& context, const NSPredicate& predicate)
{
    try {
        std::vector<NSManagedObjectID> names;
        for (const auto& item : context.fetch({.entity = "Item", .predicate = predicate}))
            names.push_back(item->objectID());
        return names;
    } catch (const StoreError& error) {
        requireThat(error.kind() == StoreError::Kind::InvalidPredicate);
        return std::nullopt;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const auto& kept = *new Ref<PersistentStore>(store());
    static const auto& plain = *new Ref<NSManagedObjectContext>(make<NSManagedObjectContext>(kept));
    static const auto& changed = *new Ref<NSManagedObjectContext>(changedContext(kept));
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto outcome = NSPredicate::tryMake(text);
    if (!outcome.isSuccess()) {
        const auto position = outcome.error()->context().position;
        requireThat(outcome.error()->kind() == StoreError::Kind::InvalidPredicate);
        requireThat(position && *position <= size);
        return 0;
    }
    const auto predicate = *outcome.value();
    requireThat(NSPredicate::make(predicate.description()) == predicate);
    requireThat(found(*plain, predicate) == found(*changed, predicate));
    return 0;
}
