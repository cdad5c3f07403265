#include "Orrenby/Utilities/ServiceDecoder/LoadedValue.hpp"

#include <functional>
#include <gmock/gmock.h>
#include <string>
#include <vector>

using namespace orrenby;

TEST(LoadedValue, IsWhatAPlainCallableTakes)
{
    const auto byReference = [](const std::string&) {};
    auto byValue = [](std::vector<int>) mutable noexcept { return 7; };

    EXPECT_TRUE((std::same_as<detail::LoadedBy<std::remove_const_t<decltype(byReference)>>, std::string>));
    EXPECT_TRUE((std::same_as<detail::LoadedBy<decltype(byValue)>, std::vector<int>>));
    EXPECT_TRUE((std::same_as<detail::LoadedBy<void (*)(int&&)>, int>));
    EXPECT_TRUE((std::same_as<detail::LoadedBy<std::function<void(double)>>, double>));
}

TEST(LoadedValue, IsUnknownWhereACallableTakesAnythingOrNothing)
{
    const auto generic = [](auto&&) {};
    const auto empty = [] {};
    const auto changing = [](int&) {};

    EXPECT_FALSE(detail::CallableWithOne<std::remove_const_t<decltype(generic)>>);
    EXPECT_FALSE(detail::CallableWithOne<std::remove_const_t<decltype(empty)>>);
    EXPECT_FALSE(detail::CallableWithOne<std::remove_const_t<decltype(changing)>>);
    EXPECT_TRUE((detail::CallableWithLoaded<std::remove_const_t<decltype(generic)>, int>));
}
