#include "Examples/Fieldbook/Remote/RemoteService.hpp"

#include "Orrenby/Platform/Net/URL.hpp"
#include <gtest/gtest.h>

namespace {

using namespace fieldbook;

class RemoteServiceTest : public ::testing::Test {
protected:
    EventLoop loop;
    Terminal terminal{-1, false};
    LifeTrace trace{terminal};
    Session session{loop, terminal, trace, {}, Course::watch};
};

TEST_F(RemoteServiceTest, IsOneForAllWhoAskAndGoesWithTheLast)
{
    auto one = RemoteService::of(session);
    auto another = RemoteService::of(session);
    EXPECT_EQ(one, another);

    one = nullptr;
    EXPECT_FALSE(session.remote.expired());
    another = nullptr;
    EXPECT_TRUE(session.remote.expired());
}

TEST_F(RemoteServiceTest, IsTheOneThatTheSessionNames)
{
    session.service = orrenby::URL::make("http://hut.example");

    EXPECT_EQ(RemoteService::of(session)->address(), session.service);
}

TEST_F(RemoteServiceTest, IsOfThisMachineWhereNoneIsNamedAndStaysWhereItIs)
{
    const auto service = RemoteService::of(session);

    const auto address = service->address();

    if (!address)
        GTEST_SKIP() << "nobody can listen at 127.0.0.1";
    EXPECT_EQ(address->host(), "127.0.0.1");
    EXPECT_EQ(service->address(), address);
}

} // namespace
