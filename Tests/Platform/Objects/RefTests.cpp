#include "Orrenby/Platform/Objects/Ref.hpp"

#include <gmock/gmock.h>

using namespace orrenby;

namespace {

class First {
public:
    virtual ~First() = default;
};
class Second {
public:
    virtual ~Second() = default;
    int number = 0;
};
class Both : public First, public Second {};

} // namespace

TEST(Ref, ComparesObjectsThroughDifferentInterfaces)
{
    const auto both = std::make_shared<Both>();
    const Ref<First> first = both;
    const Ref<Second> second = both;

    EXPECT_TRUE(isSameObject(first, second));
    EXPECT_TRUE(isSameObject(both, second));
    EXPECT_TRUE(isSameObject(first.get(), second.get()));
}

TEST(Ref, TellsObjectsApart)
{
    const Ref<First> first = std::make_shared<Both>();
    const Ref<Second> second = std::make_shared<Both>();

    EXPECT_FALSE(isSameObject(first, second));
    EXPECT_FALSE(isSameObject(first, Ref<Second>()));
}

TEST(Ref, TakesTwoEmptyOnesForTheSame) { EXPECT_TRUE(isSameObject(Ref<First>(), Ref<Second>())); }
