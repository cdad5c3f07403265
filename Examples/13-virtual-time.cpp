// Step 13: in a test's world time passes only when the test says so, and a stream is a line of marbles.

#include "Orrenby/Platform/Scheduling/DispatchQueue.hpp"
#include "Orrenby/Testing/MarbleSource.hpp"
#include "Orrenby/Testing/Recorder.hpp"
#include "Orrenby/Testing/VirtualWorld.hpp"
#include "Orrenby/Utilities/Streams/More/Debounce.hpp"
#include "Orrenby/Utilities/Streams/More/Throttle.hpp"
#include <cstdio>

using namespace orrenby;
using namespace orrenby::testing;

int main()
{
    auto world = VirtualWorld(); // no threads; the clock stands still

    int wakeUps = 0;
    DispatchQueue::global().asyncAfter(8 * 3600, [&] { ++wakeUps; });
    world.advance(8 * 3600 - 1);
    std::printf("one second before: %d\n", wakeUps);
    world.advance(1); // eight hours have passed, in no time
    std::printf("after eight hours: %d\n", wakeUps);

    // Each character is a hundredth of a second; | is the end.
    const auto keys = MarbleSource<char>("abc----d-e----f-|");
    const auto quiet = Recorder(keys | Streams::debounce(0.03)); // once no other has come for 3 frames
    const auto slow = Recorder(keys | Streams::throttle(0.03));  // one in 3 frames at most
    world.runAll();

    std::printf("keys      abc----d-e----f-|\n");
    std::printf("debounce  %s\n", quiet.marbles().c_str());
    std::printf("throttle  %s\n", slow.marbles().c_str());
    const auto isRight = quiet.marbles() == "-----c------e---(f|)" && slow.marbles() == "a--c---d--e---f-|";
    return isRight && wakeUps == 1 ? 0 : 1;
}
