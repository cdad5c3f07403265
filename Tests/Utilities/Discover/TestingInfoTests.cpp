#include "Orrenby/Utilities/Discover/TestingInfo.hpp"

#include <gtest/gtest.h>
#include <type_traits>

using namespace orrenby;

namespace {

TEST(TestingInfo, SaysNoEvenHere) { EXPECT_FALSE(TestingInfo::isUnitTesting()); }

TEST(TestingInfo, HasNoFields) { EXPECT_TRUE(std::is_empty_v<TestingInfo>); }

} // namespace
