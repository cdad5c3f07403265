#include "Orrenby/Utilities/Discover/LeakDetector.hpp"

#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <type_traits>

using namespace orrenby;

namespace {

TEST(LeakDetector, LeavesTheObjectAlone)
{
    auto object = std::make_shared<int>(7);
    const auto weak = WeakRef<int>(object);

    LeakDetector::detect(object, 0);
    LeakDetector::detect(object, 2.5);

    EXPECT_EQ(*object, 7);
    EXPECT_EQ(object.use_count(), 1);
    EXPECT_EQ(weak.use_count(), 1);

    object.reset();
    EXPECT_TRUE(weak.expired());
}

TEST(LeakDetector, TakesAnyDelayAndNoObject)
{
    EXPECT_EXIT(
        {
            LeakDetector::detect(Ref<int>(), -1);
            LeakDetector::detect(Ref<int>(), std::numeric_limits<double>::infinity());
            LeakDetector::detect(Ref<int>(), std::numeric_limits<double>::quiet_NaN());
            std::_Exit(0);
        },
        ::testing::ExitedWithCode(0), "^$");
}

TEST(LeakDetector, HasNoInstances) { EXPECT_FALSE(std::is_default_constructible_v<LeakDetector>); }

} // namespace
