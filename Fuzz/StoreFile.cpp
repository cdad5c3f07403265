// Store files may be damaged in any way: opening, reading, saving and migrating give a store error or work.
// The input is a file of its own, or changes of a sound one: three bytes of a place and one to put there.

#include "Orrenby/Platform/Objects/Data.hpp"
#include "Orrenby/Platform/Store/NSManagedObjectContext.hpp"
#include "Orrenby/Platform/Store/StoreMigration.hpp"
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <unistd.h>

using namespace orrenby;

namespace {

Ref<const NSManagedObjectModel> makeModel(std::int64_t version)
{
    return NSManagedObjectModel::make(version,
        {{.name = "Item",
            .attributes = {{.name = "name"}, {.name = "age", .kind = AttributeKind::Int, .isOptional = true},
                {.name = "tag", .kind = AttributeKind::UUID, .isOptional = true},
                {.name = "photo", .kind = AttributeKind::Bytes, .isOptional = true}},
            .relationships = {{.name = "next", .destination = "Item", .inverse = "others"},
                {.name = "others", .destination = "Item", .inverse = "next", .isToMany = true},
                {.name = "near", .destination = "Item", .inverse = "near", .isToMany = true}}}});
}

const Ref<const NSManagedObjectModel>& model()
{
    static const auto& made = *new Ref<const NSManagedObjectModel>(makeModel(1));
    return made;
}

const std::vector<MigrationStep>& steps()
{
    static const auto& made = *new std::vector<MigrationStep>{{.from = model(), .to = makeModel(2)}};
    return made;
}

const std::string& path()
{
    static const auto& made = *new std::string(
        (std::filesystem::temp_directory_path() / ("orrenby-fuzz-" + std::to_string(getpid()))).string());
    return made;
}

void removeFiles()
{
    for (const auto* const ending : {"", "-wal", "-shm", "-journal"})
        std::filesystem::remove(path() + ending);
}

/// Opens the file, reads all of it, changes it and saves.
void use(const StoreSettings& settings)
{
    const auto context = make<NSManagedObjectContext>(PersistentStore::open(model(), settings));
    const auto items = context->fetch({.entity = "Item",
        .predicate = NSPredicate::make("ANY near.name LIKE '*' OR next.age != 1 OR others.@count > 1")});
    for (const auto& item : context->fetch({.entity = "Item", .sortDescriptors = {{"name"}}})) {
        item->value("next");
        item->value("near");
        item->value("others");
        item->setValue("age", 3);
    }
    const auto added = context->insert("Item");
    added->setValue("name", std::string(500, 'x'));
    if (!items.empty())
        added->setValue("next", items.back());
    context->save();
}

template <class Work> void allowStoreErrors(Work&& work)
{
    try {
        work();
    } catch (const StoreError&) {
        // A clear error is what is wanted.
    }
}

void saveSoundFile()
{
    removeFiles();
    const auto context = make<NSManagedObjectContext>(PersistentStore::open(model(), {.path = path()}));
    Ref<NSManagedObject> last;
    for (int number = 0; number < 60; ++number) {
        const auto item = context->insert("Item");
        item->setValue("name", std::string(static_cast<std::size_t>(number) * 5, 'n'));
        item->setValue("photo", Data(static_cast<std::size_t>(number)));
        item->setValue("next", last);
        last = item;
    }
    context->save();
}

std::string soundFile()
{
    saveSoundFile(); // closed at its end, so that nothing is left in a log
    std::ifstream file(path(), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string damaged(std::string content, const std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t changeSize = 4;
    for (std::size_t place = 0; place + changeSize <= size; place += changeSize) {
        const auto offset = std::size_t(data[place]) << 16 | std::size_t(data[place + 1]) << 8
            | data[place + 2];
        content[offset % content.size()] = static_cast<char>(data[place + 3]);
    }
    return content;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const auto& sound = *new std::string(soundFile());
    if (size == 0)
        return 0;
    const std::string_view rest(reinterpret_cast<const char*>(data + 1), size - 1);
    removeFiles();
    std::ofstream(path(), std::ios::binary)
        << (data[0] % 4 == 0 ? std::string(rest) : damaged(sound, data + 1, size - 1));
    const StoreSettings settings{.path = path(), .synchronous = StoreSynchronous::Off, .busyTimeout = 0};
    if (data[0] % 8 < 4)
        allowStoreErrors([&] { use(settings); });
    allowStoreErrors([&] { migrateStore(steps(), settings); });
    allowStoreErrors([&] { migrationHistory(settings); });
    removeFiles();
    return 0;
}
