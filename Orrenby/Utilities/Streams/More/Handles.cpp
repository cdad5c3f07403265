#include "Orrenby/Utilities/Streams/More/Handles.hpp"

#include <mutex>

namespace orrenby::inline ORRENBY_ABI::detail {

Handles::Handles()
    : m_content(std::make_shared<Content>())
{}

void Handles::add(Streams::AnyCancellable handle) const
{
    auto comesLate = false;
    {
        const auto lock = std::lock_guard(m_content->mutex);
        comesLate = m_content->isCancelled;
        m_content->handles.push_back(handle); // also a late one: somebody may have to wait for it
    }
    if (comesLate)
        handle.cancel();
}

void Handles::replace(Streams::AnyCancellable handle) const
{
    auto old = List{handle};
    auto comesLate = false;
    {
        const auto lock = std::lock_guard(m_content->mutex);
        comesLate = m_content->isCancelled;
        old.swap(m_content->handles);
    }
    for (const auto& replaced : old)
        replaced.cancel();
    if (comesLate)
        handle.cancel();
}

Handles::List Handles::cancelled() const noexcept
{
    const auto lock = std::lock_guard(m_content->mutex);
    m_content->isCancelled = true;
    return m_content->handles;
}

void Handles::cancel() const noexcept
{
    for (const auto& handle : cancelled())
        handle.cancel();
}

void Handles::cancelAndWait() const noexcept
{
    for (const auto& handle : cancelled())
        handle.cancelAndWait();
}

bool Handles::isCancelled() const noexcept
{
    const auto lock = std::lock_guard(m_content->mutex);
    return m_content->isCancelled;
}

} // namespace orrenby::detail
