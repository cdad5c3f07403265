// Step 11: operators make new streams of streams; a chain of them reads from top to bottom.

#include "Orrenby/Platform/Scheduling/DispatchQueue.hpp"
#include "Orrenby/Platform/Scheduling/RunLoop.hpp"
#include "Orrenby/Utilities/Streams/More/Debounce.hpp"
#include "Orrenby/Utilities/Streams/More/Distinct.hpp"
#include "Orrenby/Utilities/Streams/More/Filter.hpp"
#include "Orrenby/Utilities/Streams/More/Merge.hpp"
#include "Orrenby/Utilities/Streams/PassthroughSubject.hpp"
#include <cstdio>
#include <vector>

using namespace orrenby;

using Gauge = Streams::PassthroughSubject<int, Never>; // sends the level of a river in centimetres

int main()
{
    const auto north = Gauge();
    const auto south = Gauge();
    std::vector<int> alarms;
    int settledLevel = 0;

    const auto alarm = north.asPublisher() | Streams::mergeWith(south) // of both, as they come,
        | Streams::filter([](int level) { return level >= 250; })      // what is high
        | Streams::distinct;                                           // and was not said just before
    const auto alarmBell = alarm.bind([&](int level) {
        std::printf("alarm at %d\n", level);
        alarms.push_back(level);
    });

    const auto settled = north | Streams::debounce(0.001, DispatchQueue::main()); // quiet for a millisecond
    const auto logbook = settled.bind([&](int level) {
        std::printf("north settled at %d\n", level);
        settledLevel = level;
        RunLoop::main().stop();
    });

    north.send(240);
    south.send(255);
    north.send(255);
    north.send(270);
    RunLoop::main().run();
    return alarms == std::vector{255, 270} && settledLevel == 270 ? 0 : 1;
}
