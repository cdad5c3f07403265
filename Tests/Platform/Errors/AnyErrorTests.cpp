#include "Orrenby/Platform/Errors/AnyError.hpp"

#include "Orrenby/Platform/Errors/CustomNSError.hpp"
#include <gmock/gmock.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

using namespace orrenby;

namespace {

class Declared : public CustomNSError<Declared> {
public:
    explicit Declared(std::int64_t code)
        : m_code(code)
    {}
    std::string description() const override { return "declared " + std::to_string(m_code); }
    std::int64_t errorCode() const { return m_code; }

private:
    std::int64_t m_code;
};

struct HasStatus {
    int status = 0;
};
struct HasHint {
    virtual ~HasHint() = default;
    std::string hint;
};
struct Refusal : HasStatus, HasHint {};

struct FirstException : std::exception {};
struct SecondException : std::exception {};
struct TwiceAnException : FirstException, SecondException {};

enum class Level { Low, High };

template <class Value> AnyError thrown(Value value)
{
    return AnyError(std::make_exception_ptr(std::move(value)));
}

Refusal refusal()
{
    Refusal refusal;
    refusal.status = 403;
    refusal.hint = "sign in";
    return refusal;
}

} // namespace

TEST(AnyError, HoldsValuesAndExceptions)
{
    //! [Holding any error]
    const auto attempt = []() -> AnyError {
        try {
            throw std::system_error(std::make_error_code(std::errc::timed_out));
        } catch (...) {
            return AnyError(std::current_exception());
        }
    };

    const auto error = attempt();

    const auto* timeOut = error.cast<std::system_error>();
    const auto code = error.nsError().code();
    //! [Holding any error]

    ASSERT_NE(timeOut, nullptr);
    EXPECT_EQ(timeOut->code(), std::errc::timed_out);
    EXPECT_EQ(code, ETIMEDOUT);
}

TEST(AnyError, CastsAValueToItsOwnType)
{
    const AnyError error = 5;

    ASSERT_NE(error.cast<int>(), nullptr);
    EXPECT_EQ(*error.cast<int>(), 5);
    EXPECT_EQ(error.cast<unsigned>(), nullptr);
    EXPECT_EQ(error.cast<std::exception>(), nullptr);
    EXPECT_EQ(error.cast<std::string>(), nullptr);
}

TEST(AnyError, CastsAnErrorToItsBases)
{
    const AnyError error = Declared(4);

    EXPECT_EQ(error.cast<Declared>()->errorCode(), 4);
    EXPECT_EQ(error.cast<Error>(), error.cast<Declared>());
    EXPECT_EQ(error.cast<std::exception>(), error.cast<Declared>());
    EXPECT_EQ(error.cast<NSError>(), nullptr);
    EXPECT_EQ(error.cast<std::runtime_error>(), nullptr);
}

TEST(AnyError, CastsAValueToBasesThatAreNoExceptions)
{
    const AnyError error = refusal();

    ASSERT_NE(error.cast<HasHint>(), nullptr);
    EXPECT_EQ(error.cast<HasHint>()->hint, "sign in");
    EXPECT_EQ(error.cast<HasStatus>()->status, 403);
    EXPECT_EQ(error.cast<HasHint>(), error.cast<Refusal>());
    EXPECT_EQ(error.cast<std::string>(), nullptr);
}

TEST(AnyError, CastsAThrownObjectToItsBases)
{
    const auto exception = thrown(std::out_of_range("7"));
    const auto value = thrown(refusal());

    EXPECT_STREQ(exception.cast<std::out_of_range>()->what(), "7");
    EXPECT_STREQ(exception.cast<std::logic_error>()->what(), "7");
    EXPECT_EQ(exception.cast<std::runtime_error>(), nullptr);
    EXPECT_EQ(value.cast<HasHint>()->hint, "sign in");
    EXPECT_EQ(value.cast<HasStatus>()->status, 403);
    EXPECT_EQ(value.cast<std::exception>(), nullptr);
}

TEST(AnyError, CastsThrownValuesThatAreNoObjects)
{
    const auto error = thrown(5);

    ASSERT_NE(error.cast<int>(), nullptr);
    EXPECT_EQ(*error.cast<int>(), 5);
    EXPECT_EQ(error.cast<long>(), nullptr);
}

