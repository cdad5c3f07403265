#include "Orrenby/Testing/LogCapture.hpp"

#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Utilities/Log/Settings.hpp"

namespace orrenby::inline ORRENBY_ABI::testing {

namespace {

/// Changes a setting without an entry about it.
void setQuietly(Log::Level level, bool useEmoji)
{
    Log::onEvent(nullptr);
    Log::onCriticalError(nullptr);
    if (Log::useEmoji() != useEmoji)
        Log::setUseEmoji(useEmoji);
    detail::logLevel.store(level);
}

} // namespace

struct LogCapture::Settings {
    Log::Level level = Log::level();
    bool useEmoji = Log::useEmoji();
    /// They stay valid: a handler that was installed once is kept.
    detail::InstalledHandler<Log::EventHandler>* eventHandler = detail::logEventHandler.load();
    detail::InstalledHandler<Log::CriticalErrorHandler>* criticalErrorHandler
        = detail::logCriticalErrorHandler.load();
};

LogCapture::LogCapture(LogCaptureOptions options)
    : m_previous(std::make_unique<Settings>())
{
    setQuietly(options.level, options.useEmoji);
    Log::onEvent(m_captured);
    Log::onCriticalError(m_captured);
}

LogCapture::~LogCapture()
{
    setQuietly(m_previous->level, m_previous->useEmoji);
    detail::logEventHandler.store(m_previous->eventHandler);
    detail::logCriticalErrorHandler.store(m_previous->criticalErrorHandler);
}

std::vector<std::string> LogCapture::lines() const
{
    std::vector<std::string> lines;
    for (const Entry& entry : entries()) {
        auto line = std::string(entry.level.description()) + ": " + entry.event.message();
        if (!entry.event.properties().empty())
            line += ' ' + entry.event.properties().description();
        lines.push_back(std::move(line));
    }
    return lines;
}

std::string LogCapture::description() const { return describe(lines()); }

} // namespace orrenby::testing
