#include "Orrenby/Testing/MarbleLegend.hpp"

#include <gtest/gtest.h>

using namespace orrenby;
using orrenby::testing::MarbleLegend;

namespace {

template <class Output, class Failure = Never> using Legend = MarbleLegend<Output, Failure>;

TEST(MarbleLegend, TakesSymbolsThatSayItAllByThemselves)
{
    EXPECT_EQ(Legend<int>().payload('7')->value(), 7);
    EXPECT_EQ(Legend<std::string>().payload('q')->value(), "q");
    EXPECT_EQ(Legend<char>().payload('q')->value(), 'q');
    EXPECT_EQ(Legend<Void>().payload('x')->value(), Void());
}

TEST(MarbleLegend, HasNothingForOtherSymbols)
{
    EXPECT_FALSE(Legend<int>().payload('a'));
    EXPECT_FALSE(Legend<bool>().payload('1'));
    EXPECT_FALSE(Legend<double>().payload('1'));
    EXPECT_FALSE(Legend<std::string>().payload('#')); // cannot fail
}

TEST(MarbleLegend, PrefersItsEntries)
{
    const auto legend = Legend<int, std::string>{
        .values = {{'a', 10}, {'1', 100}}, .failures = {{'x', "lost"}}};
    using Payload = decltype(legend)::Payload;

    EXPECT_EQ(legend.payload('a'), Payload::value(10));
    EXPECT_EQ(legend.payload('1'), Payload::value(100));
    EXPECT_EQ(legend.payload('2'), Payload::value(2));
    EXPECT_EQ(legend.payload('x'), Payload::error("lost"));
    EXPECT_EQ(legend.payload('#'), Payload::error(""));
}

TEST(MarbleLegend, FindsTheSymbolOfAPayload)
{
    const auto legend = Legend<int, std::string>{
        .values = {{'a', 10}, {'1', 100}}, .failures = {{'x', "lost"}}};
    using Payload = decltype(legend)::Payload;

    EXPECT_EQ(legend.symbol(Payload::value(10)), 'a');
    EXPECT_EQ(legend.symbol(Payload::value(100)), '1');
    EXPECT_EQ(legend.symbol(Payload::value(2)), '2');
    EXPECT_EQ(legend.symbol(Payload::value(1)), '?'); // its digit stands for another value
    EXPECT_EQ(legend.symbol(Payload::value(-1)), '?');
    EXPECT_EQ(legend.symbol(Payload::error("lost")), 'x');
    EXPECT_EQ(legend.symbol(Payload::error("other")), '#');
}

TEST(MarbleLegend, FindsNoSymbolForValuesThatCannotBeCompared)
{
    struct Opaque {};
    const auto legend = Legend<Opaque, Opaque>{.values = {{'a', {}}}, .failures = {{'x', {}}}};
    using Payload = decltype(legend)::Payload;

    EXPECT_EQ(legend.symbol(Payload::value({})), '?');
    EXPECT_EQ(legend.symbol(Payload::error({})), '#');
}

} // namespace
