#include "Orrenby/Platform/Scheduling/DescriptorWatch.hpp"

#include "Orrenby/Platform/Scheduling/RunLoopCore.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

DescriptorWatch::DescriptorWatch() noexcept = default;
DescriptorWatch::DescriptorWatch(DescriptorWatch&& other) noexcept = default;

DescriptorWatch::DescriptorWatch(
    std::weak_ptr<detail::RunLoopCore> loop, std::shared_ptr<detail::DescriptorEntry> entry) noexcept
    : m_loop(std::move(loop))
    , m_entry(std::move(entry))
{}

DescriptorWatch& DescriptorWatch::operator=(DescriptorWatch&& other) noexcept
{
    // The old one ends last: its callback may own this watch.
    const auto old = DescriptorWatch(std::exchange(m_loop, {}), std::exchange(m_entry, nullptr));
    m_loop = std::exchange(other.m_loop, {});
    m_entry = std::exchange(other.m_entry, nullptr);
    return *this;
}

DescriptorWatch::~DescriptorWatch()
{
    const auto loop = m_loop.lock();
    if (m_entry && loop)
        loop->unwatch(*m_entry);
}

bool DescriptorWatch::isActive() const noexcept
{
    const auto loop = m_loop.lock();
    return m_entry && loop && loop->isActive(*m_entry);
}

} // namespace orrenby
