#include "Orrenby/Utilities/Streams/Payload.hpp"

#include "Orrenby/Platform/Errors/AnyError.hpp"
#include <bit>
#include <gtest/gtest.h>
#include <memory>
#include <string>

using namespace orrenby;

namespace {

struct Trouble {
    int number = 0;
    friend bool operator==(const Trouble&, const Trouble&) = default;
};

using Number = Streams::Payload<int, Trouble>;
using Text = Streams::Payload<std::string, std::string>;

TEST(Payload, GivesItsValueOrThrowsItsFailure)
{
    //! [Reading a payload]
    const auto good = Streams::Payload<int, Trouble>::value(1);
    const auto bad = Streams::Payload<int, Trouble>::error({404});

    const auto number = good.get();            // throws the failure of a bad one
    const auto* const trouble = bad.asError(); // nothing for a good one
    //! [Reading a payload]

    EXPECT_EQ(number, 1);
    ASSERT_NE(trouble, nullptr);
    EXPECT_EQ(trouble->number, 404);
    EXPECT_THROW(bad.get(), Trouble);
}

TEST(Payload, EqualMeansTheSameCaseAndEqualContents)
{
    EXPECT_EQ(Number::value(1), Number::value(1));
    EXPECT_NE(Number::value(1), Number::value(2));
    EXPECT_EQ(Number::error({1}), Number::error({1}));
    EXPECT_NE(Number::error({1}), Number::error({2}));
    EXPECT_NE(Number::value(1), Number::error({1}));
}

TEST(Payload, ValueAndFailureOfOneTypeAreNeverEqual) { EXPECT_NE(Text::value("a"), Text::error("a")); }

TEST(Payload, ComparesFailuresOfAnyTypeByTheErrorsThatTheyAreBridgedTo)
{
    using AnyNumber = Streams::Payload<int, AnyError>;
    const auto offline = NSError("Network", 1);

    EXPECT_EQ(AnyNumber::error(AnyError(offline)), AnyNumber::error(AnyError(NSError("Network", 1))));
    EXPECT_EQ(AnyNumber::error(AnyError(AnyError(offline))), AnyNumber::error(AnyError(offline)));
    EXPECT_NE(AnyNumber::error(AnyError(offline)), AnyNumber::error(AnyError(NSError("Network", 2))));
    EXPECT_NE(AnyNumber::error(AnyError(offline)), AnyNumber::value(1));
}

TEST(Payload, IsPlainWhenItsTypesAre)
{
    static_assert(std::is_trivially_copyable_v<Number>);
    static_assert(std::is_trivially_copyable_v<Streams::Payload<double, Never>>);
    static_assert(!std::is_trivially_copyable_v<Text>);
    static_assert(sizeof(Streams::Payload<int, Never>) == 8);
}

TEST(Payload, CopiesAndMovesBetweenItsCases)
{
    auto payload = Text::value("value");
    const auto failure = Text::error("failure");
    auto copy = failure;

    copy = payload;
    payload = failure;
    auto moved = std::move(payload);
    moved = Text::value("again");

    EXPECT_EQ(copy, Text::value("value"));
    EXPECT_EQ(moved, Text::value("again"));
    EXPECT_EQ(failure, Text::error("failure"));
}

TEST(Payload, SurvivesAssignmentToItself)
{
    auto payload = Text::value("a");
    auto& same = payload;

    payload = same;

    EXPECT_EQ(payload, Text::value("a"));
}

TEST(Payload, EndsTheLifeOfItsContent)
{
    const auto witness = std::make_shared<int>(1);
    {
        auto payload = Streams::Payload<std::shared_ptr<int>, std::string>::value(witness);
        const auto copy = payload; // NOLINT: the copy is the point
        EXPECT_EQ(witness.use_count(), 3);
        payload = Streams::Payload<std::shared_ptr<int>, std::string>::error("gone");
        EXPECT_EQ(witness.use_count(), 2);
    }

    EXPECT_EQ(witness.use_count(), 1);
}

TEST(Payload, MovesItsValueOut)
{
    auto payload = Streams::Payload<std::unique_ptr<int>, Trouble>::value(std::make_unique<int>(3));

    const auto value = std::move(payload).get();

    EXPECT_EQ(*value, 3);
}

TEST(Payload, ThrowsWhatAnAnyErrorHolds)
{
    const auto payload = Streams::Payload<int, AnyError>::error(Trouble{5});

    EXPECT_THROW(payload.get(), Trouble);
}

TEST(Payload, PrintsItsCaseAndContent)
{
    EXPECT_EQ(Number::value(1).description(), "value(1)");
    EXPECT_EQ(Text::error("offline").description(), "error(offline)");
}

TEST(PayloadDeathTest, AFailureThatCannotExistEndsTheProcess)
{
    const auto impossible = Streams::Payload<int, Never>::error(std::bit_cast<Never>('\0'));

    EXPECT_DEATH((void)impossible.value(),
        "Fatal error: Due to `Never` restriction, `default` can never occur.: file Utilities/Streams\\+Payload, line 33\n");
}

template <class Payload>
concept HasUncheckedValue = requires(const Payload& payload)
{
    payload.value();
};
static_assert(HasUncheckedValue<Streams::Payload<int, Never>>);
static_assert(!HasUncheckedValue<Streams::Payload<int, Trouble>>);

} // namespace
