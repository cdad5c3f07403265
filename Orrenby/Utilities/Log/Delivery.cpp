#include "Orrenby/Utilities/Log/Append.hpp"
#include "Orrenby/Utilities/Log/Settings.hpp"

#include <atomic>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

constinit std::atomic<InstalledHandler<Log::EventHandler>*> logEventHandler = nullptr;
constinit std::atomic<InstalledHandler<Log::CriticalErrorHandler>*> logCriticalErrorHandler = nullptr;

} // namespace detail

namespace {

using detail::InstalledHandler;

template <class Handler> void install(std::atomic<InstalledHandler<Handler>*>& place, Handler handler)
{
    // All that were ever installed: another thread may still be in one of them.
    static constinit std::atomic<InstalledHandler<Handler>*> kept = nullptr;

    InstalledHandler<Handler>* installed = nullptr;
    if (handler) {
        installed = new InstalledHandler<Handler>{std::move(handler), kept.load(std::memory_order_relaxed)};
        while (!kept.compare_exchange_weak(installed->previous, installed, std::memory_order_release)) {}
    }
    place.store(installed, std::memory_order_release);
}

} // namespace

namespace detail {

void LogDelivery::deliverCritical(LogState state, const LogOperations& operations, const void* arguments,
    const char* file, const char* function)
{
    auto* events = logEventHandler.load(std::memory_order_acquire);
    auto* criticalErrors = logCriticalErrorHandler.load(std::memory_order_acquire);
    if (events == nullptr && criticalErrors == nullptr)
        return;

    const auto event = Log::DeferredEvent(state, operations, arguments, file, function);
    if (criticalErrors != nullptr) {
        const auto error = event.makeWithError();
        criticalErrors->handler(event(), error);
    }
    if (events != nullptr)
        events->handler(Log::Level::critical, event);
}

} // namespace detail

namespace Log {

void onEvent(EventHandler handler) { install(detail::logEventHandler, std::move(handler)); }

void onCriticalError(CriticalErrorHandler handler)
{
    install(detail::logCriticalErrorHandler, std::move(handler));
}

} // namespace Log

} // namespace orrenby
