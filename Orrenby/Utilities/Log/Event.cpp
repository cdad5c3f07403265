#include "Orrenby/Utilities/Log/Event.hpp"

namespace orrenby::inline ORRENBY_ABI::Log {

std::string Event::description() const
{
    auto text = m_level + " " + m_filename + ":" + std::to_string(m_line) + " " + m_function + " " + m_queue
        + " " + m_message;
    if (!m_properties.empty())
        text += " " + m_properties.description();
    return text;
}

} // namespace orrenby::Log
