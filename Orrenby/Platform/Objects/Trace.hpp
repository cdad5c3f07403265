#pragma once

/// @file
/// Reports of the diagnostic build: who attached, subscribed and scheduled what, and where.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/CallSite.hpp"
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// The place of a call that attaches, subscribes or schedules.
///
/// In the diagnostic build this is a `CallSite`; otherwise it is an empty class that costs no instruction. A
/// plain value. Not synchronised.
#ifdef ORRENBY_DIAGNOSTICS
class TraceSite : public CallSite {
public:
    constexpr TraceSite(CallSite site) noexcept
        : CallSite(site)
    {}
    static constexpr TraceSite current(const char* file = __builtin_FILE(), int line = __builtin_LINE(),
        const char* function = __builtin_FUNCTION()) noexcept
    {
        return CallSite::current(file, line, function);
    }
};
#else
class TraceSite {
public:
    constexpr TraceSite() noexcept = default;

    /// Nothing is kept.
    constexpr TraceSite(CallSite) noexcept {}

    /// What an empty site is.
    static constexpr TraceSite current() noexcept { return {}; }
};
#endif

/// The hook of the diagnostic build.
namespace Trace {

/// What happened.
enum class Kind { Make, Attach, Detach, Subscribe, Schedule };

/// One report. The texts are valid during the call of the handler only.
struct Event {
    /// Which of the five.
    Kind kind;
    std::string_view subject; ///< The printed name of the type concerned.

    /// Where in the caller's sources.
    CallSite site;
};

/// Sets what receives every report; the last one set wins, `nullptr` turns reports off.
///
/// In a build without `ORRENBY_DIAGNOSTICS` the handler is kept but never called. Set it at start-up, before
/// other threads run.
ORRENBY_EXPORT void onEvent(void (*handler)(const Event&));

#ifdef ORRENBY_DIAGNOSTICS
ORRENBY_EXPORT void report(Kind kind, std::string_view subject, const TraceSite& site);
#else

/// Does nothing in this build.
constexpr void report(Kind, std::string_view, TraceSite) noexcept {}
#endif

} // namespace Trace

} // namespace orrenby
