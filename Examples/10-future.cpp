// Step 10: callbacks become streams: begun when wanted, combined, delivered where they are needed.

#include "Orrenby/Platform/Scheduling/DispatchQueue.hpp"
#include "Orrenby/Platform/Scheduling/RunLoop.hpp"
#include "Orrenby/Utilities/Streams/Deferred.hpp"
#include "Orrenby/Utilities/Streams/Future.hpp"
#include <cstdio>
#include <functional>
#include <tuple>

using namespace orrenby;

// A device that answers some time later, by a callback.
struct Thermometer {
    bool isOn = false;
    std::function<void(int)> answer;
};

using Reading = Streams::Future<int, Never>;

// A future begins as soon as it is made; deferred, when somebody subscribes.
Streams::Deferred<Reading> reading(Thermometer& thermometer)
{
    return Streams::Deferred<Reading>([&thermometer] {
        return Reading([&thermometer](const Reading::Promise& promise) {
            thermometer.isOn = true;
            thermometer.answer = [promise](int degrees) { promise(Result<int, Never>::success(degrees)); };
            // The clean-up: the answer is there, or nobody wants it any more.
            return [&thermometer] { thermometer.isOn = false; };
        });
    });
}

int main()
{
    auto inside = Thermometer();
    auto outside = Thermometer();
    const auto both = reading(inside).asPublisher().combineLatest(reading(outside).asPublisher());
    std::printf("described: %s\n", inside.isOn || outside.isOn ? "on" : "off");

    int difference = 0;
    const auto onMain = both.receive(DispatchQueue::main());
    const auto subscription = onMain.bind([&](const std::tuple<int, int>& degrees) {
        difference = std::get<0>(degrees) - std::get<1>(degrees);
        RunLoop::main().stop();
    });
    std::printf("subscribed: %s\n", inside.isOn && outside.isOn ? "on" : "off");

    const auto devices = DispatchQueue::serial("com.example.devices"); // the answers come on another thread
    devices.async([&] {
        inside.answer(21);
        outside.answer(-4);
    });
    RunLoop::main().run();
    std::printf("%d degrees warmer inside\n", difference);

    const auto isAnyOn = devices.sync([&] { return inside.isOn || outside.isOn; });
    std::printf("answered: %s\n", isAnyOn ? "on" : "off");
    return difference == 25 && !isAnyOn ? 0 : 1;
}
