#include "Orrenby/Utilities/Log/Event.hpp"

namespace orrenby::inline ORRENBY_ABI::Log {

// Not in the header: every place that may hold an event would grow by them.
Event::Event(const Event&) = default;

Event::Event(Event&&) noexcept = default;

Event& Event::operator=(const Event&) = default;

Event& Event::operator=(Event&&) noexcept = default;

Event::~Event() = default;

std::string Event::description() const
{
    auto text = m_level + " " + m_filename + ":" + std::to_string(m_line) + " " + m_function + " " + m_queue
        + " " + m_message;
    if (!m_properties.empty())
        text += " " + m_properties.description();
    return text;
}

} // namespace orrenby::Log
