#pragma once

/// @file
/// The hash table under ordered sets.

#include "Orrenby/Platform/Export.hpp"
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Finds positions in a vector by hash. It holds no elements: the set that owns both keeps them in step.
///
/// Open addressing, at most a quarter full while the whole fits into the nearest cache and half full beyond;
/// an erased place is closed by moving back what follows it, so that lookups never get slower with age.
///
/// A hash has 32 bits. In a table of 2^b places the highest b of them say where a position belongs, and its
/// slot holds the others beside the position itself, which needs no more than b bits. So a slot is as small
/// as one number, and a lookup compares members only where both agree. The hashes in full stand apart, by
/// position; only growing and erasing read them. Not synchronised.
class ORRENBY_EXPORT OrderedSetPositions {
public:
    static constexpr std::size_t notFound = static_cast<std::size_t>(-1);

    OrderedSetPositions() = default;
    OrderedSetPositions(const OrderedSetPositions& other);
    OrderedSetPositions(OrderedSetPositions&& other) noexcept { swap(other); }
    OrderedSetPositions& operator=(OrderedSetPositions other) noexcept
    {
        swap(other);
        return *this;
    }
    ~OrderedSetPositions() = default;

    /// Half a hash, spread: std::hash of an integer is the integer itself. All bits of it reach the highest
    /// bits, which choose the place.
    static std::uint32_t mix(std::size_t hash) noexcept
    {
        return static_cast<std::uint32_t>((hash * 0x9E3779B97F4A7C15U) >> 32U);
    }

    /// How many positions are held.
    std::size_t count() const noexcept { return m_count; }

    /// The position that was inserted with this hash and for which `isMatch(position)` holds. O(1) on
    /// average.
    template <class IsMatch> std::size_t find(std::uint32_t mixed, IsMatch isMatch) const
    {
        const auto place = placeOf(mixed, isMatch);
        return m_slots[place] != 0 ? positionAt(place) : notFound;
    }

    /// The same; where nothing is found, `position` is inserted. Room for it must have been made.
    template <class IsMatch>
    std::size_t findOrInsert(std::uint32_t mixed, std::size_t position, IsMatch isMatch)
    {
        const auto place = placeOf(mixed, isMatch);
        if (m_slots[place] != 0)
            return positionAt(place);
        put(place, mixed, position);
        ++m_count;
        return notFound;
    }

    /// Maps what matches to `position`, or inserts it. Room for it must have been made.
    template <class IsMatch> void assign(std::uint32_t mixed, std::size_t position, IsMatch isMatch)
    {
        const auto place = placeOf(mixed, isMatch);
        if (m_slots[place] == 0)
            ++m_count;
        put(place, mixed, position);
    }

    /// Erases what matches, if there is such a position.
    template <class IsMatch> void erase(std::uint32_t mixed, IsMatch isMatch)
    {
        if (const auto place = placeOf(mixed, isMatch); m_slots[place] != 0)
            close(place);
    }

    /// Makes room for this many positions. More than 2^31 − 1 are a programming error and end the process.
    void reserve(std::size_t count)
    {
        if (count > m_room)
            grow(count);
    }

    /// Adds `step`, which is 1 or −1, to all positions from `first` on. Linear.
    void shift(std::size_t first, std::int32_t step) noexcept;

    void clear() noexcept;

private:
    /// What remains of the hash, above the position plus one; 0 marks a free slot.
    using Slot = std::uint32_t;
    /// Stands for the table before there is one, so that a lookup need not ask. Never written to.
    static constexpr Slot noSlot = 0;

    /// The hash as it is looked for: above 32 bits the place where it belongs, below what its slot holds of
    /// it.
    std::uint64_t split(std::uint32_t mixed) const noexcept { return std::uint64_t{mixed} << m_bits; }

