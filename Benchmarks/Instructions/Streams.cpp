/// @file
/// One stream operation, repeated as often as told, for counting its instructions: `./dev bench` runs it
/// under callgrind.

#include "Orrenby/Utilities/Streams/CurrentValueSubject.hpp"
#include "Orrenby/Utilities/Streams/Deferred.hpp"
#include "Orrenby/Utilities/Streams/Future.hpp"
#include "Orrenby/Utilities/Streams/More/Distinct.hpp"
#include "Orrenby/Utilities/Streams/More/Filter.hpp"
#include "Orrenby/Utilities/Streams/PassthroughSubject.hpp"
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <thread>
#include <vector>

using namespace orrenby;

namespace {

using Subject = Streams::PassthroughSubject<int, Never>;
using State = Streams::CurrentValueSubject<int, Never>;
using Handles = std::vector<Streams::AnyCancellable>;

std::int64_t sum = 0;

template <class Source> Handles subscribe(const Source& source, int count)
{
    auto handles = Handles();
    for (auto i = 0; i < count; ++i)
        handles.push_back(source.asPublisher().bind([](int value) { sum += value; }));
    return handles;
}

template <int subscribers> void send(int count)
{
    const auto subject = Subject();
    const auto handles = subscribe(subject, subscribers);
    for (auto i = 0; i < count; ++i)
        subject.send(i);
}

void sendCurrent(int count)
{
    const auto state = State(0);
    const auto handles = subscribe(state, 1);
    for (auto i = 0; i < count; ++i)
        state.send(i);
}

void lifeOfCurrent(int count)
{
    for (auto i = 0; i < count; ++i) {
        const auto state = State(0);
        const auto handle = state.asPublisher().bind([](int value) { sum += value; });
        state.send(i);
    }
}

void sendThroughThreeMaps(int count)
{
    const auto subject = Subject();
    const auto more = [](int value) { return value + 1; };
    const auto handle = subject.asPublisher().map(more).map(more).map(more).bind(
        [](int value) { sum += value; });
    for (auto i = 0; i < count; ++i)
        subject.send(i);
}

void sendThroughThreeFilters(int count)
{
    const auto subject = Subject();
    const auto passing = Streams::filter([](int value) { return value >= 0; });
    const auto handle = (subject | passing | passing | passing).bind([](int value) { sum += value; });
    for (auto i = 0; i < count; ++i)
        subject.send(i);
}

void sendThroughThreeDistincts(int count)
{
    const auto subject = Subject();
    const auto handle = (subject | Streams::distinct | Streams::distinct | Streams::distinct)
                            .bind([](int value) { sum += value; });
    for (auto i = 0; i < count; ++i)
        subject.send(i);
}

void combineLatestOf2(int count)
{
    const auto first = Subject();
    const auto second = State(1);
    const auto handle = first.asPublisher().combineLatest(second.asPublisher()).bind([](const auto& tuple) {
        sum += std::get<0>(tuple) + std::get<1>(tuple);
    });
    for (auto i = 0; i < count; ++i)
        first.send(i);
}

void combineLatestOf4(int count)
{
    const auto first = Subject();
    const auto other = State(1).asPublisher();
    const auto handle = first.asPublisher().combineLatest(other, other, other).bind([](const auto& tuple) {
        sum += std::get<0>(tuple) + std::get<3>(tuple);
    });
    for (auto i = 0; i < count; ++i)
        first.send(i);
}

void lifeOfFuture(int count)
{
    for (auto i = 0; i < count; ++i) {
        const auto future = Streams::Future<int, Never>([&](const auto& promise) {
            promise(Result<int, Never>::success(i));
            return nullptr;
        });
        const auto handle = future.asPublisher().bind([](int value) { sum += value; });
    }
}

void subscribeToDeferred(int count)
{
    const auto subject = Subject();
    const auto publisher = Streams::Deferred<Subject>([&] { return subject; }).asPublisher();
    for (auto i = 0; i < count; ++i)
        const auto handle = publisher.bind([](int value) { sum += value; });
}

template <int others> void subscribeBeside(int count)
{
    const auto subject = Subject();
    const auto publisher = subject.asPublisher();
    const auto handles = subscribe(subject, others);
    for (auto i = 0; i < count; ++i)
        const auto handle = publisher.bind([](int value) { sum += value; });
}

const std::map<std::string, void (*)(int)> operations = {
    {"send-to-1", send<1>},
    {"send-through-3-maps", sendThroughThreeMaps},
    {"send-through-3-filters", sendThroughThreeFilters},
    {"send-through-3-distincts", sendThroughThreeDistincts},
    {"send-to-10", send<10>},
    {"send-to-2000", send<2'000>},
    {"send-current-to-1", sendCurrent},
    {"create-subscribe-push-dispose", lifeOfCurrent},
    {"combine-latest-of-2-push", combineLatestOf2},
    {"combine-latest-of-4-push", combineLatestOf4},
    {"future-create-fulfil-subscribe-dispose", lifeOfFuture},
    {"deferred-subscribe-dispose", subscribeToDeferred},
    {"subscribe-dispose-beside-0", subscribeBeside<0>},
    {"subscribe-dispose-beside-10000", subscribeBeside<10'000>},
};

}

/// Arguments: `combine` or `rx`, the operation, how often. Without arguments it lists the operations.
int main(int argumentCount, char** arguments)
{
    if (argumentCount != 4) {
        for (const auto& operation : operations)
            std::puts(operation.first.c_str());
        return 0;
    }
    std::thread([] {}).join(); // from here on the process counts as one with several threads
    Streams::set({.isCombineEnabledWhenAvailable = std::string(arguments[1]) == "combine"});
    operations.at(arguments[2])(std::atoi(arguments[3]));
    return sum == 42 ? 1 : 0; // looks at the sum, so that it is computed
}
