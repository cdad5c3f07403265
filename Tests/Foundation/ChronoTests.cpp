#include "Orrenby/Foundation/Chrono.hpp"

#include <gmock/gmock.h>

using namespace orrenby;
using namespace std::chrono_literals;

TEST(Chrono, CountsDownADuration)
{
    //! [Counting down a duration]
    EXPECT_EQ(formattedCountdown(2h + 90s), "02:01:30");
    EXPECT_EQ(formattedCountdownForTimeRemainingWithMilliseconds(1250ms), "00:01.25");
    //! [Counting down a duration]
}
