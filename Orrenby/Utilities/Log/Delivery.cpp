#include "Orrenby/Utilities/Log/Append.hpp"
#include "Orrenby/Utilities/Log/Settings.hpp"

#include <atomic>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace {

/// The handler that is installed, and all that were before: another thread may still be in one of them.
template <class Handler> class Installed {
public:
    struct Record {
        Handler handler;
        const Record* previous = nullptr;
    };

    constexpr Installed() = default;

    /// Null when there is none.
    Record* current() const noexcept { return m_current.load(std::memory_order_acquire); }

    void set(Handler handler)
    {
        Record* record = nullptr;
        if (handler) {
            record = new Record{std::move(handler), m_kept.load(std::memory_order_relaxed)};
            while (!m_kept.compare_exchange_weak(record->previous, record, std::memory_order_release))
                ;
        }
        m_current.store(record, std::memory_order_release);
    }

private:
    std::atomic<Record*> m_current = nullptr;
    std::atomic<const Record*> m_kept = nullptr;
};

constinit Installed<Log::EventHandler> eventHandler;
constinit Installed<Log::CriticalErrorHandler> criticalErrorHandler;

} // namespace

namespace detail {

struct LogDelivery {
    static NSError makeWithError(const Log::DeferredEvent& event) { return event.makeWithError(); }
};

namespace {

[[gnu::noinline]] void deliverCriticalEntry(const LogSource& source)
{
    auto* events = eventHandler.current();
    auto* criticalErrors = criticalErrorHandler.current();
    if (events == nullptr && criticalErrors == nullptr)
        return;

    const auto event = Log::DeferredEvent(Log::Level::critical, source);
    if (criticalErrors != nullptr) {
        const auto error = LogDelivery::makeWithError(event);
        criticalErrors->handler(event(), error);
    }
    if (events != nullptr)
        events->handler(Log::Level::critical, event);
}

} // namespace

void deliverLogEntry(Log::Level level, const LogSource& source)
{
    // The usual case is kept apart, so that it is short.
    if (level == Log::Level::critical)
        return deliverCriticalEntry(source);
    if (auto* events = eventHandler.current())
        events->handler(level, Log::DeferredEvent(level, source));
}

} // namespace detail

namespace Log {

void onEvent(EventHandler handler) { eventHandler.set(std::move(handler)); }

void onCriticalError(CriticalErrorHandler handler) { criticalErrorHandler.set(std::move(handler)); }

} // namespace Log

} // namespace orrenby