TEST(AnyError, CastsWhatIsAnExceptionTwice)
{
    const auto error = thrown(TwiceAnException());

    EXPECT_NE(error.cast<TwiceAnException>(), nullptr);
    EXPECT_NE(error.cast<FirstException>(), nullptr);
    EXPECT_EQ(error.cast<std::exception>(), nullptr) << "which of the two would be open";
}

TEST(AnyError, GivesItselfWhenAskedForAnyError)
{
    const AnyError error = 5;

    EXPECT_EQ(error.cast<AnyError>(), &error);
}

TEST(AnyError, NeverHoldsAnother)
{
    const AnyError inner = Declared(4);

    const auto fromThrown = thrown(inner);
    const auto copy = AnyError(inner);

    EXPECT_EQ(fromThrown.cast<Declared>(), inner.cast<Declared>());
    EXPECT_EQ(copy.cast<Declared>(), inner.cast<Declared>());
}

TEST(AnyError, ThrowsAgainWhatItHolds)
{
    EXPECT_THROW(AnyError(5).rethrow(), int);
    EXPECT_THROW(AnyError(Declared(4)).rethrow(), Declared);
    EXPECT_THROW(thrown(std::out_of_range("7")).rethrow(), std::out_of_range);
    EXPECT_THROW(thrown("text").rethrow(), const char*);
}

TEST(AnyError, ThrowsTheVeryErrorAcrossTheEdgeOfTheLibrary)
{
    const auto held = NSError("D", 1);

    try {
        thrown(held).rethrow(); // thrown by code of the library, caught here by type
        FAIL() << "nothing was thrown";
    } catch (const NSError& error) {
        EXPECT_TRUE(error.isSame(held));
    }
}

TEST(AnyError, ThrowsTheSameObjectEachTime)
{
    const auto error = thrown(std::out_of_range("7"));
    const auto* held = error.cast<std::out_of_range>();

    for (int round = 0; round < 2; ++round)
        try {
            error.rethrow();
        } catch (const std::out_of_range& exception) {
            EXPECT_EQ(&exception, held);
        }
}

TEST(AnyError, IsThrownItself)
{
    EXPECT_THROW(throw AnyError(5), AnyError);
    EXPECT_THROW(throw AnyError(5), Error);
}

TEST(AnyError, KnowsWhetherItHoldsAnErrorValue)
{
    EXPECT_TRUE(AnyError(Declared(4)).isErrorValue());
    EXPECT_TRUE(AnyError(std::runtime_error("x")).isErrorValue());
    EXPECT_TRUE(thrown(5).isErrorValue()) << "what is thrown is an error, whatever its type";
    EXPECT_FALSE(AnyError(5).isErrorValue());
    EXPECT_FALSE(AnyError("text").isErrorValue());
}

TEST(AnyError, KnowsWhetherWhatItHoldsDeclaresItself)
{
    const auto error = NSError("D", 1);

    EXPECT_EQ(AnyError(Declared(4)).customNSError(), NSError("Declared", 4));
    EXPECT_EQ(thrown(Declared(4)).customNSError(), NSError("Declared", 4));
    EXPECT_TRUE(AnyError(error).customNSError()->isSame(error));
    EXPECT_EQ(AnyError(std::runtime_error("x")).customNSError(), std::nullopt);
    EXPECT_EQ(AnyError(5).customNSError(), std::nullopt);
    EXPECT_EQ(thrown(5).customNSError(), std::nullopt);
}

TEST(AnyError, DescribesWhatItHolds)
{
    EXPECT_EQ(AnyError(5).description(), "5");
    EXPECT_EQ(AnyError("text").description(), "text");
    EXPECT_EQ(AnyError(Declared(4)).description(), "declared 4");
    EXPECT_STREQ(AnyError(Declared(4)).what(), "declared 4");
    EXPECT_EQ(AnyError(std::runtime_error("torn")).description(), "torn");
    EXPECT_EQ(thrown(std::runtime_error("torn")).description(), "torn");
    EXPECT_EQ(thrown(std::string("torn")).description(), "torn");
    EXPECT_EQ(thrown("torn").description(), "torn");
    EXPECT_EQ(thrown(Refusal()).description(), "Refusal");
}

