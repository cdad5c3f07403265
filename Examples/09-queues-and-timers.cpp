// Step 9: work on a queue, its result on the main thread, and a timer of the main thread's run loop.

#include "Orrenby/Platform/Scheduling/DispatchQueue.hpp"
#include "Orrenby/Platform/Scheduling/RunLoop.hpp"
#include "Orrenby/Platform/Scheduling/Timer.hpp"
#include <cstdio>

using namespace orrenby;

// Counts down to 0 every millisecond, then lets the loop return.
void countDown(int& count)
{
    Timer::scheduledTimerWithTimeInterval(0.001, true, [&count](Timer& timer) {
        std::printf("main: %d\n", count);
        if (--count > 0)
            return;
        timer.invalidate();
        RunLoop::main().stop();
    });
}

int main()
{
    const auto reckoning = DispatchQueue::serial("com.example.reckoning");
    int handled = 0; // only touched on that queue, so it needs no lock
    int count = 0;   // only touched on the main thread

    for (const int number : {1, 2, 3}) // one at a time, in this order
        reckoning.async([&handled, number] {
            std::printf("queue: number %d\n", number);
            ++handled;
        });
    reckoning.async([&] {
        DispatchQueue::main().async([&count, handled] {
            std::printf("main: %d numbers are handled\n", handled);
            count = handled;
            countDown(count);
        });
    });

    RunLoop::main().run(); // the main thread lends itself to its loop until somebody stops it

    const auto total = reckoning.sync([&] { return handled; }); // the result of work, when its turn has come
    return total == 3 && count == 0 ? 0 : 1;
}
