#include "Orrenby/Utilities/Log/DeferredEvent.hpp"

#include "Orrenby/Utilities/Log/Append.hpp"

namespace orrenby::inline ORRENBY_ABI {

namespace {

Log::Event eventOf(Log::Level level, const detail::LogSource& source, std::string message)
{
    auto properties = source.makeProperties != nullptr ? source.makeProperties(source.properties)
                                                       : Dictionary{};
    return detail::makeLogEvent(Log::Queue::current(), level, std::move(message), std::move(properties),
        detail::logFilename(source.site.file()), source.site.line(), std::string(source.site.function()));
}

/// For an item that brings no error of its own.
NSError errorOf(const Log::Event& event, bool isStaticText)
{
    const auto domain = isStaticText ? event.filename() + " " + event.message() : event.filename();
    const auto code = event.function().find('(') != std::string::npos ? 0 : event.line();
    return NSError(domain, code, {{std::string(NSLocalizedDescriptionKey), event.message()}});
}

} // namespace

namespace Log {

void DeferredEvent::make() const
{
    auto read = detail::LoggedValue{.wantsMessage = true};
    m_source->readItem(m_source->item, read);
    m_event.emplace(eventOf(m_level, *m_source, std::move(read.message)));
}

NSError DeferredEvent::makeWithError() const
{
    auto read = detail::LoggedValue{.wantsMessage = true, .wantsError = true};
    m_source->readItem(m_source->item, read);
    m_event.emplace(eventOf(m_level, *m_source, std::move(read.message)));
    return read.error ? *std::move(read.error) : errorOf(*m_event, read.isStaticText);
}

} // namespace Log

} // namespace orrenby
