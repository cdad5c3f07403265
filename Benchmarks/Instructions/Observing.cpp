/// @file
/// One operation of key-value observing, repeated as often as told, for counting its instructions.

#include "Benchmarks/Support/ObservedParts.hpp"
#include "Orrenby/Utilities/Observers/KeyPathObserver.hpp"
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <thread>

using namespace orrenby;
using benchmarks::Counting;
using benchmarks::oldAndNew;
using benchmarks::Part;
using benchmarks::Whole;

namespace {

template <int observers> void set(int count)
{
    Part part;
    const auto observer = std::make_shared<Counting>();
    for (auto i = 0; i < observers; ++i)
        part.addObserver(observer, "size", oldAndNew);
    for (auto i = 0; i < count; ++i)
        part.size = i;
}

void setAtTheEndOfAPath(int count)
{
    Whole whole;
    const auto part = std::make_shared<Part>();
    whole.part = part;
    const auto observer = std::make_shared<Counting>();
    whole.addObserver(observer, "part.size", oldAndNew);
    for (auto i = 0; i < count; ++i)
        part->size = i;
}

void replaceAnObject(int count)
{
    Whole whole;
    const Ref<Part> parts[] = {std::make_shared<Part>(), std::make_shared<Part>()};
    const auto observer = std::make_shared<Counting>();
    whole.addObserver(observer, "part.size", oldAndNew);
    for (auto i = 0; i < count; ++i)
        whole.part = parts[i % 2];
}

void setWithATypedObserver(int count)
{
    const auto part = std::make_shared<Part>();
    const auto observer = make<KeyPathObserver<Part>>(part);
    long sum = 0;
    observer->observe(keyPath<&Part::size>(), [&](const auto& size) { sum += size.value(); });
    for (auto i = 0; i < count; ++i)
        part->size = i;
}

void registerAndRemove(int count)
{
    Part part;
    const auto observer = std::make_shared<Counting>();
    for (auto i = 0; i < count; ++i) {
        part.addObserver(observer, "size", oldAndNew);
        part.removeObserver(*observer, "size");
    }
}

const std::map<std::string, void (*)(int)> operations = {
    {"set-unobserved", set<0>},
    {"set-with-1-observer", set<1>},
    {"set-with-10-observers", set<10>},
    {"set-at-the-end-of-a-path", setAtTheEndOfAPath},
    {"replace-an-object-of-a-path", replaceAnObject},
    {"set-with-a-typed-observer", setWithATypedObserver},
    {"register-and-remove", registerAndRemove},
};

}

/// Arguments: a word that streams need, the operation, how often. Without arguments it lists the operations.
int main(int argumentCount, char** arguments)
{
    if (argumentCount != 4) {
        for (const auto& operation : operations)
            std::puts(operation.first.c_str());
        return 0;
    }
    std::thread([] {}).join(); // from here on the process counts as one with several threads
    operations.at(arguments[2])(std::atoi(arguments[3]));
    return 0;
}
