// Step 23: requests that are kept with the change that causes them, and sent until they arrive, also after
// the process was killed.

#include "Orrenby/Foundation/Outbox/Outbox.hpp"
#include "Orrenby/Foundation/URLRequest+Builder.hpp"
#include <algorithm>
#include <cstdio>
#include <string>

using namespace orrenby;

namespace {

const std::string path = "23-outbox.store";

/// What happens when a program starts.
Outbox start(const char* when)
{
    const auto model = NSManagedObjectModel::make(
        1, {{.name = "Report", .attributes = {{.name = "title"}}}, Outbox::entity(), Outbox::bodyEntity()});
    Outbox outbox(make<NSManagedObjectContext>(PersistentStore::open(model, {.path = path})));
    std::printf("%s: %s\n", when, outbox.counts().description().c_str());
    return outbox;
}

} // namespace

int main()
{
    const Date noon(1'800'000'000);
    {
        auto outbox = start("at first");
        for (const char* const title : {"level rising", "bank dry"}) {
            outbox.context()->insert("Report")->setValue("title", title);
            outbox.add(URLRequest("https://fieldbook.example/reports"_url) | using_(HTTPMethod::post)
                    | encoding({{"title", title}}),
                {.key = title, .addsIdempotencyKey = true});
            outbox.context()->save(); // the report and its request, or neither
        }
        std::printf("sending %s\n", outbox.take(noon)->request().description().c_str());
    } // the process ends before there is an answer

    auto outbox = start("killed");
    std::printf("put back: %zu\n", outbox.recover());
    Date now = noon;
    while (const auto due = outbox.dueDate()) {
        now = std::max(now, *due); // a program would wait
        const auto entry = outbox.take(now);
        std::printf("%3.0f s: attempt %d, %s\n", now - noon, int(entry->attempts()), entry->key()->c_str());
        if (entry->attempts() == 3)
            outbox.finish(entry);
        else
            outbox.retryOrGiveUp(entry, {.interval = 30, .limit = 2}, "no answer", now);
    }
    std::printf("at the end: %s\n", outbox.counts().description().c_str());
    for (const char* const end : {"", "-wal", "-shm"})
        std::remove((path + end).c_str());
    return 0;
}
