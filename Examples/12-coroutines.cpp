// Step 12: a coroutine waits for streams, and reads as if it waited in place.

#include "Orrenby/Utilities/Streams/LiveSubscriptionCount.hpp"
#include "Orrenby/Utilities/Streams/More/Await.hpp"
#include "Orrenby/Utilities/Streams/PassthroughSubject.hpp"
#include <cstdio>
#include <string>

using namespace orrenby;

using Lines = Streams::PassthroughSubject<std::string, Never>;

// Asks for a name, then repeats what is said until the stream ends.
Streams::Task talk(Lines lines)
{
    std::puts("who is there?");
    const auto name = co_await lines.asPublisher(); // one line; goes on where it is sent
    std::printf("hello, %s\n", name.c_str());

    auto further = Streams::values(lines); // misses none
    while (const auto line = co_await further.next())
        std::printf("%s says: %s\n", name.c_str(), line->c_str());
    std::printf("goodbye, %s\n", name.c_str());
}

int main()
{
    const auto lines = Lines();
    const auto conversation = talk(lines); // runs to where it has to wait, and returns

    lines.send("Ada");
    lines.send("it rains");
    lines.send("it stops");
    lines.send(Lines::Completion::finished());

    const auto others = Lines();
    {
        const auto interrupted = talk(others);
        others.send("Ben"); // now it waits for the next line
    }                       // dropping the handle ends a coroutine where it waits
    others.send("is nobody there?");
    return conversation.isDone() && Streams::liveSubscriptionCount() == 0 ? 0 : 1;
}
