#include "Orrenby/Utilities/Discover.hpp"

#include "Orrenby/Utilities/Streams/PassthroughSubject.hpp"
#include "Tests/Support/DiscoverParts.hpp"
#include <gmock/gmock.h>
#include <memory>
#include <utility>

using namespace orrenby;
using orrenby::testing::Diary;
using orrenby::testing::DiaryFlow;
using orrenby::testing::DiaryWorker;
using ::testing::ElementsAre;

namespace {

using Numbers = Streams::PassthroughSubject<int, Never>;

/// Subscribes while it works, and shows when its subscription is over.
class Listener : public DiaryWorker {
public:
    Listener(Diary& diary, std::string name, Numbers numbers)
        : DiaryWorker(diary, name)
        , m_diary(&diary)
        , m_numbers(std::move(numbers))
    {}

protected:
    void didStart() override
    {
        DiaryWorker::didStart();
        auto end = std::shared_ptr<void>(
            nullptr, [diary = m_diary, name = name()](void*) { diary->push_back(name + " cancelled"); });
        m_numbers.asPublisher()
            .bind([this, end = std::move(end)](
                      int number) { m_diary->push_back(name() + " got " + std::to_string(number)); })
            .store(*this);
    }

private:
    Diary* m_diary;
    Numbers m_numbers;
};

/// A root with two sub-flows, of which the first one has a sub-flow of its own; every flow has a listener.
Ref<DiaryFlow> startedTree(Diary& diary, const Numbers& numbers)
{
    const auto flow = [&](const std::string& name) {
        return make<DiaryFlow>(diary, name, Workers{make<Listener>(diary, name + " worker", numbers)});
    };
    auto root = flow("root");
    const auto feed = flow("feed");
    root->start();
    root->attach(feed);
    feed->attach(flow("post"));
    root->attach(flow("settings"));
    return root;
}

TEST(FlowTree, StartsFromTheRootDown)
{
    auto diary = Diary();

    const auto root = startedTree(diary, Numbers());

    EXPECT_THAT(diary,
        ElementsAre("root context became active", "root worker started", "root started", //
            "feed context became active", "feed worker started", "feed started",         //
            "post context became active", "post worker started", "post started",         //
            "settings context became active", "settings worker started", "settings started"));
}

TEST(FlowTree, DeliversToTheWorkersOfAllActiveFlows)
{
    auto diary = Diary();
    const auto numbers = Numbers();
    const auto root = startedTree(diary, numbers);
    diary.clear();

    numbers.send(1);

    EXPECT_THAT(diary,
        ElementsAre("root worker got 1", "feed worker got 1", "post worker got 1", "settings worker got 1"));
}

// A flow that is detached ends while it is still attached; what it keeps ends when it is let go.
TEST(FlowTree, DetachesABranchFromItsTopDown)
{
    auto diary = Diary();
    const auto numbers = Numbers();
    const auto root = startedTree(diary, numbers);
    diary.clear();

    root->detach<DiaryFlow>([](DiaryFlow& flow) { return flow.name() == "feed"; });
    numbers.send(2);

    EXPECT_THAT(diary,
        ElementsAre("feed worker stops", "feed worker cancelled", "feed context resigns", //
            "post worker stops", "post worker cancelled", "post context resigns",         //
            "root worker got 2", "settings worker got 2"));
}

// The sub-flow of a sub-flow ends when its parent is let go, that is, after the walk over the sub-flows.
TEST(FlowTree, EndsFirstToLastThenDeeperFlowsThenItsRootWhenItIsReleased)
{
    auto diary = Diary();
    const auto numbers = Numbers();
    auto root = startedTree(diary, numbers);
    diary.clear();

    root.reset();
    numbers.send(3);

    EXPECT_THAT(diary,
        ElementsAre("feed worker stops", "feed worker cancelled", "feed context resigns",     //
            "settings worker stops", "settings worker cancelled", "settings context resigns", //
            "post worker stops", "post worker cancelled", "post context resigns",             //
            "root worker stops", "root worker cancelled", "root context resigns"));
}

} // namespace
