#include "Orrenby/Utilities/Streams/PassthroughSubject.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace orrenby;
using ::testing::ElementsAre;

namespace {

TEST(PassthroughSubject, AnnouncesEvents)
{
    auto heard = std::vector<std::string>();

    //! [Announcing events]
    const auto arrivals = Streams::PassthroughSubject<std::string, Never>();
    arrivals.send("nobody hears this");
    const auto subscription = arrivals.asPublisher().bind(
        [&](const std::string& name) { heard.push_back(name); });
    arrivals.send("report.txt");
    //! [Announcing events]

    EXPECT_THAT(heard, ElementsAre("report.txt"));
}

template <class Subject>
concept HasCurrentValue = requires(const Subject& subject)
{
    subject.get();
}
|| requires(const Subject& subject) { subject.value(); };

static_assert(!HasCurrentValue<Streams::PassthroughSubject<int, Never>>);

TEST(Completion, HasAFailureOrNone)
{
    using Completion = Streams::PassthroughSubject<int, std::string>::Completion;

    EXPECT_EQ(Completion::failure("x").failure(), "x");
    EXPECT_EQ(Completion::finished().failure(), std::nullopt);
    EXPECT_NE(Completion::finished(), Completion::failure(""));
}

} // namespace
