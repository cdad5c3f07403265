#include "Orrenby/Utilities/Streams/CurrentValueSubject.hpp"

#include "Orrenby/Testing/TestAccess.hpp"
#include "Orrenby/Utilities/Log/Settings.hpp"
#include <bit>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace orrenby;
using orrenby::testing::TestAccess;
using ::testing::ElementsAre;

namespace {

TEST(CurrentValueSubject, HoldsAState)
{
    auto shown = std::vector<std::string>();

    //! [Holding a state]
    const auto title = Streams::CurrentValueSubject<std::string, Never>("Untitled");
    const auto subscription = title.asPublisher().bind([&](const std::string& text) {
        shown.push_back(text); // "Untitled" at once, then every new title
    });
    title.send("Report");
    const auto current = title.value();
    //! [Holding a state]

    EXPECT_THAT(shown, ElementsAre("Untitled", "Report"));
    EXPECT_EQ(current, "Report");
}

template <class Subject, class Argument>
concept Sendable = requires(const Subject& subject, Argument argument)
{
    subject.send(argument);
};

template <class Subject>
concept SendsEvents = requires(const Subject& subject)
{
    subject.send();
};
template <class Subject>
concept ReadsUnchecked = requires(const Subject& subject)
{
    subject.value();
};

struct Trouble {};

TEST(CurrentValueSubject, OffersOnlyWhatCanBeSent)
{
    using CannotFail = Streams::CurrentValueSubject<int, Never>;
    using CanFail = Streams::CurrentValueSubject<int, Trouble>;
    static_assert(Sendable<CanFail, Trouble>);
    static_assert(!Sendable<CannotFail, Trouble>);
    static_assert(!SendsEvents<CannotFail>);
    static_assert(!ReadsUnchecked<CanFail>);
    static_assert(!std::is_default_constructible_v<CanFail>);
    static_assert(std::is_default_constructible_v<Streams::CurrentValueSubject<Void, Trouble>>);
}

TEST(CurrentValueSubject, AFailedReadOfTheRxEngineIsLoggedAndThrownOn)
{
    TestAccess::resetEngineChoice();
    Streams::set({.isCombineEnabledWhenAvailable = false});
    struct Entry {
        Log::Event event;
        NSError error;
    };
    auto entries = std::vector<Entry>();
    Log::onCriticalError([&](const Log::Event& event, const NSError& error) {
        entries.push_back({event, error});
    });
    const auto subject = Streams::CurrentValueSubject<int, Never>(1);
    using Payload = Streams::Payload<int, Never>;
    static_cast<StreamsRx::CurrentValueSubject<Payload>&>(TestAccess::core(subject)).dispose();

    EXPECT_THROW(subject.value(), StreamsRx::DisposedError);
    EXPECT_THROW(subject.get(), StreamsRx::DisposedError);

    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0].event.filename(), "Streams+CurrentValueSubject");
    EXPECT_EQ(entries[0].event.line(), 264);
    EXPECT_EQ(entries[0].event.function(), "value()");
    EXPECT_EQ(entries[0].event.message(), "The subject was disposed");
    EXPECT_TRUE(entries[0].event.properties().empty());
    EXPECT_EQ(entries[0].error, StreamsRx::DisposedError().nsError());
    Log::onCriticalError(nullptr);
}

TEST(CurrentValueSubjectDeathTest, AFailureThatCannotExistEndsTheProcessWhenTheValueIsRead)
{
    using Payload = Streams::Payload<int, Never>;
    for (const auto isCombine : {true, false}) {
        TestAccess::resetEngineChoice();
        Streams::set({.isCombineEnabledWhenAvailable = isCombine});
        const auto subject = Streams::CurrentValueSubject<int, Never>(1);
        const auto impossible = Payload::error(std::bit_cast<Never>('\0'));
        TestAccess::core(subject).send(impossible);

        EXPECT_DEATH((void)subject.value(),
            "Fatal error: Due to `Never` restriction, `default` can never occur.: file Utilities/Streams\\+Payload, line 33\n");
    }
}

} // namespace
