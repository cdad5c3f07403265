// Step 0: the house in one screen. The README shows this program.

#include "Orrenby/Utilities/Discover.hpp"
#include "Orrenby/Utilities/Log.hpp"
#include "Orrenby/Utilities/Streams/CurrentValueSubject.hpp"
#include <cstdio>

using namespace orrenby;
using Level = Streams::CurrentValueSubject<double, Never>; // a stream that has a value; copies share it

struct Gauge : AbstractWorker { // a worker: at work while its context is active
    void didStart() override
    {
        level.asPublisher()
            .map([](double metres) { return metres > 2.5; })
            .bind([](bool isFlooded) { Log::info(isFlooded ? "over its banks" : "in its bed"); })
            .store(*this); // ends when the worker stops
    }
    Level level{1.2};
};

using River = AbstractFlow<AbstractContext<Gauge>, Void>; // a flow: a feature, which owns its context

int main()
{
    // Where the log goes is the application's choice.
    Log::onEvent([](Log::Level, const auto& event) { std::puts(event().message().c_str()); });

    const auto gauge = make<Gauge>();
    auto river = make<River>(make<AbstractContext<Gauge>>(Workers(), gauge), Void());
    river->start();         // activates the context, which starts the worker: "in its bed"
    gauge->level.send(2.7); // "over its banks"
    river.reset();          // the worker stops, its subscription ends
    gauge->level.send(3.1); // nobody listens
}
