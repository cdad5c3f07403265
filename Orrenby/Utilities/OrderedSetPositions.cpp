#include "Orrenby/Utilities/OrderedSetPositions.hpp"

#include "Orrenby/Platform/Objects/FatalError.hpp"
#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

/// Up to here four places are spent on a position: one lookup in ten then looks at a second place, where of
/// two places for each it would be every second one. The table still fits into 64 KiB.
constexpr std::size_t smallCount = 2'048;

/// Slots, and a hash for each position: no table is more than half full.
std::size_t wordsOf(std::size_t places) noexcept { return places + places / 2; }

} // namespace

OrderedSetPositions::OrderedSetPositions(const OrderedSetPositions& other)
    : m_last(other.m_last)
    , m_bits(other.m_bits)
    , m_count(other.m_count)
    , m_room(other.m_room)
{
    if (!other.m_owned)
        return;
    const auto words = wordsOf(m_last + 1);
    m_owned = std::make_unique_for_overwrite<std::uint32_t[]>(words);
    std::memcpy(m_owned.get(), other.m_owned.get(), words * sizeof(std::uint32_t));
    m_slots = m_owned.get();
}

void OrderedSetPositions::swap(OrderedSetPositions& other) noexcept
{
    std::swap(m_slots, other.m_slots);
    std::swap(m_last, other.m_last);
    std::swap(m_bits, other.m_bits);
    std::swap(m_count, other.m_count);
    std::swap(m_room, other.m_room);
    m_owned.swap(other.m_owned);
}

void OrderedSetPositions::shift(std::size_t first, std::int32_t step) noexcept
{
    if (!m_owned)
        return;
    const auto offset = static_cast<Slot>(step);
    for (std::size_t place = 0; place <= m_last; ++place) {
        Slot& slot = m_owned[place];
        slot += (slot & m_last) > first ? offset : 0; // a free slot is 0
    }
    const auto behind = (m_last + 1) / 2 - std::max(first, first + static_cast<std::size_t>(step));
    std::memmove(hashes() + first + step, hashes() + first, behind * sizeof(std::uint32_t));
}

void OrderedSetPositions::clear() noexcept
{
    if (m_owned)
        std::fill_n(m_owned.get(), m_last + 1, Slot{0});
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

    OrderedSetPositions grown;
    grown.m_owned = std::make_unique_for_overwrite<std::uint32_t[]>(wordsOf(places));
    grown.m_slots = grown.m_owned.get();
    grown.m_last = places - 1;
    grown.m_bits = static_cast<std::uint32_t>(std::countr_zero(places));
    grown.m_room = places / share;
    grown.clear();
    for (std::size_t place = 0; m_count != 0 && place <= m_last; ++place)
        if (m_slots[place] != 0) {
            const auto position = positionAt(place);
            grown.findOrInsert(hashes()[position], position, [](std::size_t) { return false; });
        }
    swap(grown);
}

void OrderedSetPositions::close(std::size_t place) noexcept
{
    for (auto next = (place + 1) & m_last; m_owned[next] != 0; next = (next + 1) & m_last) {
        const auto home = static_cast<std::size_t>(split(hashes()[positionAt(next)]) >> 32U);
        // What already stands at or behind its home, seen from the gap, must not move in front of it.
        if (((next - home) & m_last) >= ((next - place) & m_last)) {
            m_owned[place] = m_owned[next];
            place = next;
        }
    }
    m_owned[place] = 0;
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
