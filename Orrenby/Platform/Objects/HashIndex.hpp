#pragma once

/// @file
/// The hash table under the containers that keep an order.

#include "Orrenby/Platform/Export.hpp"
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Finds positions in a vector by hash. It holds no elements: the container that owns both keeps them in
/// step.
///
/// Open addressing over pairs of a position and half a hash, at most three quarters full. Not synchronised.
class HashIndex {
public:
    static constexpr std::size_t notFound = static_cast<std::size_t>(-1);

    /// The position that was inserted with this hash and for which `isMatch(position)` holds. O(1) on
    /// average.
    template <class IsMatch> std::size_t find(std::size_t hash, IsMatch isMatch) const
    {
        if (m_slots.empty())
            return notFound;
        const auto mixed = mix(hash);
        for (auto place = mixed & mask();; place = (place + 1) & mask()) {
            const Slot& slot = m_slots[place];
            if (slot.next == 0)
                return notFound;
            if (slot.hash == mixed && isMatch(slot.next - 1))
                return slot.next - 1;
        }
    }

    /// The position must not be in the index yet; positions fit in 32 bits.
    void insert(std::size_t hash, std::size_t position)
    {
        if ((m_count + 1) * 4 > m_slots.size() * 3)
            grow();
        place({static_cast<std::uint32_t>(position + 1), mix(hash)});
        ++m_count;
    }

    void clear() noexcept
    {
        m_slots.clear();
        m_count = 0;
    }

    bool isEmpty() const noexcept { return m_slots.empty(); }

private:
    struct Slot {
        std::uint32_t next = 0; ///< The position plus one; 0 marks a free slot.
        std::uint32_t hash = 0;
    };

    static std::uint32_t mix(std::size_t hash) noexcept
    {
        // std::hash of an integer is the integer itself: spread it before the low bits choose a slot.
        return static_cast<std::uint32_t>((hash * 0x9E3779B97F4A7C15U) >> 32U);
    }
    std::uint32_t mask() const noexcept { return static_cast<std::uint32_t>(m_slots.size() - 1); }

    void place(Slot slot)
    {
        auto index = slot.hash & mask();
        while (m_slots[index].next != 0)
            index = (index + 1) & mask();
        m_slots[index] = slot;
    }

    void grow()
    {
        const auto old = std::move(m_slots);
        m_slots.assign(old.empty() ? 16 : old.size() * 2, Slot{});
        for (const Slot& slot : old)
            if (slot.next != 0)
                place(slot);
    }

    std::vector<Slot> m_slots;
    std::size_t m_count = 0;
};

} // namespace orrenby::inline ORRENBY_ABI::detail
