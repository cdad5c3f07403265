#include "Orrenby/Platform/Scheduling/Timer.hpp"

#include "Tests/Platform/Scheduling/RunLoopParts.hpp"
#include <gmock/gmock.h>
#include <vector>

using namespace orrenby;
using orrenby::testing::inManualWorld;
using orrenby::testing::noNumber;
using orrenby::testing::recordingTimer;
using orrenby::testing::secondsIn;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(Timer, IsMovedWithItsRhythm)
{
    inManualWorld([](auto& world) {
        std::vector<double> moments;
        const auto timer = recordingTimer(10, world, moments);
        timer->setFireDate(Date::now() + 3);
        EXPECT_EQ(timer->fireDate(), Date::now() + 3);

        RunLoop::current().runFor(25);

        EXPECT_THAT(moments, ElementsAre(3, 13, 23));
    });
}

TEST(Timer, MovedIntoThePastIsDueAtOnce)
{
    inManualWorld([](auto& world) {
        std::vector<double> moments;
        const auto timer = recordingTimer(10, world, moments);
        const auto past = Date::now() - 4;
        timer->setFireDate(past);
        EXPECT_EQ(timer->fireDate(), past);

        RunLoop::current().runFor(20);

        EXPECT_THAT(moments, ElementsAre(0, 6, 16));
    });
}

TEST(Timer, MovedBeforeAllTimeCountsFromWhenItFires)
{
    inManualWorld([](auto& world) {
        std::vector<double> moments;
        const auto timer = recordingTimer(10, world, moments);
        for (const auto date : {Date::distantPast(), Date(-1e300), Date(noNumber)}) {
            moments.clear();
            const auto begin = secondsIn(world);
            timer->setFireDate(date);

            RunLoop::current().runFor(10);

            EXPECT_THAT(moments, ElementsAre(begin, begin + 10));
        }
    });
}

TEST(Timer, MovedAfterAllTimeWaits)
{
    inManualWorld([](auto& world) {
        std::vector<double> moments;
        const auto timer = recordingTimer(10, world, moments);
        timer->setFireDate(Date::distantFuture());

        RunLoop::current().runFor(1000);

        EXPECT_THAT(moments, IsEmpty());
        EXPECT_TRUE(timer->isValid());
    });
}

TEST(Timer, MovedByItsOwnBlockTakesThatForItsNext)
{
    inManualWorld([](auto& world) {
        std::vector<double> moments;
        const auto timer = Timer::scheduledTimerWithTimeInterval(10, true, [&](Timer& self) {
            moments.push_back(secondsIn(world));
            if (moments.size() == 1)
                self.setFireDate(Date::now() + 1);
        });

        RunLoop::current().runFor(25);

        EXPECT_THAT(moments, ElementsAre(10, 11, 21));
    });
}

TEST(Timer, IsNotMovedOnceItIsInvalid)
{
    const auto timer = Timer::timerWithTimeInterval(1, true, nullptr);
    const auto date = timer->fireDate();
    timer->invalidate();

    timer->setFireDate(Date(0));

    EXPECT_EQ(timer->fireDate(), date);
}