TEST(AnyError, NamesTheTypeItHoldsInFullPrintedForm)
{
    EXPECT_EQ(AnyError(Declared(4)).debugDescription(), "Declared(declared 4)");
    EXPECT_EQ(thrown(Declared(4)).debugDescription(), "Declared(declared 4)");
    EXPECT_EQ(AnyError(std::runtime_error("torn")).debugDescription(), "runtime_error(torn)");
    EXPECT_EQ(thrown(std::runtime_error("torn")).debugDescription(), "runtime_error(torn)");
    EXPECT_EQ(AnyError("text").debugDescription(), "\"text\"");
    EXPECT_EQ(AnyError(Level::High).debugDescription(), "Level(1)");
}

TEST(AnyError, BridgesWhatItHolds)
{
    const auto descriptionKey = std::string(NSLocalizedDescriptionKey);
    const auto error = NSError("D", 1);

    EXPECT_TRUE(AnyError(error).nsError().isSame(error));
    EXPECT_TRUE(thrown(error).nsError().isSame(error));
    EXPECT_EQ(AnyError(Declared(4)).nsError(), NSError("Declared", 4));
    EXPECT_EQ(AnyError(Level::High).nsError(), NSError("Level", 1));
    EXPECT_EQ(AnyError(std::string("x")).nsError(), NSError("String", 1, {{descriptionKey, "x"}}));
    EXPECT_EQ(
        thrown(std::runtime_error("x")).nsError(), NSError("runtime_error", 1, {{descriptionKey, "x"}}));
    EXPECT_EQ(thrown(Refusal()).nsError(), NSError("Refusal", 1, {{descriptionKey, "Refusal"}}));
}

TEST(AnyError, ComparesByBridgedError)
{
    EXPECT_EQ(AnyError(Declared(4)), AnyError(Declared(4)));
    EXPECT_EQ(AnyError(Declared(4)), thrown(Declared(4)));
    EXPECT_EQ(AnyError(Declared(4)), AnyError(NSError("Declared", 4)));
    EXPECT_FALSE(AnyError(Declared(4)) == AnyError(Declared(5)));
    EXPECT_FALSE(AnyError(5) == AnyError(6));
    EXPECT_FALSE(AnyError(5) == AnyError("5"));
}

TEST(AnyError, SharesWhatItHoldsWithCopiesAndClones)
{
    const AnyError error = std::make_shared<int>(5);

    const auto copy = error;
    const auto clone = error.clone();

    const auto* held = error.cast<std::shared_ptr<int>>();
    EXPECT_EQ(copy.cast<std::shared_ptr<int>>(), held);
    EXPECT_EQ(static_cast<const AnyError&>(*clone).cast<std::shared_ptr<int>>(), held);
    EXPECT_EQ(held->use_count(), 1);
}

TEST(AnyError, StaysWholeWhenItIsMovedFrom)
{
    AnyError error = 5;

    const auto taken = std::move(error);

    EXPECT_EQ(*taken.cast<int>(), 5);
    EXPECT_EQ(*error.cast<int>(), 5); // NOLINT(bugprone-use-after-move): the point of this test
}

TEST(AnyError, TakesNoValueThatWouldLoseItsType)
{
    static_assert(!std::is_constructible_v<AnyError, const std::exception&>);
    static_assert(!std::is_constructible_v<AnyError, const Error&>);
    static_assert(!std::is_constructible_v<AnyError, std::unique_ptr<int>>);
    static_assert(!std::is_convertible_v<std::exception_ptr, AnyError>);
    static_assert(std::is_convertible_v<std::runtime_error, AnyError>);
    EXPECT_TRUE((std::is_constructible_v<AnyError, std::exception_ptr>));
}

TEST(AnyError, IsUsedFromSeveralThreads)
{
    const auto error = thrown(std::out_of_range("7"));
    std::vector<std::thread> threads;

    for (int count = 0; count < 4; ++count)
        threads.emplace_back([copy = error] {
            for (int round = 0; round < 200; ++round) {
                ASSERT_STREQ(copy.cast<std::logic_error>()->what(), "7");
                ASSERT_THROW(copy.rethrow(), std::out_of_range);
            }
        });
    for (auto& thread : threads)
        thread.join();
}

TEST(AnyErrorDeathTest, NeedsAnException)
{
    EXPECT_DEATH(static_cast<void>(AnyError(std::exception_ptr{})),
        "Fatal error: AnyError needs a thrown exception: file Platform/Errors/AnyError, line 90");
}
