// Step 2: a context switches its workers on and off together.

#include "Orrenby/Utilities/Discover/AbstractContext.hpp"
#include "Orrenby/Utilities/Discover/AbstractWorker.hpp"
#include <cstdio>
#include <string>

using namespace orrenby;

class Task : public AbstractWorker {
public:
    explicit Task(std::string name)
        : m_name(std::move(name))
    {}

    void hurry() { std::printf("  %s hurries\n", m_name.c_str()); }

protected:
    void didStart() override { std::printf("  %s started\n", m_name.c_str()); }
    void willStop() override { std::printf("  %s stops\n", m_name.c_str()); }

private:
    std::string m_name;
};

// Analytics is a type of your own; what is passed in must be a worker as well, and it starts last.
class Analytics : public Task {
public:
    Analytics()
        : Task("analytics")
    {}
    void track(const char* event) { std::printf("  tracked: %s\n", event); }
};

class FeedContext : public AbstractContext<Analytics> {
public:
    using AbstractContext::AbstractContext;

protected:
    void didBecomeActive() override { analytics()->track("feed opened"); }  // before the workers start
    void willResignActive() override { analytics()->track("feed closed"); } // after they stopped
};

int main()
{
    const auto context = make<FeedContext>(
        Workers{make<Task>("loader"), make<Task>("monitor")}, make<Analytics>());

    std::puts("activate:");
    context->activate();
    std::puts("first task:");
    context->withFirstWorker<Task>([](Task& task) { task.hurry(); });
    std::puts("deactivate:");
    context->deactivate();
}
