#include "Orrenby/Foundation/Outbox/Outbox.hpp"

#include "Orrenby/Platform/Store/Connection.hpp"
#include "Tests/Foundation/Outbox/OutboxParts.hpp"
#include "Tests/Platform/Store/StoreFailure.hpp"
#include "Tests/Support/TemporaryFolder.hpp"
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <exception>
#include <gmock/gmock.h>
#include <map>
#include <random>
#include <set>
#include <sys/wait.h>
#include <unistd.h>

using namespace orrenby;
using namespace orrenby::tests;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::SizeIs;

namespace {

/// What a process says it is about to do with a request, and that it has done it.
struct Word {
    char what = 0; ///< 'a'dd, 'b'egin, 'r'etry, 'f'inish
    bool isDone = false;
    std::int32_t number = 0;
};

/// Two ends of a pipe for words.
class Words {
public:
    Words()
    {
        if (pipe(m_ends) != 0)
            std::abort();
    }
    Words(const Words&) = delete;
    Words& operator=(const Words&) = delete;
    ~Words()
    {
        for (const int end : m_ends)
            if (end >= 0)
                close(end);
    }

    void say(const Word& word) const
    {
        if (write(m_ends[1], &word, sizeof word) != sizeof word)
            _exit(1);
    }
    /// Nothing when whoever spoke is gone.
    std::optional<Word> hear()
    {
        if (m_ends[1] >= 0)
            close(std::exchange(m_ends[1], -1));
        Word word;
        return read(m_ends[0], &word, sizeof word) == sizeof word ? std::optional(word) : std::nullopt;
    }

private:
    int m_ends[2] = {};
};

std::int32_t numberOf(const Ref<OutboxEntry>& entry) { return std::stoi(nameOf(entry)); }

/// Uses an outbox at random and for ever, saying what it does.
[[noreturn]] void useForever(const std::string& path, const Words& words, std::int32_t number, unsigned seed)
{
    std::mt19937 random(seed);
    Outbox outbox(outboxContext(path));
    outbox.recover();
    const auto say = [&](char what, std::int32_t which, auto&& work) {
        words.say({what, false, which});
        work();
        words.say({what, true, which});
    };
    for (;;) {
        if (random() % 3 == 0 || outbox.next(now) == nullptr) {
            say('a', number, [&] {
                auto request = requestNamed(std::to_string(number));
                request.setHTTPBody(dataFromText(std::to_string(number)));
                outbox.add(request);
                outbox.context()->insert("Note")->setValue("text", std::to_string(number));
                outbox.context()->save();
            });
            ++number;
            continue;
        }
        const auto entry = outbox.next(now);
        const auto which = numberOf(entry);
        say('b', which, [&] {
            if (!outbox.begin(entry, now))
                _exit(2);
        });
        if (random() % 2 == 0)
            say('r', which, [&] { outbox.retry(entry, now, "no answer"); });
        else
            say('f', which, [&] { outbox.finish(entry); });
    }
}

/// What the outbox must hold: the count of each request.
using Counts = std::map<std::int32_t, std::int64_t>;

void account(Counts& counts, const Word& word)
{
    if (word.what == 'a')
        counts[word.number] = 0;
    else if (word.what == 'b')
        ++counts[word.number];
    else if (word.what == 'f')
        counts.erase(word.number);
}

Counts storedCounts(const Outbox& outbox)
{
    Counts counts;
    for (const auto& entry : outbox.entries())
        counts[numberOf(entry)] = entry->attempts();
    return counts;
}

/// Where several processes write down what they sent.
std::vector<std::int32_t> heardNumbers(Words& words)
{
    std::vector<std::int32_t> numbers;
    while (const auto word = words.hear())
        numbers.push_back(word->number);
    return numbers;
}

/// Sends whatever it gets, and says so.
int sendAll(const std::string& path, const Words& words)
{
    try {
        Outbox outbox(outboxContext(path));
        while (const auto entry = outbox.take(now)) {
            words.say({'f', true, numberOf(entry)});
            if (!outbox.finish(entry))
                return 3;
        }
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "the other process: %s\n", error.what());
        return 99;
    }
}

template <class Work> pid_t inAnotherProcess(Work&& work)
{
    const auto process = fork();
    if (process == 0)
        _exit(work());
    return process;
}

