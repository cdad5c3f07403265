#include "Orrenby/Platform/Store/Connection.hpp"

#include "Orrenby/Platform/Net/UUID.hpp"
#include "Tests/Platform/Store/StoreFailure.hpp"
#include "Tests/Support/TemporaryFolder.hpp"
#include <gmock/gmock.h>

using namespace orrenby;
using namespace orrenby::tests;
using detail::Connection;
using detail::Transaction;
using Kind = StoreError::Kind;
using testing::Optional;

namespace {

constexpr const char* makeNumbers = "CREATE TABLE numbers (number INTEGER PRIMARY KEY)";

std::int64_t count(Connection& connection) { return connection.integer("SELECT count(*) FROM numbers"); }

} // namespace

TEST(Connection, InMemoryNeedsNoPathAndIsSeenByNobodyElse)
{
    Connection first({});
    Connection second({});

    first.execute(makeNumbers);

    EXPECT_THAT(failureOf([&] { count(second); }), Optional(Kind::Other));
}

TEST(Connection, OpensFilesWithALogForeignKeysAndFullSynchronisation)
{
    const TemporaryFolder folder;
    Connection connection({.path = folder.file("store")});

    auto mode = connection.prepare("PRAGMA journal_mode");
    ASSERT_TRUE(mode.step());
    EXPECT_EQ(mode.text(0), "wal");
    EXPECT_EQ(connection.integer("PRAGMA foreign_keys"), 1);
    EXPECT_EQ(connection.integer("PRAGMA synchronous"), 2);
}

TEST(Connection, SynchronisesAsItsCallerWishes)
{
    const TemporaryFolder folder;

    EXPECT_EQ(Connection({.path = folder.file("store"), .synchronous = StoreSynchronous::Normal})
                  .integer("PRAGMA synchronous"),
        1);
    EXPECT_EQ(Connection({.path = folder.file("store"), .synchronous = StoreSynchronous::Off})
                  .integer("PRAGMA synchronous"),
        0);
}

TEST(Connection, APathIsAPathAlsoWhenItLooksLikeSomethingElse)
{
    const TemporaryFolder folder;
    {
        Connection connection({.path = folder.file("file:x?mode=memory")});
        connection.execute(makeNumbers);
    }

    EXPECT_TRUE(std::filesystem::exists(folder.file("file:x?mode=memory")));
}

TEST(Connection, AFolderOrAMissingFolderCannotBeOpened)
{
    const TemporaryFolder folder;

    EXPECT_THAT(failureOf([&] { Connection({.path = folder.file("")}); }), Optional(Kind::CannotOpen));
    EXPECT_THAT(failureOf([&] { Connection({.path = folder.file("a/b/c")}); }), Optional(Kind::CannotOpen));
}

TEST(Connection, APathWithANullCharacterCannotBeOpened)
{
    EXPECT_THAT(failureOf([] { Connection({.path = std::string("a\0b", 3)}); }), Optional(Kind::CannotOpen));
}

TEST(Connection, ReadingOnlyNeedsAFileAndRefusesToWrite)
{
    const TemporaryFolder folder;
    EXPECT_THAT(failureOf([&] { Connection({.path = folder.file("store"), .isReadOnly = true}); }),
        Optional(Kind::CannotOpen));
    Connection(StoreSettings{.path = folder.file("store")}).execute(makeNumbers);

    Connection connection({.path = folder.file("store"), .isReadOnly = true});

    EXPECT_EQ(count(connection), 0);
    EXPECT_THAT(
        failureOf([&] { connection.execute("INSERT INTO numbers VALUES (1)"); }), Optional(Kind::ReadOnly));
}

TEST(Connection, AFileThatIsNoStoreIsCorrupt)
{
    const TemporaryFolder folder;
    for (const std::size_t length : {1U, 2U, 15U, 16U, 99U, 100U, 511U, 512U, 8192U}) {
        const std::string content(length, 'x');
        folder.file("store", content);

        EXPECT_THAT(failureOf([&] { Connection({.path = folder.file("store")}); }), Optional(Kind::Corrupt));
        EXPECT_EQ(contentOf(folder.file("store")), content) << length;
    }
}

