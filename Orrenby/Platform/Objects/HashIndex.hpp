#pragma once

/// @file
/// The hash table under the containers that keep an order.

#include "Orrenby/Platform/Export.hpp"
#include <cstddef>
#include <cstdint>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Finds positions in a vector by hash. It holds no elements: the container that owns both keeps them in
/// step.
///
/// Open addressing over pairs of a position and half a hash, at most three quarters full. Not synchronised.
class ORRENBY_EXPORT HashIndex {
public:
    static constexpr std::size_t notFound = static_cast<std::size_t>(-1);

    /// The position that was inserted with this hash and for which `isMatch(position)` holds. O(1) on
    /// average.
    template <class IsMatch> std::size_t find(std::size_t hash, IsMatch isMatch) const
    {
        if (isEmpty())
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
    void insert(std::size_t hash, std::size_t position);
    void clear() noexcept;
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

    void place(Slot slot);
    void grow();

    std::vector<Slot> m_slots;
    std::size_t m_count = 0;
};

} // namespace orrenby::inline ORRENBY_ABI::detail
