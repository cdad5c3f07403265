#include "Orrenby/Platform/Observing/Notification.hpp"

namespace orrenby::inline ORRENBY_ABI {

std::string Notification::description() const
{
    auto text = m_name.rawValue();
    if (!m_userInfo.empty())
        text += ' ' + m_userInfo.description();
    return text;
}

} // namespace orrenby