TEST(Connection, AFullDiskIsSaidAndKeepsTheStateBefore)
{
    const TemporaryFolder folder;
    Connection connection({.path = folder.file("store"), .maximumPageCount = 4});
    connection.execute("CREATE TABLE texts (text TEXT); INSERT INTO texts VALUES ('kept')");

    EXPECT_THAT(failureOf([&] {
        Transaction transaction(connection);
        connection.execute("INSERT INTO texts VALUES (hex(zeroblob(100000)))");
        transaction.commit();
    }),
        Optional(Kind::DiskFull));
    EXPECT_EQ(connection.integer("SELECT count(*) FROM texts"), 1);
}

TEST(Connection, ASecondWriterGivesUpAfterTheBusyTimeout)
{
    const TemporaryFolder folder;
    Connection first({.path = folder.file("store")});
    Connection second({.path = folder.file("store"), .busyTimeout = 0});
    first.execute(makeNumbers);
    Transaction transaction(first);

    EXPECT_THAT(failureOf([&] { Transaction other(second); }), Optional(Kind::Busy));
    EXPECT_EQ(count(second), 0);
}

TEST(Connection, AReferenceToNothingIsAConstraintFailureAtTheCommit)
{
    Connection connection({});
    connection.execute(makeNumbers);
    connection.execute("CREATE TABLE uses (number INTEGER REFERENCES numbers DEFERRABLE INITIALLY DEFERRED)");
    Transaction transaction(connection);
    connection.execute("INSERT INTO uses VALUES (7)");

    EXPECT_THAT(failureOf([&] { transaction.commit(); }), Optional(Kind::Constraint));
    EXPECT_EQ(connection.integer("SELECT count(*) FROM uses"), 0);
}

TEST(Transaction, IsUndoneUnlessItIsCommitted)
{
    Connection connection({});
    connection.execute(makeNumbers);
    {
        Transaction transaction(connection);
        connection.execute("INSERT INTO numbers VALUES (1)");
    }
    {
        Transaction transaction(connection);
        connection.execute("INSERT INTO numbers VALUES (2)");
        transaction.commit();
    }

    EXPECT_EQ(connection.integer("SELECT sum(number) FROM numbers"), 2);
}

TEST(Transaction, InsideAnotherUndoesOnlyItself)
{
    Connection connection({});
    connection.execute(makeNumbers);
    Transaction outer(connection);
    connection.execute("INSERT INTO numbers VALUES (1)");
    {
        Transaction inner(connection);
        connection.execute("INSERT INTO numbers VALUES (2)");
    }
    {
        Transaction inner(connection);
        connection.execute("INSERT INTO numbers VALUES (4)");
        inner.commit();
    }
    outer.commit();

    EXPECT_EQ(connection.integer("SELECT sum(number) FROM numbers"), 5);
}

TEST(Statement, BindsEveryKindOfValueAsItIs)
{
    Connection connection({});
    const auto typeOf = [&](const Any& value) {
        auto statement = connection.prepare("SELECT typeof(?)");
        statement.bind(1, value);
        statement.step();
        return std::string(statement.text(0));
    };

    EXPECT_EQ(typeOf(Any()), "null");
    EXPECT_EQ(typeOf(true), "integer");
    EXPECT_EQ(typeOf(INT64_MIN), "integer");
    EXPECT_EQ(typeOf(1.5), "real");
    EXPECT_EQ(typeOf(Date(0)), "real");
    EXPECT_EQ(typeOf(""), "text");
    EXPECT_EQ(typeOf(Data{}), "blob");
    EXPECT_EQ(typeOf(Data(3)), "blob");
    EXPECT_EQ(typeOf(UUID()), "blob");
}

TEST(Statement, KeepsTextsWithNullCharactersAndQuotesWhole)
{
    Connection connection({});
    auto statement = connection.prepare("SELECT ?");
    const auto text = std::string("a\0'b\"; DROP TABLE numbers; --", 29);
    statement.bindText(1, text);

    ASSERT_TRUE(statement.step());
    EXPECT_EQ(statement.text(0), text);
}

TEST(Statement, AnEmptyTextIsNoNull)
{
    Connection connection({});
    auto statement = connection.prepare("SELECT ?");
    statement.bindText(1, {});

    ASSERT_TRUE(statement.step());
    EXPECT_FALSE(statement.isNull(0));
}

TEST(StatementDeathTest, RefusesWhatIsNoValue)
{
    Connection connection({});
    auto statement = connection.prepare("SELECT ?");

    EXPECT_DEATH(
        statement.bind(1, Dictionary()), "A value of this kind cannot be stored: file Platform/Statement");
}
