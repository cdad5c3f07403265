#include "Orrenby/Platform/Objects/Trace.hpp"

#include <atomic>

namespace orrenby::inline ORRENBY_ABI {

namespace {
std::atomic<void (*)(const Trace::Event&)> currentHandler = nullptr;
}

void Trace::onEvent(void (*handler)(const Event&))
{
    currentHandler.store(handler, std::memory_order_relaxed);
}

#ifdef ORRENBY_DIAGNOSTICS
void Trace::report(Kind kind, std::string_view subject, const TraceSite& site)
{
    if (const auto handler = currentHandler.load(std::memory_order_relaxed))
        handler({kind, subject, site});
}
#endif

} // namespace orrenby
