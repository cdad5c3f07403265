#include "Orrenby/Platform/Objects/HashIndex.hpp"

#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

void HashIndex::insert(std::size_t hash, std::size_t position)
{
    if ((m_count + 1) * 4 > m_slots.size() * 3)
        grow();
    place({static_cast<std::uint32_t>(position + 1), mix(hash)});
    ++m_count;
}

void HashIndex::clear() noexcept
{
    m_slots.clear();
    m_count = 0;
}

void HashIndex::place(Slot slot)
{
    auto index = slot.hash & mask();
    while (m_slots[index].next != 0)
        index = (index + 1) & mask();
    m_slots[index] = slot;
}

void HashIndex::grow()
{
    const auto old = std::move(m_slots);
    m_slots.assign(old.empty() ? 16 : old.size() * 2, Slot{});
    for (const Slot& slot : old)
        if (slot.next != 0)
            place(slot);
}

} // namespace orrenby::inline ORRENBY_ABI::detail
