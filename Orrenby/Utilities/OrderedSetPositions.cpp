#include "Orrenby/Utilities/OrderedSetPositions.hpp"

#include "Orrenby/Platform/Objects/FatalError.hpp"
#include <algorithm>
#include <bit>
#include <limits>

namespace orrenby::inline ORRENBY_ABI::detail {

void OrderedSetPositions::shift(std::size_t first, std::int32_t step) noexcept
{
    const auto from = static_cast<std::uint32_t>(first + 1);
    const auto offset = static_cast<std::uint32_t>(step);
    for (Slot& slot : m_slots)
        slot.next += slot.next >= from ? offset : 0; // a free slot is 0, below any `from`
}

void OrderedSetPositions::clear() noexcept
{
    std::fill(m_slots.begin(), m_slots.end(), Slot{});
    m_count = 0;
}

void OrderedSetPositions::grow(std::size_t count)
{
    if (count > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()))
        fatalError("The ordered set has too many members", "Utilities/OrderedSet", 52);

    std::vector<Slot> slots(std::bit_ceil(std::max<std::size_t>(count * 2, 16)));
    const auto last = slots.size() - 1;
    // As many bits as a hash has are enough: beyond 2^32 places the first ones alone are homes.
    const auto shift = static_cast<std::uint32_t>(std::max(0, 32 - std::countr_zero(slots.size())));
    for (const Slot& slot : m_slots) {
        if (slot.next == 0)
            continue;
        auto place = static_cast<std::size_t>(slot.hash >> shift);
        while (slots[place].next != 0)
            place = (place + 1) & last;
        slots[place] = slot;
    }
    m_slots.swap(slots);
    m_shift = shift;
}

void OrderedSetPositions::close(std::size_t place) noexcept
{
    const auto last = mask();
    for (auto next = (place + 1) & last; m_slots[next].next != 0; next = (next + 1) & last) {
        const auto origin = home(m_slots[next].hash);
        // What already stands at or behind its home, seen from the gap, must not move in front of it.
        if (((next - origin) & last) >= ((next - place) & last)) {
            m_slots[place] = m_slots[next];
            place = next;
        }
    }
    m_slots[place] = {};
    --m_count;
}

void sortPositions(std::vector<std::uint32_t>& positions, ComparesPositions compare, const void* context)
{
    std::stable_sort(positions.begin(), positions.end(),
        [=](std::uint32_t first, std::uint32_t second) { return compare(context, first, second); });
}

std::vector<bool> longestAscent(const std::vector<std::int64_t>& values)
{
    constexpr auto none = std::numeric_limits<std::size_t>::max();
    // ends[k] is the place of the smallest value in which a selection of k + 1 members can end.
    std::vector<std::size_t> ends;
    std::vector<std::size_t> previous(values.size(), none);
    for (std::size_t place = 0; place < values.size(); ++place) {
        const auto end = std::lower_bound(ends.begin(), ends.end(), values[place],
            [&](std::size_t candidate, std::int64_t value) { return values[candidate] < value; });
        if (end != ends.begin())
            previous[place] = *(end - 1);
        if (end == ends.end())
            ends.push_back(place);
        else
            *end = place;
    }

    std::vector<bool> isMember(values.size(), false);
    for (auto place = ends.empty() ? none : ends.back(); place != none; place = previous[place])
        isMember[place] = true;
    return isMember;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
