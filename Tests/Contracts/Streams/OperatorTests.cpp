#include "Tests/Support/StreamEngines.hpp"

#include "Orrenby/Platform/Errors/AnyError.hpp"
#include "Orrenby/Testing/MarbleSource.hpp"
#include "Orrenby/Testing/Recorder.hpp"
#include "Orrenby/Testing/VirtualWorld.hpp"
#include "Orrenby/Utilities/Streams/Just.hpp"
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <type_traits>

using namespace orrenby;
using orrenby::testing::MarbleLegend;
using orrenby::testing::MarbleSource;
using orrenby::testing::Received;
using orrenby::testing::Recorder;
using orrenby::testing::Trouble;
using orrenby::testing::VirtualWorld;
using ::testing::ElementsAre;

namespace {

class OperatorContract : public orrenby::testing::BothEngines {
protected:
    using Subject = Streams::PassthroughSubject<int, Trouble>;
    using Numbers = Streams::AnyPublisher<int, Trouble>;

    void SetUp() override
    {
        BothEngines::SetUp();
        m_subject.emplace();
    }

    const Subject& subject() const { return *m_subject; }
    auto publisher() const { return m_subject->asPublisher(); }

    /// What an operator makes of a line of numbers, in which `x`, `y` and `z` are the troubles 1, 2 and 3.
    ///
    /// @param legend  Of the result.
    template <class Operation, class Result = std::invoke_result_t<Operation, Numbers>>
    static std::string marblesAfter(Operation apply, std::string_view notation,
        MarbleLegend<typename Result::Output, typename Result::Failure> legend = {})
    {
        auto world = VirtualWorld();
        const auto source = MarbleSource<int, Trouble>(
            notation, {.failures = {{'x', Trouble{1}}, {'y', Trouble{2}}, {'z', Trouble{3}}}});
        const auto recorder = Recorder(apply(source.asPublisher()), std::move(legend));
        world.runAll();
        return recorder.marbles();
    }

private:
    std::optional<Subject> m_subject;
};

int doubled(int value) { return value * 2; }

TEST_P(OperatorContract, MapTransformsValuesAndPassesFailures)
{
    auto received = Received<std::string, Trouble>();
    using Text = Streams::Payload<std::string, Trouble>;

    //! [Transforming a stream]
    const auto texts = publisher().map([](int value) { return std::to_string(value) + " m"; });
    const auto subscription = texts.sink(received.recorder());
    //! [Transforming a stream]
    subject().send(1);
    subject().send(Trouble{2});
    subject().send(3);

    EXPECT_THAT(received.payloads, ElementsAre(Text::value("1 m"), Text::error({2}), Text::value("3 m")));
}

TEST_P(OperatorContract, MapDoesNotCallItsCallableForAFailure)
{
    auto calls = 0;
    const auto handle = publisher()
                            .map([&](int value) {
                                ++calls;
                                return value;
                            })
                            .sink([](const auto&) {});

    subject().send(Trouble{1});

    EXPECT_EQ(calls, 0);
}

TEST_P(OperatorContract, NothingRunsUntilSomebodySubscribes)
{
    auto calls = 0;
    const auto mapped = publisher().map([&](int value) {
        ++calls;
        return value;
    });

    subject().send(1);

    EXPECT_EQ(calls, 0);
    EXPECT_EQ(detail::Subscription::liveCount(), 0);
}

TEST_P(OperatorContract, TryMapTurnsWhatIsThrownIntoAFailureAndGoesOn)
{
    auto values = std::vector<int>();
    auto failures = std::vector<std::string>();
    const auto handle = publisher()
                            .tryMap([](int value) {
                                if (value == 2)
                                    throw std::runtime_error("two");
                                return value * 10;
                            })
                            .sink([&](const auto& payload) {
                                if (payload.isValue())
                                    values.push_back(payload.get());
                                else if (const auto* error = payload.asError()
                                                                 ->template cast<std::runtime_error>())
                                    failures.push_back(error->what());
                            });

    subject().send(1);
    subject().send(2);
    subject().send(3);

    EXPECT_THAT(values, ElementsAre(10, 30));
    EXPECT_THAT(failures, ElementsAre("two"));
}

TEST_P(OperatorContract, TryMapPassesAFailureWithItsTypeAndValue)
{
    auto seen = std::vector<Trouble>();
    const auto handle = publisher().tryMap(doubled).sink(
        [&](const auto& payload) { seen.push_back(*payload.asError()->template cast<Trouble>()); });

    subject().send(Trouble{7});

    EXPECT_THAT(seen, ElementsAre(Trouble{7}));
}

TEST_P(OperatorContract, MapKeepsFailuresAndTheEndInTheirPlaces)
{
    const auto apply = [](const Numbers& numbers) { return numbers.map(doubled); };

    EXPECT_EQ(marblesAfter(apply, "1-x-(2y)-|", {.failures = {{'X', {1}}, {'Y', {2}}}}), "2-X-(4Y)-|");
    EXPECT_EQ(marblesAfter(apply, "--|"), "--|");
    EXPECT_EQ(marblesAfter(apply, "1--"), "2");
}

TEST_P(OperatorContract, CatchPutsAValueInThePlaceOfAFailureAndTheStreamGoesOn)
{
    const auto apply = [](const Numbers& numbers) {
        return numbers.catch_([](Trouble trouble) { return trouble.number + 4; });
    };

    EXPECT_EQ(marblesAfter(apply, "1-x-2-(yz)|"), "1-5-2-(67)|");
}

TEST_P(OperatorContract, CatchDoesNotCallItsCallableForAValue)
{
    auto calls = 0;
    const auto handle = publisher().catch_([&](const Trouble&) { return ++calls; }).sink([](const auto&) {});

    subject().send(1);

    EXPECT_EQ(calls, 0);
}

TEST_P(OperatorContract, TryCatchTurnsWhatIsThrownIntoAFailure)
{
    auto values = std::vector<int>();
    auto failures = std::vector<int>();
    const auto handle = publisher()
                            .tryCatch([](Trouble trouble) {
                                if (trouble.number == 2)
                                    throw Trouble{20};
                                return 0;
                            })
                            .sink([&](const auto& payload) {
                                if (payload.isValue())
                                    values.push_back(payload.get());
                                else
                                    failures.push_back(payload.asError()->template cast<Trouble>()->number);
                            });

    subject().send(Trouble{1});
    subject().send(Trouble{2});
    subject().send(3);

    EXPECT_THAT(values, ElementsAre(0, 3));
    EXPECT_THAT(failures, ElementsAre(20));
}

TEST_P(OperatorContract, MapErrorTransformsFailuresOnly)
{
    auto calls = 0;
    const auto apply = [&](const Numbers& numbers) {
        return numbers.mapError([&](Trouble trouble) {
            ++calls;
            return std::to_string(trouble.number);
        });
    };

    EXPECT_EQ(marblesAfter(apply, "1-x-y-|", {.failures = {{'X', "1"}, {'Y', "2"}}}), "1-X-Y-|");
    EXPECT_EQ(calls, 2);
}

TEST_P(OperatorContract, HopsFollowEachOther)
{
    const auto apply = [](const Numbers& numbers) {
        return numbers.map(doubled)
            .mapError([](Trouble trouble) { return trouble.number; })
            .catch_([](int number) { return number; })
            .map([](int value) { return value + 1; });
    };

    EXPECT_EQ(marblesAfter(apply, "1-z-(2x)|"), "3-4-(52)|");
}

TEST_P(OperatorContract, HopsAreOneSubscription)
{
    const auto handle
        = publisher().map(doubled).catch_([](Trouble) { return 0; }).map(doubled).sink([](const auto&) {});

    EXPECT_EQ(detail::Subscription::liveCount(), 1);
}

TEST_P(OperatorContract, TheCallableLivesAsLongAsASubscriptionNeedsIt)
{
    const auto witness = std::make_shared<int>(1);
    auto seen = std::vector<int>();
    auto handle = std::optional(
        publisher().map([witness](int value) { return value + *witness; }).sink([&](const auto& payload) {
            seen.push_back(payload.get());
        }));

    subject().send(1);
    EXPECT_EQ(witness.use_count(), 2);
    handle.reset();

    EXPECT_THAT(seen, ElementsAre(2));
    EXPECT_EQ(witness.use_count(), 1);
}

TEST_P(OperatorContract, ASubscriptionCancelledInsideAHopReceivesNothingMore)
{
    auto world = VirtualWorld();
    auto cancel = std::function<void()>();
    const auto cancelling = [&](int value) {
        if (value == 2)
            cancel();
        return value;
    };
    auto recorder = Recorder(MarbleSource<int>("1-2-3|").asPublisher().map(cancelling));
    cancel = [&] { recorder.cancel(); };

    world.runAll();

    EXPECT_EQ(recorder.marbles(), "1"); // the 2 was on its way
}

TEST_P(OperatorContract, EachSubscriberRunsTheHopsForItself)
{
    auto calls = 0;
    const auto mapped = publisher().map([&](int value) {
        ++calls;
        return value;
    });
    const auto first = mapped.sink([](const auto&) {});
    const auto second = mapped.sink([](const auto&) {});

    subject().send(1);

    EXPECT_EQ(calls, 2);
}

TEST_P(OperatorContract, MapTakesAMemberAsItsCallable)
{
    struct Point {
        int x = 0;
        int twice() const { return 2 * x; }
    };
    const auto points = Streams::PassthroughSubject<Point, Never>();
    auto received = std::vector<int>();
    const auto data = points.asPublisher().map(&Point::x).bind([&](int value) { received.push_back(value); });
    const auto call = points.asPublisher().map(&Point::twice).bind([&](int value) {
        received.push_back(value);
    });

    points.send(Point{3});

    EXPECT_THAT(received, ElementsAre(3, 6));
}

TEST_P(OperatorContract, ACallableThatThrowsEndsTheProcess)
{
    const auto throwing = [](const auto&) -> int { throw 1; };
    const auto map = publisher().map(throwing).sink([](const auto&) {});
    EXPECT_DEATH(subject().send(1), "terminate called");
    map.cancel();

    const auto mapError = publisher().mapError(throwing).sink([](const auto&) {});
    subject().send(1);
    EXPECT_DEATH(subject().send(Trouble{1}), "terminate called");
    mapError.cancel();

    const auto catch_ = publisher().catch_(throwing).sink([](const auto&) {});
    subject().send(1);
    EXPECT_DEATH(subject().send(Trouble{1}), "terminate called");
}

INSTANTIATE_ON_BOTH_ENGINES(OperatorContract);

} // namespace
