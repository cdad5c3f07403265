#include "Orrenby/Platform/Store/PersistentStore.hpp"

#include "Orrenby/Platform/Store/Connection.hpp"
#include "Tests/Platform/Store/StoreFailure.hpp"
#include "Tests/Platform/Store/StoreParts.hpp"
#include "Tests/Support/TemporaryFolder.hpp"
#include <cstdio>
#include <exception>
#include <gmock/gmock.h>
#include <set>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

using namespace orrenby;
using namespace orrenby::tests;

namespace {

Ref<NSManagedObjectContext> contextOf(const std::string& path, double busyTimeout)
{
    return make<NSManagedObjectContext>(
        PersistentStore::open(peopleModel(), {.path = path, .busyTimeout = busyTimeout}));
}

/// A file that is there before two processes open it. None may inherit it open from the other.
void makeFile(const std::string& path) { PersistentStore::open(peopleModel(), {.path = path}); }

/// Runs `work` in a process of its own, whose exit code it gives.
template <class Work> pid_t inAnotherProcess(Work&& work)
{
    const auto process = fork();
    if (process != 0)
        return process;
    try {
        _exit(work());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "the other process: %s\n", error.what());
        _exit(99);
    }
}

int exitCodeOf(pid_t process)
{
    int status = 0;
    waitpid(process, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// A word between two processes.
class Signal {
public:
    Signal()
    {
        if (pipe(m_ends) != 0)
            std::abort();
    }
    Signal(const Signal&) = delete;
    Signal& operator=(const Signal&) = delete;
    ~Signal()
    {
        for (const int end : m_ends)
            if (end >= 0)
                close(end);
    }

    bool give() const { return write(m_ends[1], "x", 1) == 1; }
    /// Also ends, without a word, when the other process does.
    bool await()
    {
        close(std::exchange(m_ends[1], -1));
        char word = 0;
        return read(m_ends[0], &word, 1) == 1;
    }

private:
    int m_ends[2] = {};
};

/// Saves people one by one.
int savePeople(const std::string& path, const std::string& prefix, int count)
{
    const auto context = contextOf(path, 60);
    for (int number = 0; number < count; ++number) {
        insertPerson(context, prefix + std::to_string(number));
        context->save();
    }
    return 0;
}

} // namespace

TEST(PersistentStoreInTwoProcesses, KeepsWhatBothSaveByTurns)
{
    constexpr int count = 100;
    const TemporaryFolder folder;

    // Neither has made the file yet: they meet while doing so, too.
    const auto first = inAnotherProcess([&] { return savePeople(folder.file("store"), "a", count); });
    const auto second = inAnotherProcess([&] { return savePeople(folder.file("store"), "b", count); });
    EXPECT_EQ(exitCodeOf(first), 0);
    EXPECT_EQ(exitCodeOf(second), 0);

    std::set<std::string> expected;
    for (int number = 0; number < count; ++number)
        expected.insert({"a" + std::to_string(number), "b" + std::to_string(number)});
    const auto names = storedNames(PersistentStore::open(peopleModel(), {.path = folder.file("store")}));
    EXPECT_EQ(names.size(), 2u * count);
    EXPECT_EQ(std::set<std::string>(names.begin(), names.end()), expected);
    detail::Connection connection({.path = folder.file("store")});
    auto check = connection.prepare("PRAGMA integrity_check");
    ASSERT_TRUE(check.step());
    EXPECT_EQ(check.text(0), "ok");
}

TEST(PersistentStoreInTwoProcesses, WaitsForAnotherThatWrites)
{
    const TemporaryFolder folder;
    Signal isWriting;
    makeFile(folder.file("store"));
    const auto other = inAnotherProcess([&] {
        detail::Connection connection({.path = folder.file("store")});
        detail::Transaction transaction(connection);
        if (!isWriting.give())
            return 1;
        // Enough work for the other one to meet the lock.
        connection.execute("WITH RECURSIVE keys(key) AS (SELECT 1000001 UNION ALL SELECT key + 1 FROM keys "
                           "LIMIT 100000) INSERT INTO \"Company\" SELECT key, 1, 'Other' FROM keys");
        transaction.commit();
        return 0;
    });
    ASSERT_TRUE(isWriting.await());
    const auto context = contextOf(folder.file("store"), 60);
    insertPerson(context, "Ann");

    context->save();

    EXPECT_EQ(exitCodeOf(other), 0);
    EXPECT_EQ(storedNames(context->persistentStore()), std::vector<std::string>{"Ann"});
    detail::Connection connection({.path = folder.file("store")});
    EXPECT_EQ(connection.integer("SELECT count(*) FROM \"Company\""), 100000);
}

TEST(PersistentStoreInTwoProcesses, SaysThatAnotherWritesAndLosesNothing)
{
    const TemporaryFolder folder;
    Signal isWriting;
    Signal mayEnd;
    makeFile(folder.file("store"));
    const auto other = inAnotherProcess([&] {
        detail::Connection connection({.path = folder.file("store")});
        detail::Transaction transaction(connection);
        connection.execute("INSERT INTO \"Company\" VALUES (1000001, 1, 'Other')");
        if (!isWriting.give() || !mayEnd.await())
            return 1;
        transaction.commit();
        return 0;
    });
    ASSERT_TRUE(isWriting.await());
    const auto context = contextOf(folder.file("store"), 0);
    insertPerson(context, "Ann");

    EXPECT_EQ(failureOf([&] { context->save(); }), StoreError::Kind::Busy);
    EXPECT_TRUE(context->hasChanges());
    // Whoever only reads is not in the way of whoever writes.
    EXPECT_TRUE(storedNames(context->persistentStore()).empty());

    ASSERT_TRUE(mayEnd.give());
    EXPECT_EQ(exitCodeOf(other), 0);
    context->save();
    EXPECT_EQ(storedNames(context->persistentStore()), std::vector<std::string>{"Ann"});
    EXPECT_EQ(context->fetch<Company>({.entity = "Company"}).size(), 1u);
}