    /// Where what matches stands, or the free place where it would.
    template <class IsMatch> std::size_t placeOf(std::uint32_t mixed, IsMatch isMatch) const
    {
        const Slot* const slots = m_slots;
        const auto last = m_last;
        const auto wanted = split(mixed);
        for (auto place = static_cast<std::size_t>(wanted >> 32U);; place = (place + 1) & last) {
            const Slot slot = slots[place];
            const auto next = slot ^ static_cast<Slot>(wanted); // with the same rest of the hash, it is gone
            if (slot == 0 || (next <= last && isMatch(std::size_t{next} - 1)))
                return place;
        }
    }

    std::size_t positionAt(std::size_t place) const noexcept { return (m_slots[place] & m_last) - 1; }

    void put(std::size_t place, std::uint32_t mixed, std::size_t position) noexcept
    {
        m_owned[place] = static_cast<Slot>(split(mixed)) | static_cast<Slot>(position + 1);
        hashes()[position] = mixed;
    }

    /// Behind the slots: the hash of each position, half as many as places.
    std::uint32_t* hashes() const noexcept { return m_owned.get() + m_last + 1; }

    void swap(OrderedSetPositions& other) noexcept;
    void grow(std::size_t count);
    void close(std::size_t place) noexcept;

    const Slot* m_slots = &noSlot;
    std::size_t m_last = 0;   ///< The last place; one less than a power of two.
    std::uint32_t m_bits = 0; ///< Those of a place.
    std::size_t m_count = 0;
    std::size_t m_room = 0; ///< How many positions the table may hold.
    std::unique_ptr<std::uint32_t[]> m_owned;
};

/// Hashes text: sixteen bytes for each multiplication, where `std::hash` takes eight. Not the same from one
/// version of the library to the next.
inline std::size_t hashText(std::string_view text) noexcept
{
    constexpr std::uint64_t first = 0xA24BAED4963EE407U;
    constexpr std::uint64_t second = 0x9FB21C651E98DF25U;
    constexpr std::uint64_t third = 0xD6E8FEB86659FD93U;
    constexpr std::uint64_t fourth = 0xC2B2AE3D27D4EB4FU;
    const auto load = [](const char* bytes, std::size_t count) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes, count);
        return word;
    };
    const auto fold = [](std::uint64_t left, std::uint64_t right) {
        __extension__ using Wide = unsigned __int128;
        const auto product = static_cast<Wide>(left) * right;
        return static_cast<std::uint64_t>(product >> 64U) ^ static_cast<std::uint64_t>(product);
    };

    const char* bytes = text.data();
    auto left = text.size();
    std::uint64_t state = left * first;
    for (; left > 32; bytes += 16, left -= 16)
        state = fold(load(bytes, 8) ^ first ^ state, load(bytes + 8, 8) ^ second);
    if (left > 16) { // two halves that overlap; neither multiplication waits for the other
        const char* const last = bytes + left - 16;
        return fold(load(bytes, 8) ^ first ^ state, load(bytes + 8, 8) ^ second)
            ^ fold(load(last, 8) ^ third, load(last + 8, 8) ^ fourth);
    }
    if (left >= 8) // the two words overlap
        return fold(load(bytes, 8) ^ first ^ state, load(bytes + left - 8, 8) ^ second);
    if (left >= 4)
        return fold(load(bytes, 4) ^ first ^ state, load(bytes + left - 4, 4) ^ second);
    std::uint64_t word = 0;
    for (std::size_t place = 0; place < left; ++place)
        word = (word << 8U) | static_cast<unsigned char>(bytes[place]);
    return fold(word ^ first ^ state, second);
}

/// Sorts positions by a comparison of what stands there; equal ones keep their order. What the comparison
/// throws passes through.
using ComparesPositions = bool (*)(const void* context, std::uint32_t first, std::uint32_t second);
ORRENBY_EXPORT void sortPositions(
    std::vector<std::uint32_t>& positions, ComparesPositions compare, const void* context);

/// Marks the members of a longest strictly ascending selection of the values, which are distinct. n log n.
ORRENBY_EXPORT std::vector<bool> longestAscent(const std::vector<std::int64_t>& values);

} // namespace orrenby::inline ORRENBY_ABI::detail
