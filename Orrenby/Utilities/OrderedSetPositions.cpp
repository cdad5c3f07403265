#include "Orrenby/Utilities/OrderedSetPositions.hpp"

#include "Orrenby/Platform/Objects/FatalError.hpp"
#include <algorithm>
#include <bit>
#include <limits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

/// Up to here four places are spent on a position: one lookup in ten then looks at a second place, where of
/// two places for each it would be every second one. The table still fits into 64 KiB.
constexpr std::size_t smallCount = 2'048;

/// As many bits as a hash has are enough: beyond 2^32 places the first ones alone are homes.
std::uint64_t shiftOf(std::size_t places) noexcept
{
    return static_cast<std::uint64_t>(std::max(0, 32 - std::countr_zero(places)));
}

} // namespace

OrderedSetPositions::OrderedSetPositions(const OrderedSetPositions& other)
    : m_last(other.m_last)
    , m_shift(other.m_shift)
    , m_count(other.m_count)
    , m_room(other.m_room)
{
    if (!other.m_owned)
        return;
    m_owned = std::make_unique<Slot[]>(m_last + 1);
    std::copy_n(other.m_owned.get(), m_last + 1, m_owned.get());
    m_slots = m_owned.get();
}

void OrderedSetPositions::swap(OrderedSetPositions& other) noexcept
{
    std::swap(m_slots, other.m_slots);
    std::swap(m_last, other.m_last);
    std::swap(m_shift, other.m_shift);
    std::swap(m_count, other.m_count);
    std::swap(m_room, other.m_room);
    m_owned.swap(other.m_owned);
}

void OrderedSetPositions::shift(std::size_t first, std::int32_t step) noexcept
{
    if (!m_owned)
        return;
    const auto from = static_cast<std::uint32_t>(first + 1);
    const auto offset = static_cast<std::uint32_t>(step);
    for (std::size_t place = 0; place <= m_last; ++place) {
        Slot& slot = m_owned[place];
        slot.next += slot.next >= from ? offset : 0; // a free slot is 0, below any `from`
    }
}

void OrderedSetPositions::clear() noexcept
{
    if (m_owned)
        std::fill_n(m_owned.get(), m_last + 1, Slot{0, 0});
    m_count = 0;
}

void OrderedSetPositions::grow(std::size_t count)
{
    if (count > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()))
        fatalError("The ordered set has too many members", "Utilities/OrderedSet", 52);

    const std::size_t share = count <= smallCount ? 4 : 2;
    const auto places = std::bit_ceil(std::max<std::size_t>(count * share, 16));
    m_room = std::max(m_room, m_last + 1 == places ? places / share : 0); // fuller from now on
    if (m_room >= count)
        return;
    auto table = std::make_unique<Slot[]>(places);
    const auto last = places - 1;
    const auto shift = shiftOf(places);
    for (std::size_t old = 0; m_count != 0 && old <= m_last; ++old) {
        const Slot slot = m_slots[old];
        if (slot.next == 0)
            continue;
        auto place = static_cast<std::size_t>(slot.hash >> shift);
        while (table[place].next != 0)
            place = (place + 1) & last;
        table[place] = slot;
    }
    m_owned = std::move(table);
    m_slots = m_owned.get();
    m_last = last;
    m_shift = shift;
    m_room = places / share;
}

void OrderedSetPositions::close(std::size_t place) noexcept
{
    for (auto next = (place + 1) & m_last; m_owned[next].next != 0; next = (next + 1) & m_last) {
        const auto origin = home(m_owned[next].hash);
        // What already stands at or behind its home, seen from the gap, must not move in front of it.
        if (((next - origin) & m_last) >= ((next - place) & m_last)) {
            m_owned[place] = m_owned[next];
            place = next;
        }
    }
    m_owned[place] = {0, 0};
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