int exitCodeOf(pid_t process)
{
    int status = 0;
    waitpid(process, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace

TEST(OutboxFault, HoldsExactlyWhatWasAcknowledgedWhenTheProcessIsKilledAtAnyPoint)
{
    constexpr unsigned seed = 8086;
    const TemporaryFolder folder;
    std::mt19937 random(seed);
    Counts expected;
    std::int32_t number = 0;
    std::size_t acknowledged = 0;
    for (int round = 0; round < 100; ++round) {
        Words words;
        const auto process = fork();
        if (process == 0)
            useForever(folder.file("store"), words, number, seed + static_cast<unsigned>(round));
        std::optional<Word> open;
        const auto take = [&](const Word& word) {
            if (word.isDone) {
                account(expected, word);
                ++acknowledged;
                open = std::nullopt;
            } else {
                open = word;
                number = word.what == 'a' ? word.number + 1 : number;
            }
        };
        for (auto wanted = random() % 12; wanted > 0; --wanted)
            if (const auto word = words.hear())
                take(*word);
        // Into the middle of the next save, or of opening the file.
        volatile auto spins = random() % 1'000'000;
        while (spins != 0)
            spins = spins - 1;
        kill(process, SIGKILL);
        waitpid(process, nullptr, 0);
        while (const auto word = words.hear())
            take(*word);

        {
            detail::Connection connection({.path = folder.file("store")});
            auto check = connection.prepare("PRAGMA integrity_check");
            ASSERT_TRUE(check.step());
            ASSERT_EQ(check.text(0), "ok") << "round " << round;
        }
        Outbox outbox(outboxContext(folder.file("store")));
        const auto stored = storedCounts(outbox);
        // What was under way may have been kept without having had the time to say so.
        auto further = expected;
        if (open)
            account(further, *open);
        ASSERT_TRUE(stored == expected || stored == further) << "round " << round;
        expected = stored;
        for (const auto& entry : outbox.entries())
            ASSERT_EQ(textOf(entry->body()), nameOf(entry)) << "round " << round;
        const auto bodies = outbox.context()->fetch({.entity = "OutboxBody"});
        ASSERT_EQ(bodies.size(), stored.size()) << "round " << round;
        // The change that caused a request is there, whatever became of the request.
        std::set<std::string> notes;
        for (const auto& note : outbox.context()->fetch({.entity = "Note"}))
            notes.emplace(note->value("text").text());
        for (const auto& entry : outbox.entries())
            ASSERT_TRUE(notes.contains(nameOf(entry))) << "round " << round;

        const auto interrupted = outbox.counts().sending;
        ASSERT_LE(interrupted, 1u) << "round " << round;
        ASSERT_EQ(outbox.recover(), interrupted);
        ASSERT_EQ(storedCounts(outbox), expected) << "round " << round;
        ASSERT_EQ(outbox.counts().sending, 0u);
    }
    EXPECT_GT(acknowledged, 200u);
}

TEST(OutboxFault, IsSentByOneOfSeveralProcessesEach)
{
    constexpr std::int32_t count = 120;
    const TemporaryFolder folder;
    {
        Outbox outbox(outboxContext(folder.file("store")));
        for (std::int32_t number = 0; number < count; ++number)
            outbox.add(requestNamed(std::to_string(number)));
        outbox.context()->save();
    }

    Words words;
    std::vector<pid_t> processes;
    for (int sender = 0; sender < 3; ++sender)
        processes.push_back(inAnotherProcess([&] { return sendAll(folder.file("store"), words); }));
    auto sent = heardNumbers(words);
    std::vector<int> exitCodes;
    for (const auto process : processes)
        exitCodes.push_back(exitCodeOf(process));

    EXPECT_THAT(exitCodes, Each(0));
    std::sort(sent.begin(), sent.end());
    ASSERT_THAT(sent, SizeIs(count));
    for (std::int32_t number = 0; number < count; ++number)
        EXPECT_EQ(sent[static_cast<std::size_t>(number)], number);
    EXPECT_EQ(Outbox(outboxContext(folder.file("store"))).counts(), OutboxCounts());
}

TEST(OutboxFault, KeepsOneRequestOfAKeyThatSeveralProcessesPutIn)
{
    constexpr int count = 20;
    const TemporaryFolder folder;
    outboxContext(folder.file("store")); // the file is there before they meet
    const auto addAll = [&] {
        Outbox outbox(outboxContext(folder.file("store")));
        for (int number = 0; number < count; ++number) {
            outbox.add(requestNamed(std::to_string(number)), {.key = std::to_string(number)});
            outbox.context()->save();
        }
        return 0;
    };

    const auto first = inAnotherProcess(addAll);
    const auto second = inAnotherProcess(addAll);
    EXPECT_EQ(exitCodeOf(first), 0);
    EXPECT_EQ(exitCodeOf(second), 0);

    Outbox outbox(outboxContext(folder.file("store")));
    std::vector<std::int32_t> sent;
    while (const auto entry = outbox.take(now)) {
        sent.push_back(numberOf(entry));
        outbox.finish(entry);
    }
    std::sort(sent.begin(), sent.end());
    ASSERT_THAT(sent, SizeIs(count));
    EXPECT_TRUE(std::adjacent_find(sent.begin(), sent.end()) == sent.end());
    EXPECT_EQ(outbox.counts(), OutboxCounts());
}

TEST(OutboxFault, LosesNothingWhileSomebodyElseKeepsWriting)
{
    const TemporaryFolder folder;
    Outbox outbox(make<NSManagedObjectContext>(
        PersistentStore::open(outboxModel(), {.path = folder.file("store"), .busyTimeout = 0})));
    addSaved(outbox, {"a", "b"});
    const auto sending = outbox.take(now);
    const auto waiting = outbox.next(now);

    {
        detail::Connection connection({.path = folder.file("store")});
        detail::Transaction transaction(connection);
        connection.execute("DELETE FROM \"Note\"");
        EXPECT_EQ(failureOf([&] { EXPECT_FALSE(outbox.begin(waiting, now)); }), StoreError::Kind::Busy);
        EXPECT_EQ(failureOf([&] { outbox.retry(sending, now, "no answer"); }), StoreError::Kind::Busy);
        EXPECT_EQ(failureOf([&] { outbox.giveUp(sending, "refused"); }), StoreError::Kind::Busy);
        EXPECT_EQ(failureOf([&] { outbox.finish(sending); }), StoreError::Kind::Busy);
    }
    EXPECT_EQ(waiting->attempts(), 0);
    EXPECT_TRUE(outbox.finish(sending));
    EXPECT_TRUE(outbox.begin(waiting, now));

    EXPECT_THAT(namesOf(Outbox(besides(outbox.context())).entries(OutboxState::Sending)), ElementsAre("b"));
}

TEST(OutboxFault, LosesNothingOnAFullDisk)
{
    const TemporaryFolder folder;
    const auto settings = StoreSettings{.path = folder.file("store"), .maximumPageCount = 20};
    Outbox outbox(make<NSManagedObjectContext>(PersistentStore::open(outboxModel(), settings)));
    addSaved(outbox, {"a"});
    const auto entry = outbox.take(now);
    const std::string tooLong(1'000'000, 'x');

    EXPECT_EQ(failureOf([&] { outbox.retry(entry, now, tooLong); }), StoreError::Kind::DiskFull);

    EXPECT_EQ(entry->state(), OutboxState::Sending);
    EXPECT_EQ(entry->reason(), std::nullopt);
    EXPECT_TRUE(outbox.retry(entry, now, "no answer"));
    EXPECT_EQ(outbox.next(now), entry);
}

TEST(OutboxFault, LosesNothingInAFileThatIsOnlyRead)
{
    const TemporaryFolder folder;
    {
        Outbox outbox(outboxContext(folder.file("store")));
        addSaved(outbox, {"a"});
    }
    const auto settings = StoreSettings{.path = folder.file("store"), .isReadOnly = true};
    Outbox outbox(make<NSManagedObjectContext>(PersistentStore::open(outboxModel(), settings)));
    const auto entry = outbox.next(now);

    EXPECT_EQ(failureOf([&] { EXPECT_FALSE(outbox.begin(entry, now)); }), StoreError::Kind::ReadOnly);

    EXPECT_EQ(nameOf(outbox.next(now)), "a");
    EXPECT_EQ(entry->attempts(), 0);
}
