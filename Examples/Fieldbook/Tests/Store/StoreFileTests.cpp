#include "Examples/Fieldbook/Store/StoreFile.hpp"

#include "Examples/Fieldbook/Tests/OwnFolder.hpp"
#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <unistd.h>

namespace {

using namespace fieldbook;
using ::testing::EndsWith;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;

/// An environment variable that is what it was again when the test ends.
class Variable {
public:
    Variable(const char* name, const char* value)
        : m_name(name)
    {
        if (const auto* const before = std::getenv(name))
            m_before = before;
        set(value);
    }
    ~Variable() { set(m_before ? m_before->c_str() : nullptr); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    void set(const char* value)
    {
        if (value != nullptr)
            ::setenv(m_name, value, 1);
        else
            ::unsetenv(m_name);
    }

    const char* m_name;
    std::optional<std::string> m_before;
};

TEST(StoreFile, IsMadeWithItsFolderForItsOwnerAlone)
{
    const OwnFolder folder;
    const auto file = folder.path() / "new" / "er" / "store";

    const auto store = StoreFile::open(file);

    ASSERT_TRUE(store.isSuccess()) << store.error()->text;
    EXPECT_THAT(store.unwrap()->memory()->reports(), IsEmpty());
    EXPECT_EQ(std::filesystem::status(file).permissions(),
        std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    EXPECT_EQ(std::filesystem::status(file.parent_path()).permissions(), std::filesystem::perms::owner_all);
}

TEST(StoreFile, HoldsWhatTheRunBeforeItWrote)
{
    const OwnFolder folder;
    {
        const auto store = StoreFile::open(folder.file("store"));
        auto& memory = *store.unwrap()->memory();
        memory.commit([&] { memory.set("order", "place"); });
    }

    const auto store = StoreFile::open(folder.file("store"));

    ASSERT_TRUE(store.isSuccess()) << store.error()->text;
    EXPECT_EQ(store.unwrap()->memory()->setting("order"), "place");
}

TEST(StoreFile, IsRefusedWhileAnotherRunHasItOpen)
{
    const OwnFolder folder;
    auto first = StoreFile::open(folder.file("store"));

    const auto second = StoreFile::open(folder.file("store"));

    ASSERT_TRUE(second.isFailure());
    EXPECT_EQ(second.error()->kind, StoreProblem::Kind::outOfReach);
    EXPECT_THAT(second.error()->text, EndsWith("\": another fieldbook uses it"));
    first = StoreFile::Outcome::failure({StoreProblem::Kind::outOfReach, "closed"});
    EXPECT_TRUE(StoreFile::open(folder.file("store")).isSuccess());
}

TEST(StoreFile, ThatIsNoStoreIsRefusedAndLeftAsItIs)
{
    const OwnFolder folder;
    folder.file("store", "Dear diary,\n" + std::string(5000, '.'));
    const auto before = contentOf(folder.file("store"));

    const auto store = StoreFile::open(folder.file("store"));

    ASSERT_TRUE(store.isFailure());
    EXPECT_EQ(store.error()->kind, StoreProblem::Kind::unusable);
    EXPECT_THAT(store.error()->text, EndsWith("\": it is damaged, or no store"));
    EXPECT_EQ(contentOf(folder.file("store")), before);
}

TEST(StoreFile, ThatIsCutOffIsRefusedAndLeftAsItIs)
{
    const OwnFolder folder;
    {
        const auto store = StoreFile::open(folder.file("store"));
        auto& memory = *store.unwrap()->memory();
        memory.commit([&] {
            for (auto number = 1; number <= 100; ++number)
                memory.put("r" + std::to_string(number) + ".json", number,
                    {"Rope frayed", "Quay", "Nils", Severity::low, std::string(500, 'x')});
        });
    }
    std::filesystem::resize_file(
        folder.file("store"), std::filesystem::file_size(folder.file("store")) / 2 / 4096 * 4096);
    const auto before = contentOf(folder.file("store"));

    const auto store = StoreFile::open(folder.file("store"));

    ASSERT_TRUE(store.isFailure());
    EXPECT_EQ(store.error()->kind, StoreProblem::Kind::unusable);
    EXPECT_EQ(contentOf(folder.file("store")), before);
}

TEST(StoreFile, ThatIsAFolderIsRefused)
{
    const OwnFolder folder;

    const auto store = StoreFile::open(folder.path());

    ASSERT_TRUE(store.isFailure());
    EXPECT_THAT(store.error()->text, EndsWith("\": Is a directory"));
}

TEST(StoreFile, OfAFolderStandsWhereTheSystemKeepsTheStateOfPrograms)
{
    const Variable state("XDG_STATE_HOME", "/var/state");
    const Variable home("HOME", "/home-of-ada");

    const auto file = defaultStoreFile("/data/field reports/");

    ASSERT_TRUE(file);
    EXPECT_THAT(file->string(), MatchesRegex("/var/state/fieldbook/field reports-[0-9a-f]{8}\\.store"));
    EXPECT_EQ(defaultStoreFile("/data/./field reports"), file);
    EXPECT_NE(defaultStoreFile("/other/field reports"), file);
}

TEST(StoreFile, OfAFolderStandsAtHomeWhereNoOtherPlaceIsNamed)
{
    const Variable state("XDG_STATE_HOME", "relative/is/ignored");
    const Variable home("HOME", "/home-of-ada");

    EXPECT_THAT(defaultStoreFile("/data")->string(),
        MatchesRegex("/home-of-ada/\\.local/state/fieldbook/data-[0-9a-f]{8}\\.store"));
}

TEST(StoreFile, OfAFolderIsNowhereWithoutAHome)
{
    const Variable state("XDG_STATE_HOME", nullptr);
    const Variable home("HOME", nullptr);

    EXPECT_EQ(defaultStoreFile("/data"), std::nullopt);
}

} // namespace
