#include "Orrenby/Utilities/Log/Append.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

Log::Event makeLogEvent(Log::Queue queue, Log::Level level, std::string message, Dictionary properties,
    std::string filename, std::int64_t line, std::string function)
{
    const bool useEmoji = Log::useEmoji();
    return Log::Event(std::string(useEmoji ? level.emoji() : level.code()), std::move(filename), line,
        std::move(function), std::string(useEmoji ? queue.emoji() : queue.code()), std::move(message),
        std::move(properties));
}

void readLogText(const void* text, LoggedValue& read) { readLogged(static_cast<const char*>(text), read); }

std::string logFilename(std::string_view path)
{
    while (path.ends_with('/'))
        path.remove_suffix(1);
    const auto component = path.substr(path.rfind('/') + 1);
    const auto dot = component.rfind('.');
    const bool hasExtension = dot != component.npos && dot != 0 && dot + 1 != component.size();
    return std::string(hasExtension ? component.substr(0, dot) : component);
}

} // namespace orrenby::inline ORRENBY_ABI::detail
