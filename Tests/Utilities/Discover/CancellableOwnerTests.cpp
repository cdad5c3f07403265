#include "Orrenby/Utilities/Discover/CancellableOwner.hpp"

#include "Orrenby/Utilities/Discover/AbstractWorker.hpp"
#include "Orrenby/Utilities/Streams/PassthroughSubject.hpp"
#include "Tests/Support/DiscoverParts.hpp"
#include <functional>
#include <gmock/gmock.h>
#include <memory>

using namespace orrenby;
using orrenby::testing::Diary;
using orrenby::testing::DiaryContext;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using Numbers = Streams::PassthroughSubject<int, Never>;

/// Calls a function when its last copy goes away.
std::shared_ptr<void> atEnd(std::function<void()> function)
{
    return {nullptr, [function](void*) { function(); }};
}

/// Overrides all three operations, writes them down, and lets a last handle in while the others are replaced.
class WatchedOwner : public AbstractWorker {
public:
    explicit WatchedOwner(Diary& diary)
        : m_diary(&diary)
    {}
    Streams::AnyCancellable newcomer;

    Streams::CancellableSet cancellables() const override
    {
        m_diary->push_back("read");
        return AbstractWorker::cancellables();
    }
    void setCancellables(Streams::CancellableSet cancellables) override
    {
        m_diary->push_back("set " + std::to_string(cancellables.size()));
        if (newcomer != Streams::AnyCancellable())
            std::exchange(newcomer, {}).store(*this);
        AbstractWorker::setCancellables(std::move(cancellables));
    }
    void modifyCancellables(UniqueFunction<void(Streams::CancellableSet&)> change) override
    {
        m_diary->push_back("modify");
        AbstractWorker::modifyCancellables(std::move(change));
    }

private:
    Diary* m_diary;
};

TEST(CancellableOwner, KeepsASubscriptionUntilItIsSwitchedOff)
{
    auto diary = Diary();
    auto seen = std::vector<int>();

    //! [Keeping a subscription in its owner]
    const auto numbers = Numbers();
    const auto context = make<DiaryContext>(diary);
    context->activate();
    numbers.asPublisher().bind([&](int number) { seen.push_back(number); }).store(*context);

    numbers.send(1);
    context->deactivate();
    numbers.send(2); // nobody listens any more
    //! [Keeping a subscription in its owner]

    EXPECT_THAT(seen, ElementsAre(1));
}

TEST(CancellableOwner, GivesACopyThatKeepsTheSubscriptionsAlive)
{
    const auto numbers = Numbers();
    auto count = 0;
    const auto worker = make<AbstractWorker>();
    numbers.asPublisher().bind([&](int) { ++count; }).store(*worker);

    const auto copy = worker->cancellables();
    worker->setCancellables({});
    numbers.send(1);

    EXPECT_THAT(worker->cancellables(), IsEmpty());
    EXPECT_EQ(copy.size(), 1u);
    EXPECT_EQ(count, 1);
}

TEST(CancellableOwner, DropsWhatIsReplaced)
{
    const auto numbers = Numbers();
    auto seen = Diary();
    const auto worker = make<AbstractWorker>();
    numbers.asPublisher().bind([&](int) { seen.push_back("old"); }).store(*worker);
    const auto handle = numbers.asPublisher().bind([&](int) { seen.push_back("new"); });

    worker->setCancellables({handle});
    numbers.send(1);

    EXPECT_EQ(worker->cancellables(), Streams::CancellableSet{handle});
    EXPECT_THAT(seen, ElementsAre("new"));
}

TEST(CancellableOwner, ShowsTheNewSetToWhatGoesAwayWithTheOld)
{
    const auto numbers = Numbers();
    const auto worker = make<AbstractWorker>();
    auto sizes = std::vector<std::size_t>();
    numbers.asPublisher()
        .bind([end = atEnd([&] { sizes.push_back(worker->cancellables().size()); })](int) {})
        .store(*worker);
    const auto handle = numbers.asPublisher().bind([](int) {});

    worker->setCancellables({handle});

    EXPECT_THAT(sizes, ElementsAre(1u));
}

TEST(CancellableOwner, HandsOutTheSetItselfForAChangeInPlace)
{
    const auto numbers = Numbers();
    const auto worker = make<AbstractWorker>();
    const auto handle = numbers.asPublisher().bind([](int) {});
    auto calls = 0;

    worker->modifyCancellables([&](Streams::CancellableSet& set) {
        ++calls;
        set.insert(handle);
        set.insert(handle);
    });

    EXPECT_EQ(calls, 1);
    EXPECT_EQ(worker->cancellables(), Streams::CancellableSet{handle});
}

TEST(CancellableOwner, IsSwitchedOffThroughItsOverrides)
{
    auto diary = Diary();
    const auto numbers = Numbers();
    const auto owner = make<WatchedOwner>(diary);
    owner->start();
    numbers.asPublisher().bind([](int) {}).store(*owner);

    owner->stop();

    EXPECT_THAT(diary, ElementsAre("modify", "read", "set 0"));
}

TEST(CancellableOwner, DropsHandlesThatComeInWhileOthersAreCancelled)
{
    auto diary = Diary();
    const auto numbers = Numbers();
    const auto owner = make<WatchedOwner>(diary);
    owner->newcomer = numbers.asPublisher().bind([&](int) { diary.push_back("delivery"); });
    owner->start();

    owner->stop();
    numbers.send(1);

    EXPECT_THAT(diary, ElementsAre("read", "set 0", "modify"));
    EXPECT_THAT(owner->cancellables(), IsEmpty());
}

TEST(CancellableOwner, IsReleasedPastItsOverrides)
{
    auto diary = Diary();
    auto owner = make<WatchedOwner>(diary);

    owner.reset();

    EXPECT_THAT(diary, IsEmpty());
}

TEST(CancellableOwner, CancelsASubscriptionThatItStopsFromItsOwnCallback)
{
    const auto numbers = Numbers();
    auto seen = std::vector<int>();
    const auto worker = make<AbstractWorker>();
    worker->start();
    numbers.asPublisher()
        .bind([&](int number) {
            seen.push_back(number);
            worker->stop();
        })
        .store(*worker);

    numbers.send(1);
    numbers.send(2);

    EXPECT_THAT(seen, ElementsAre(1));
    EXPECT_FALSE(worker->isWorking());
}

} // namespace
