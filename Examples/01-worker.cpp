// Step 1: a worker listens to a stream while it works.

#include "Orrenby/Utilities/Discover/AbstractWorker.hpp"
#include "Orrenby/Utilities/Streams/PassthroughSubject.hpp"
#include <cstdio>
#include <string>

using namespace orrenby;

// A stream of texts that cannot fail. Copies share it.
using Messages = Streams::PassthroughSubject<std::string, Never>;

class Printer : public AbstractWorker {
public:
    explicit Printer(Messages messages)
        : m_messages(std::move(messages))
    {}

protected:
    void didStart() override
    {
        std::puts("printer: started");
        // Stored in the worker, the subscription lives until the worker stops.
        m_messages.asPublisher()
            .bind([](const std::string& text) { std::printf("printer: %s\n", text.c_str()); })
            .store(*this);
    }

    void willStop() override { std::puts("printer: about to stop"); }

private:
    Messages m_messages;
};

int main()
{
    const auto messages = Messages();
    auto printer = make<Printer>(messages); // what has a life is made with make

    messages.send("nobody listens yet");
    printer->start();
    printer->start(); // once more does nothing
    messages.send("hello");
    printer->stop();
    messages.send("nobody listens any more");

    printer->start();
    messages.send("hello again");
    printer.reset(); // the last reference goes away: the worker stops first
}
