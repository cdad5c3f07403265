#include "Orrenby/Utilities/Streams/AnyPublisher.hpp"

#include "Orrenby/Utilities/Streams/More/SinkUntilEnd.hpp"
#include "Orrenby/Utilities/Streams/StreamsPublisher.hpp"
#include "Tests/Support/StreamEngines.hpp"
#include <memory>
#include <optional>
#include <utility>

using namespace orrenby;
using orrenby::testing::Trouble;
using ::testing::ElementsAre;

namespace {

template <class Publisher>
concept Bindable = requires(Publisher publisher, void (*take)(int))
{
    publisher.bind(take);
};
template <class Publisher>
concept HasAlias = requires(Publisher publisher)
{
    publisher.asPublisher();
};

class AnyPublisher : public orrenby::testing::BothEngines {};

struct Screen {
    std::string title = "empty";
    double progress = 0;
};
struct Dialog : Screen {};

TEST_P(AnyPublisher, HandsEveryPayloadToItsSubscribers)
{
    const auto subject = Streams::CurrentValueSubject<int, Trouble>(1);
    const auto publisher = subject.asPublisher();
    auto values = std::vector<int>();
    auto failures = 0;

    //! [Subscribing]
    const auto subscription = publisher.sink([&](const auto& payload) {
        if (const auto* const value = payload.asValue())
            values.push_back(*value);
        else
            ++failures;
    }); // lasts as long as `subscription`
    //! [Subscribing]
    subject.send(Trouble{});
    subject.send(2);

    EXPECT_THAT(values, ElementsAre(1, 2));
    EXPECT_EQ(failures, 1);
}

TEST_P(AnyPublisher, BindsToStreamsThatCannotFailOnly)
{
    const auto subject = Streams::PassthroughSubject<std::string, Never>();
    auto texts = std::vector<std::string>();
    const auto handle = subject.asPublisher().bind([&](const std::string& text) { texts.push_back(text); });

    subject.send("a");

    EXPECT_THAT(texts, ElementsAre("a"));
    static_assert(!Bindable<Streams::AnyPublisher<int, Trouble>>);
}

TEST_P(AnyPublisher, AssignsValuesToAMember)
{
    const auto subject = Streams::CurrentValueSubject<std::string, Never>("hello");
    const auto screen = std::make_shared<Screen>();

    const auto handle = subject.asPublisher().assign(&Screen::title, screen);
    subject.send("world");

    EXPECT_EQ(screen->title, "world");
}

TEST_P(AnyPublisher, AssigningDiscardsFailures)
{
    const auto subject = Streams::CurrentValueSubject<double, Trouble>(0.5);
    const auto screen = std::make_shared<Screen>();
    const auto handle = subject.asPublisher().assign(&Screen::progress, screen);

    subject.send(Trouble{});
    EXPECT_EQ(screen->progress, 0.5);
    subject.send(0.75);

    EXPECT_EQ(screen->progress, 0.75);
}

TEST_P(AnyPublisher, AssigningDoesNotKeepTheObjectAlive)
{
    const auto subject = Streams::CurrentValueSubject<std::string, Never>("hello");
    auto screen = std::make_shared<Screen>();
    const auto weak = std::weak_ptr<Screen>(screen);
    const auto handle = subject.asPublisher().assign(&Screen::title, screen);

    screen.reset();
    subject.send("nobody");

    EXPECT_TRUE(weak.expired());
}

TEST_P(AnyPublisher, AssignsToAMemberOfABaseClass)
{
    const auto subject = Streams::CurrentValueSubject<std::string, Never>("hello");
    const auto dialog = std::make_shared<Dialog>();

    const auto handle = subject.asPublisher().assign(&Screen::title, dialog);

    EXPECT_EQ(dialog->title, "hello");
}

TEST_P(AnyPublisher, AssigningToNothingDiscards)
{
    const auto subject = Streams::CurrentValueSubject<std::string, Never>("hello");

    const auto handle = subject.asPublisher().assign(&Screen::title, Ref<Screen>());
    subject.send("world");

    EXPECT_EQ(subject.value(), "world");
}

TEST_P(AnyPublisher, ErasedAgainItIsTheSameStream)
{
    const auto subject = Streams::PassthroughSubject<int, Never>();
    const auto publisher = subject.asPublisher().eraseToAnyPublisher();
    auto seen = std::vector<int>();
    const auto handle = publisher.bind([&](int value) { seen.push_back(value); });

    subject.send(1);

    EXPECT_THAT(seen, ElementsAre(1));
}

TEST_P(AnyPublisher, ACallbackThatOnlyMovesMaySubscribe)
{
    const auto subject = Streams::PassthroughSubject<int, Never>();
    auto sum = std::make_unique<int>(0);
    auto& watched = *sum;
    const auto handle = subject.asPublisher().bind([sum = std::move(sum)](int value) { *sum += value; });

    subject.send(4);

    EXPECT_EQ(watched, 4);
}

std::vector<std::pair<std::string, std::string>> traced;

TEST_P(AnyPublisher, ReportsWhoSubscribesInTheDiagnosticBuildOnly)
{
    const auto subject = Streams::PassthroughSubject<int, Never>();
    Trace::onEvent([](const Trace::Event& event) {
        if (event.kind == Trace::Kind::Subscribe)
            traced.emplace_back(event.subject, event.site.function());
    });
    traced.clear();

    const auto first = subject.asPublisher().bind([](int) {});
    const auto second = subject.asPublisher().sink([](const auto&) {});
    const auto third = Streams::sinkUntilEnd(
        subject.asPublisher(), [](const auto&) {}, [] {});
    Trace::onEvent(nullptr);

#ifdef ORRENBY_DIAGNOSTICS
    EXPECT_THAT(traced,
        ElementsAre(std::pair("AnyPublisher<Int32, Never>", "TestBody"),
            std::pair("AnyPublisher<Int32, Never>", "TestBody"),
            std::pair("AnyPublisher<Int32, Never>", "TestBody")));
#else
    EXPECT_THAT(traced, ::testing::IsEmpty());
#endif
}

using AnyPublisherDeathTest = AnyPublisher;

TEST_P(AnyPublisherDeathTest, ACallbackThatThrowsEndsTheProcess)
{
    const auto subject = Streams::PassthroughSubject<int, Never>();
    const auto handle = subject.asPublisher().bind([](int value) {
        if (value == 1)
            throw Trouble{value};
    });

    EXPECT_DEATH(subject.send(1), "terminate called");
}

static_assert(StreamsPublisher<Streams::AnyPublisher<int, Trouble>>);
static_assert(StreamsPublisher<Streams::CurrentValueSubject<int, Trouble>>);
static_assert(StreamsPublisher<Streams::PassthroughSubject<Void, Never>>);
static_assert(!StreamsPublisher<int>);
static_assert(HasAlias<Streams::PassthroughSubject<int, Never>>);
static_assert(!HasAlias<Streams::AnyPublisher<int, Never>>);

INSTANTIATE_ON_BOTH_ENGINES(AnyPublisher);
INSTANTIATE_ON_BOTH_ENGINES(AnyPublisherDeathTest);

} // namespace
