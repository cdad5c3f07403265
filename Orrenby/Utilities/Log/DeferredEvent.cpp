#include "Orrenby/Utilities/Log/DeferredEvent.hpp"

#include "Orrenby/Utilities/Log/Append.hpp"
#include <new>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace {

/// For an item that brings no error of its own.
NSError errorOf(const Log::Event& event, bool isStaticText)
{
    const auto domain = isStaticText ? event.filename() + " " + event.message() : event.filename();
    const auto code = event.function().find('(') != std::string::npos ? 0 : event.line();
    return NSError(domain, code, {{std::string(NSLocalizedDescriptionKey), event.message()}});
}

} // namespace

namespace Log {

DeferredEvent& DeferredEvent::operator=(const DeferredEvent& other)
{
    auto event = other();
    if (m_state.hasEvent)
        m_event = std::move(event);
    else
        ::new (static_cast<void*>(&m_event)) Event(std::move(event));
    m_state = other.m_state;
    return *this;
}

void DeferredEvent::makeFrom(detail::LoggedValue& read) const
{
    m_operations->readItem(m_arguments, read);
    auto properties = m_operations->makeProperties != nullptr ? m_operations->makeProperties(m_arguments)
                                                              : Dictionary{};
    const auto site = m_state.isSpelledOut ? CallSite(m_file, m_state.line, m_function)
                                           : CallSite::current(m_file, m_state.line, m_function);
    ::new (static_cast<void*>(&m_event))
        Event(detail::makeLogEvent(Queue::current(), level(), std::move(read.message), std::move(properties),
            detail::logFilename(site.file()), site.line(), std::string(site.function())));
    m_state.hasEvent = true;
}

void DeferredEvent::make() const
{
    auto read = detail::LoggedValue{.wantsMessage = true};
    makeFrom(read);
}

NSError DeferredEvent::makeWithError() const
{
    auto read = detail::LoggedValue{.wantsMessage = true, .wantsError = true};
    makeFrom(read);
    return read.error ? *std::move(read.error) : errorOf(m_event, read.isStaticText);
}

} // namespace Log

} // namespace orrenby
