// Step 0: the house in one screen. The README shows this program.

#include "Orrenby/Utilities/Discover.hpp"
#include "Orrenby/Utilities/Log.hpp"
#include "Orrenby/Utilities/Streams/CurrentValueSubject.hpp"
#include "Orrenby/Utilities/Streams/LiveSubscriptionCount.hpp"

using namespace orrenby;

using Level = Streams::CurrentValueSubject<double, Never>; // a state that cannot fail; copies share it

// A worker watches the river while its context is active.
class Gauge : public AbstractWorker {
public:
    explicit Gauge(Level level)
        : m_level(std::move(level))
    {}

protected:
    void didStart() override
    {
        m_level.asPublisher()
            .map([](double metres) { return metres > 2.5; })
            .bind([](bool isFlooded) {
                if (isFlooded)
                    Log::warning("the river is over its banks");
            })
            .store(*this); // ends when the worker stops
    }

private:
    Level m_level;
};

// A flow owns a context, which owns the workers; flows attach to flows.
class RiverFlow : public AbstractFlow<AbstractContext<Gauge>, Void> {
public:
    explicit RiverFlow(const Level& level)
        : AbstractFlow(make<AbstractContext<Gauge>>(Workers(), make<Gauge>(level)), Void())
    {}
};

int main()
{
    Log::onEvent(Log::ConsoleHandler()); // where the log goes is the application's choice

    const auto level = Level(1.2);
    auto river = make<RiverFlow>(level);
    river->start();  // activates the context, which starts the worker
    level.send(2.7); // one warning
    river.reset();   // the worker stops, its subscription ends
    level.send(3.1); // nobody listens
    return Streams::liveSubscriptionCount() == 0 ? 0 : 1;
}
