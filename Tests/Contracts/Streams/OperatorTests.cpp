#include "Tests/Support/StreamEngines.hpp"

#include "Orrenby/Platform/Errors/AnyError.hpp"
#include "Orrenby/Utilities/Streams/Just.hpp"
#include <optional>
#include <stdexcept>

using namespace orrenby;
using orrenby::testing::Received;
using orrenby::testing::Trouble;
using ::testing::ElementsAre;

namespace {

class OperatorContract : public orrenby::testing::BothEngines {
protected:
    using Subject = Streams::PassthroughSubject<int, Trouble>;
    using Number = Streams::Payload<int, Trouble>;

    void SetUp() override
    {
        BothEngines::SetUp();
        m_subject.emplace();
    }

    const Subject& subject() const { return *m_subject; }
    auto publisher() const { return m_subject->asPublisher(); }

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

TEST_P(OperatorContract, CatchPutsAValueInThePlaceOfAFailureAndTheStreamGoesOn)
{
    auto received = Received<int, Trouble>();
    const auto handle
        = publisher().catch_([](Trouble trouble) { return -trouble.number; }).sink(received.recorder());

    subject().send(1);
    subject().send(Trouble{5});
    subject().send(2);

    EXPECT_THAT(received.payloads, ElementsAre(Number::value(1), Number::value(-5), Number::value(2)));
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
    using Text = Streams::Payload<int, std::string>;
    auto received = Received<int, std::string>();
    auto calls = 0;
    const auto handle = publisher()
                            .mapError([&](Trouble trouble) {
                                ++calls;
                                return std::to_string(trouble.number);
                            })
                            .sink(received.recorder());

    subject().send(1);
    subject().send(Trouble{2});
    subject().send(Trouble{3});

    EXPECT_THAT(received.payloads, ElementsAre(Text::value(1), Text::error("2"), Text::error("3")));
    EXPECT_EQ(calls, 2);
}

TEST_P(OperatorContract, HopsFollowEachOtherInOneBlock)
{
    auto seen = std::vector<int>();
    const auto handle = publisher()
                            .map(doubled)
                            .mapError([](Trouble trouble) { return trouble.number; })
                            .catch_([](int number) { return number; })
                            .map([](int value) { return value + 1; })
                            .sink([&](const auto& payload) { seen.push_back(payload.get()); });

    subject().send(1);
    subject().send(Trouble{10});

    EXPECT_THAT(seen, ElementsAre(3, 11));
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
    auto seen = std::vector<int>();
    auto handle = Streams::AnyCancellable();
    handle = publisher()
                 .map([&](int value) {
                     if (value == 2)
                         handle.cancel();
                     return value;
                 })
                 .sink([&](const auto& payload) { seen.push_back(payload.get()); });

    subject().send(1);
    subject().send(2); // on its way when it is cancelled
    subject().send(3);

    EXPECT_THAT(seen, ElementsAre(1));
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

INSTANTIATE_ON_BOTH_ENGINES(OperatorContract);

} // namespace
