#include "Orrenby/Utilities/Log/Settings.hpp"

#include "Orrenby/Utilities/Log/Append.hpp"
#include <string>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

constinit std::atomic<Log::Level::Case> logLevel = Log::Level::debug;

} // namespace detail

namespace Log {

namespace {

constinit std::atomic<bool> showsEmoji = true;

template <class Message> void report(int line, const char* setting, const Message& message)
{
    _append(
        [] { return false; }, Level::debug, message, Dictionary{}, CallSite("Utilities/Log", line, setting));
}

} // namespace

void setLevel(Level level)
{
    detail::logLevel.store(level, std::memory_order_relaxed);
    report(25, "level", [&] { return "Log.level = " + std::string(level.description()); });
}

bool useEmoji() noexcept { return showsEmoji.load(std::memory_order_relaxed); }

void setUseEmoji(bool useEmoji)
{
    showsEmoji.store(useEmoji, std::memory_order_relaxed);
    report(33, "useEmoji", [&] { return std::string("Log.useEmoji = ") + (useEmoji ? "true" : "false"); });
}

} // namespace Log

} // namespace orrenby
