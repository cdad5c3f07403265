#include "Orrenby/Platform/Errors/Error.hpp"

#include "Orrenby/Platform/Errors/NSError.hpp"
#include <gmock/gmock.h>
#include <string>
#include <thread>
#include <vector>

using namespace orrenby;

namespace {

/// Says nothing about itself but how to copy it.
class SilentError : public Error {
public:
    std::unique_ptr<Error> clone() const override { return std::make_unique<SilentError>(*this); }
};

class SpokenError : public Error {
public:
    explicit SpokenError(std::string text)
        : m_text(std::move(text))
    {}
    std::string description() const override { return m_text; }
    std::unique_ptr<Error> clone() const override { return std::make_unique<SpokenError>(*this); }

private:
    std::string m_text;
};

class UndescribableError : public Error {
public:
    std::string description() const override { throw 1; }
    std::unique_ptr<Error> clone() const override { return std::make_unique<UndescribableError>(*this); }
};

} // namespace

TEST(Error, PrintsItsTypeByDefault)
{
    EXPECT_EQ(SilentError().description(), "SilentError");
    EXPECT_STREQ(SilentError().what(), "SilentError");
    EXPECT_EQ(SilentError().debugDescription(), "SilentError");
}

TEST(Error, NamesItsTypeInFullPrintedForm)
{
    EXPECT_EQ(SpokenError("no signal").debugDescription(), "SpokenError(no signal)");
}

TEST(Error, GivesItsDescriptionAsWhatInOnePlace)
{
    const auto error = SpokenError("no signal");

    const auto* text = error.what();

    EXPECT_STREQ(text, "no signal");
    EXPECT_EQ(error.what(), text);
}

TEST(Error, DescribesItselfAnewAfterAssignment)
{
    auto error = SpokenError("no signal");
    const auto copy = error;
    EXPECT_STREQ(error.what(), "no signal");

    error = SpokenError("no power");

    EXPECT_STREQ(error.what(), "no power");
    EXPECT_STREQ(copy.what(), "no signal");
}

TEST(Error, SurvivesAssignmentToItself)
{
    auto error = SpokenError("no signal");
    const auto& same = error;
    EXPECT_STREQ(error.what(), "no signal");

    error = same;

    EXPECT_STREQ(error.what(), "no signal");
}

TEST(Error, ThrowsNothingFromWhat)
{
    EXPECT_STREQ(UndescribableError().what(), "an error that could not be described");
}

TEST(Error, IsDescribedOnceForAllThreads)
{
    const auto error = SpokenError("no signal");
    std::vector<const char*> texts(4);
    std::vector<std::thread> threads;

    for (auto& text : texts)
        threads.emplace_back([&] { text = error.what(); });
    for (auto& thread : threads)
        thread.join();

    EXPECT_THAT(texts, testing::Each(error.what()));
}

TEST(Error, ClonesToTheSameDynamicType)
{
    const auto original = SpokenError("no signal");
    const Error& error = original;

    const auto clone = error.clone();

    EXPECT_NE(dynamic_cast<const SpokenError*>(clone.get()), nullptr);
    EXPECT_EQ(clone->description(), "no signal");
}

TEST(Error, HasAnErrorObjectMadeUpForIt)
{
    const auto expected = NSError("SpokenError", 1, {{std::string(NSLocalizedDescriptionKey), "no signal"}});

    EXPECT_EQ(SpokenError("no signal").nsError(), expected);
    EXPECT_EQ(SpokenError("no signal").customNSError(), std::nullopt);
}

TEST(Error, IsCaughtAsAnyOfItsBases)
{
    EXPECT_THROW(throw SpokenError("no signal"), SpokenError);
    EXPECT_THROW(throw SpokenError("no signal"), Error);
    EXPECT_THROW(throw SpokenError("no signal"), std::exception);
}
