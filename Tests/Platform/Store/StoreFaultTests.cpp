#include "Orrenby/Platform/Store/PersistentStore.hpp"

#include "Orrenby/Platform/Store/Connection.hpp"
#include "Tests/Platform/Store/StoreParts.hpp"
#include "Tests/Support/TemporaryFolder.hpp"
#include <csignal>
#include <gmock/gmock.h>
#include <random>
#include <sys/wait.h>
#include <unistd.h>

using namespace orrenby;
using namespace orrenby::tests;

namespace {

/// Saves one person after the other, each a friend of the one before and employed by the company, and says
/// so.
[[noreturn]] void saveForever(const std::string& path, int acknowledgements)
{
    const auto context = make<NSManagedObjectContext>(PersistentStore::open(peopleModel(), {.path = path}));
    const auto companies = context->fetch<Company>({.entity = "Company"});
    const auto company = companies.empty() ? context->insert<Company>("Company") : companies[0];
    auto people = context->fetch<Person>({.entity = "Person"});
    for (auto number = people.size();; ++number) {
        const auto person = insertPerson(context, std::to_string(number));
        person->employer = company;
        if (!people.empty())
            person->friends.insert(people.back());
        people.assign(1, person);
        context->save();
        const char done = 1;
        if (write(acknowledgements, &done, 1) != 1)
            _exit(1);
    }
}

/// Starts a process that saves, kills it at some point, and gives the number of saves that it acknowledged.
std::size_t killAtSomePoint(const std::string& path, std::mt19937& random)
{
    int ends[2] = {};
    if (pipe(ends) != 0)
        return 0;
    const auto process = fork();
    if (process == 0)
        saveForever(path, ends[1]);
    close(ends[1]);

    std::size_t acknowledged = 0;
    char done = 0;
    const auto wanted = random() % 4;
    while (acknowledged < wanted && read(ends[0], &done, 1) == 1)
        ++acknowledged;
    // Into the middle of the next save, or of opening the file.
    volatile auto spins = random() % 3000000;
    while (spins != 0)
        spins = spins - 1;
    kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
    while (read(ends[0], &done, 1) == 1)
        ++acknowledged;
    close(ends[0]);
    return acknowledged;
}

} // namespace

TEST(PersistentStoreFault, KeepsWhatWasAcknowledgedWhenTheProcessIsKilledAtAnyPoint)
{
    constexpr unsigned seed = 4711;
    const TemporaryFolder folder;
    std::mt19937 random(seed);
    std::size_t stored = 0;
    for (int round = 0; round < 200; ++round) {
        const auto acknowledged = killAtSomePoint(folder.file("store"), random);

        {
            detail::Connection connection({.path = folder.file("store")});
            auto check = connection.prepare("PRAGMA integrity_check");
            ASSERT_TRUE(check.step());
            ASSERT_EQ(check.text(0), "ok") << "round " << round;
        }
        const auto context = make<NSManagedObjectContext>(
            PersistentStore::open(peopleModel(), {.path = folder.file("store")}));
        const auto people = context->fetch<Person>({.entity = "Person"});
        // The last save may have been kept without having had the time to say so.
        ASSERT_GE(people.size(), stored + acknowledged) << "round " << round;
        ASSERT_LE(people.size(), stored + acknowledged + 1) << "round " << round;
        stored = people.size();
        for (std::size_t number = 0; number < stored; ++number) {
            ASSERT_EQ(people[number]->name.get(), std::to_string(number));
            const auto friendCount = (number > 0 ? 1u : 0u) + (number + 1 < stored ? 1u : 0u);
            ASSERT_EQ(people[number]->friends.get().size(), friendCount) << "round " << round;
        }
        const auto companies = context->fetch<Company>({.entity = "Company"});
        ASSERT_EQ(companies.size(), stored == 0 ? 0u : 1u);
        ASSERT_EQ(companies.empty() ? 0u : companies[0]->staff.get().size(), stored);
    }
    EXPECT_GT(stored, 100u);
}
