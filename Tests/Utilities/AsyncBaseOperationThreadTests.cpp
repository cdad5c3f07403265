#include "Orrenby/Utilities/AsyncBaseOperation.hpp"

#include "Tests/Utilities/AsyncBaseOperationParts.hpp"
#include <gmock/gmock.h>
#include <memory>
#include <string>
#include <thread>
#include <vector>

using namespace orrenby;
using orrenby::testing::bothStates;
using orrenby::testing::normalRun;
using orrenby::testing::Pending;
using ::testing::Each;
using ::testing::ElementsAre;

namespace {

/// Writes down on which thread it is told, in the order of the telling.
class ThreadRecorder final : public KeyValueObserver {
public:
    void observeValue(const std::string&, ObservableObject&, const KeyValueChange&) override
    {
        threads.push_back(std::this_thread::get_id());
    }

    std::vector<std::thread::id> threads;
};

} // namespace

TEST(AsyncBaseOperationThreads, TellOfEachStepOnTheThreadThatMakesIt)
{
    const auto operation = make<Pending>();
    const auto recorder = std::make_shared<ThreadRecorder>();
    for (const auto& key : bothStates)
        operation->addObserver(recorder, key, {.prior = true});
    auto finisher = std::thread::id();
    const auto starter = std::this_thread::get_id();

    operation->start();
    std::thread([&] {
        finisher = std::this_thread::get_id();
        operation->complete();
    }).join();

    EXPECT_NE(starter, finisher);
    EXPECT_EQ(recorder->threads.size(), normalRun.size());
    EXPECT_THAT(recorder->threads, ElementsAre(starter, starter, finisher, finisher, finisher, finisher));
}

TEST(AsyncBaseOperationThreads, GoFromStateToStateAndNeverBackForAThreadThatAsks)
{
    auto wrongAnswers = std::vector<int>();

    for (int round = 0; round < 200; ++round) {
        const auto operation = make<Pending>();
        int wrong = 0;
        auto asking = std::thread([&] {
            bool wasExecuting = false;
            while (!operation->isFinished()) {
                if (operation->isExecuting())
                    wasExecuting = true;
                else if (wasExecuting && !operation->isFinished())
                    ++wrong;
            }
            wrong += operation->isExecuting();
        });
        operation->start();
        operation->complete();
        asking.join();
        wrongAnswers.push_back(wrong);
    }

    EXPECT_THAT(wrongAnswers, Each(0));
}
