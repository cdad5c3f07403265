#include "Examples/Fieldbook/Daemon/DaemonOptions.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <initializer_list>
#include <vector>

namespace {

using namespace fieldbook;

orrenby::Result<DaemonOptions, std::string> parsed(std::initializer_list<const char*> arguments)
{
    return parseDaemonOptions(std::vector<const char*>(arguments));
}

TEST(DaemonOptions, HaveDefaultsWithWhichNothingGoesWrong)
{
    const auto options = parsed({}).unwrap();

    EXPECT_EQ(options, DaemonOptions());
    EXPECT_EQ(options.feed, (SampleRequest{5, "demo"}));
    EXPECT_EQ(options.faults.kinds, std::vector<Fault>());
}

TEST(DaemonOptions, AreTakenTogether)
{
    const auto options = parsed({"--port=4711", "--reports=12", "--seed=autumn", "--faults=cut,500",
                                    "--fault-rate=100", "--keep=kept", "-h"})
                             .unwrap();

    EXPECT_EQ(options,
        (DaemonOptions{
            4711, {12, "autumn"}, {{Fault::cut, Fault::serverError}, "autumn", 100}, "kept", true}));
}

TEST(DaemonOptions, AreRefusedWithTheirName)
{
    for (const auto* const argument : {"--port=", "--port=65536", "--port=-1", "--port=4x", "--seed=",
             "--seed=a,b", "--seed=../a", "--reports=1001", "--reports=x", "--faults=", "--faults=404",
             "--fault-rate=101", "--keep=", "--port", "--nothing", "--nothing=1", "folder"}) {
        const auto problem = parsed({argument}).error();
        ASSERT_TRUE(problem) << argument;
        const auto name = std::string_view(argument).substr(0, std::string_view(argument).find('='));
        EXPECT_THAT(*problem,
            ::testing::AnyOf(
                ::testing::HasSubstr(std::string(name)), "it takes no arguments besides options"));
    }
}

} // namespace
