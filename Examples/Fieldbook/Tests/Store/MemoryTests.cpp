#include "Examples/Fieldbook/Store/Memory.hpp"

#include "Examples/Fieldbook/Store/StoreFile.hpp"
#include "Examples/Fieldbook/Tests/OwnFolder.hpp"
#include "Orrenby/Platform/Store/NSManagedObjectContext.hpp"
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace fieldbook;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const Report rope = {"Rope frayed", "Quay", "Nils", Severity::high, "Two strands.", orrenby::Date(7)};
const Report crane = {"Crane stuck", "Quay", "Nils", Severity::low, std::nullopt};

/// The memory of another run on the same store.
Memory reopened(const std::shared_ptr<Memory>& memory)
{
    return Memory(orrenby::make<orrenby::NSManagedObjectContext>(memory->context()->persistentStore()));
}

TEST(Memory, IsEmptyAtFirst)
{
    const auto memory = StoreFile::inMemory()->memory();

    EXPECT_THAT(memory->reports(), IsEmpty());
    EXPECT_EQ(memory->setting("order"), std::nullopt);
}

TEST(Memory, HoldsReportsInTheOrderOfTheirNumbersAndSettings)
{
    //! [Remembering]
    const auto memory = StoreFile::inMemory()->memory();
    memory->commit([&] {
        memory->put("b.json", 1, rope);
        memory->put("a.json", 2, crane);
        memory->set("order", "place");
    });

    const auto later = reopened(memory);
    EXPECT_THAT(later.reports(),
        ElementsAre(RememberedReport{"b.json", 1, rope}, RememberedReport{"a.json", 2, crane}));
    EXPECT_EQ(later.setting("order"), "place");
    //! [Remembering]
}

TEST(Memory, HoldsTheLatestThatWasSaidOfAFile)
{
    const auto memory = StoreFile::inMemory()->memory();
    memory->commit([&] { memory->put("a.json", 1, rope); });

    memory->commit([&] {
        memory->put("a.json", 1, crane);
        memory->set("order", "place");
        memory->set("order", "number");
    });

    EXPECT_THAT(reopened(memory).reports(), ElementsAre(RememberedReport{"a.json", 1, crane}));
    EXPECT_EQ(reopened(memory).setting("order"), "number");
}

TEST(Memory, KeepsTheNumberOfAFileThatIsGone)
{
    const auto memory = StoreFile::inMemory()->memory();
    memory->commit([&] { memory->put("a.json", 4, rope); });

    memory->commit([&] {
        memory->takeAway("a.json");
        memory->takeAway("never-there.json");
    });

    EXPECT_THAT(reopened(memory).reports(), ElementsAre(RememberedReport{"a.json", 4, std::nullopt}));
}

TEST(Memory, NotesHowFarTheSendingIs)
{
    const auto memory = StoreFile::inMemory()->memory();
    memory->commit([&] { memory->put("a.json", 4, rope); });

    memory->commit([&] {
        memory->mark(4, Sending::done);
        memory->mark(5, Sending::asked);
    });

    EXPECT_THAT(reopened(memory).reports(), ElementsAre(RememberedReport{"a.json", 4, rope, Sending::done}));
}

TEST(Memory, PassesOverWhatNoRunCanHaveWritten)
{
    const auto memory = StoreFile::inMemory()->memory();
    memory->commit([&] {
        memory->put("a.json", 0, rope);
        memory->put("b.json", 1, rope);
        memory->put("c.json", 1, crane);
        memory->put("d.json", 2, {"\x1b[2J", "Quay", "Nils", Severity::low, std::nullopt});
    });

    EXPECT_THAT(reopened(memory).reports(),
        ElementsAre(RememberedReport{"b.json", 1, rope}, RememberedReport{"d.json", 2, std::nullopt}));
}

TEST(Memory, WritesWithTheNextCommitWhatCouldNotBeWritten)
{
    const OwnFolder folder;
    const auto store = StoreFile::open(folder.file("store"));
    const auto memory = store.unwrap()->memory();
    memory->commit([&] { memory->put("a.json", 1, rope); });
    {
        // Somebody else saves the same report in between.
        const auto other = orrenby::make<orrenby::NSManagedObjectContext>(
            memory->context()->persistentStore());
        const auto stored = other->fetch<StoredReport>({.entity = StoredReport::entityName}).at(0);
        stored->place = "Elsewhere";
        other->save();
    }
    EXPECT_THROW(memory->commit([&] {
        memory->put("a.json", 1, crane);
        memory->set("order", "place");
    }),
        orrenby::StoreError);

    const auto object = memory->context()->fetch<StoredReport>({.entity = StoredReport::entityName}).at(0);
    memory->context()->refresh(object, true);
    memory->commit([] {});

    EXPECT_EQ(reopened(memory).setting("order"), "place");
}

} // namespace
