// What a log entry costs where nobody reads it: below the level, and at a handler that does not ask for the
// event. The peer does the same work with its own filter and a sink that throws everything away.

#include "Orrenby/Utilities/Log.hpp"
#include <benchmark/benchmark.h>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <spdlog/sinks/null_sink.h>
#include <spdlog/spdlog.h>
#include <string>
#include <thread>

using namespace orrenby;

namespace {

/// A thread that only waits: with a second thread in the process no lock prefix is skipped.
class ParkedThread {
public:
    ParkedThread()
        : m_thread([this] {
            auto lock = std::unique_lock(m_mutex);
            m_condition.wait(lock, [this] { return m_isDone; });
        })
    {}
    ~ParkedThread()
    {
        {
            const auto lock = std::lock_guard(m_mutex);
            m_isDone = true;
        }
        m_condition.notify_one();
        m_thread.join();
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_condition;
    bool m_isDone = false;
    std::thread m_thread;
};

const ParkedThread parkedThread;

long delivered = 0;

void countEntries()
{
    Log::onEvent([](Log::Level, const Log::DeferredEvent&) { ++delivered; });
}

std::shared_ptr<spdlog::logger> peer(spdlog::level::level_enum level)
{
    auto logger = std::make_shared<spdlog::logger>("peer", std::make_shared<spdlog::sinks::null_sink_mt>());
    logger->set_level(level);
    return logger;
}

void loop(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::ClobberMemory();
}
BENCHMARK(loop);

void belowTheLevel(benchmark::State& state)
{
    countEntries();
    Log::setLevel(Log::Level::warning);
    for (auto _ : state) {
        Log::info("request failed");
        benchmark::ClobberMemory();
    }
    Log::setLevel(Log::Level::debug);
}
BENCHMARK(belowTheLevel);

void belowTheLevelDeferred(benchmark::State& state)
{
    countEntries();
    Log::setLevel(Log::Level::warning);
    int attempt = 0;
    for (auto _ : state) {
        ++attempt;
        Log::info([&] { return "attempt " + std::to_string(attempt); });
        benchmark::ClobberMemory();
    }
    Log::setLevel(Log::Level::debug);
}
BENCHMARK(belowTheLevelDeferred);

void peerBelowTheLevel(benchmark::State& state)
{
    const auto logger = peer(spdlog::level::warn);
    for (auto _ : state) {
        logger->info("request failed");
        benchmark::ClobberMemory();
    }
}
BENCHMARK(peerBelowTheLevel);

void withoutHandler(benchmark::State& state)
{
    Log::onEvent(nullptr);
    for (auto _ : state) {
        Log::warning("request failed");
        benchmark::ClobberMemory();
    }
}
BENCHMARK(withoutHandler);

void delivery(benchmark::State& state)
{
    countEntries();
    for (auto _ : state) {
        Log::warning("request failed");
        benchmark::ClobberMemory();
    }
}
BENCHMARK(delivery);

void deliveryDeferred(benchmark::State& state)
{
    countEntries();
    int attempt = 0;
    for (auto _ : state) {
        ++attempt;
        Log::warning([&] { return "attempt " + std::to_string(attempt); });
        benchmark::ClobberMemory();
    }
}
BENCHMARK(deliveryDeferred);

void peerDelivery(benchmark::State& state)
{
    const auto logger = peer(spdlog::level::trace);
    for (auto _ : state) {
        logger->warn("request failed");
        benchmark::ClobberMemory();
    }
}
BENCHMARK(peerDelivery);

void deliveryOfAMadeEvent(benchmark::State& state)
{
    Log::onEvent([](Log::Level, const Log::DeferredEvent& event) { benchmark::DoNotOptimize(&event()); });
    for (auto _ : state) {
        Log::warning("request failed");
        benchmark::ClobberMemory();
    }
}
BENCHMARK(deliveryOfAMadeEvent);

void consoleLine(benchmark::State& state)
{
    const auto event = Log::Event("W", "Feed", 120, "load", "[MAIN]", "request failed", {{"attempt", 3}});
    for (auto _ : state)
        benchmark::DoNotOptimize(
            Log::ConsoleHandler::line(Log::Level::warning, event, Date(1763719200.125), false));
}
BENCHMARK(consoleLine);

void jsonLine(benchmark::State& state)
{
    const auto event = Log::Event("W", "Feed", 120, "load", "[MAIN]", "request failed", {{"attempt", 3}});
    for (auto _ : state)
        benchmark::DoNotOptimize(
            Log::JSONLinesHandler::line(Log::Level::warning, event, Date(1763719200.125)));
}
BENCHMARK(jsonLine);

} // namespace
