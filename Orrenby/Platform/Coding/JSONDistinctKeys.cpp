#include "Orrenby/Platform/Coding/JSONDistinctKeys.hpp"

#include "Orrenby/Platform/Coding/JSONKeyEquality.hpp"
#include "Orrenby/Platform/Coding/JSONKeyHash.hpp"
#include <algorithm>
#include <bit>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

bool haveOneKey(const JSONTable& table, const JSONNode& first, const JSONNode& second)
{
    return isSameKey(table.key(first), table.key(second));
}

} // namespace

void JSONDistinctKeys::check(JSONTable& table, std::uint32_t object, std::size_t count, std::size_t depth)
{
    if (count < 2)
        return;
    if (m_known.size() <= depth)
        m_known.resize(depth + 1);
    auto& known = m_known[depth];
    for (const Known& candidate : known.objects)
        if (candidate.count == count && hasKeysOf(table, candidate.object, object))
            return;

    if (!isDistinct(table, object, count)) {
        rewrite(table, object, count);
        // What was known inside it may be gone.
        std::fill(m_known.begin() + static_cast<std::ptrdiff_t>(depth) + 1, m_known.end(), KnownObjects{});
        return;
    }
    known.objects[known.next] = {object, static_cast<std::uint32_t>(count)};
    known.next = (known.next + 1) % known.objects.size();
}

bool JSONDistinctKeys::hasKeysOf(const JSONTable& table, std::uint32_t known, std::uint32_t object) const
{
    const auto knownEnd = table.nodes[known].extent;
    const auto end = table.nodes[object].extent;
    auto left = known + 1;
    auto right = object + 1;
    for (; left < knownEnd && right < end; left = table.next(left), right = table.next(right))
        if (!haveOneKey(table, table.nodes[left], table.nodes[right]))
            return false;
    return left == knownEnd && right == end;
}

std::uint32_t& JSONDistinctKeys::slotOf(const JSONTable& table, const JSONNode& node)
{
    const auto mask = m_slots.size() - 1;
    auto place = static_cast<std::size_t>(jsonKeyHash(table.key(node))) & mask;
    while (m_slots[place] != 0 && !haveOneKey(table, table.nodes[m_slots[place]], node))
        place = (place + 1) & mask;
    return m_slots[place];
}

bool JSONDistinctKeys::isDistinct(const JSONTable& table, std::uint32_t object, std::size_t count)
{
    m_slots.assign(std::bit_ceil(count * 2), 0);
    const auto end = table.nodes[object].extent;
    for (auto node = object + 1; node < end; node = table.next(node)) {
        auto& slot = slotOf(table, table.nodes[node]);
        if (slot != 0)
            return false;
        slot = node;
    }
    return true;
}

void JSONDistinctKeys::rewrite(JSONTable& table, std::uint32_t object, std::size_t count)
{
    m_slots.assign(std::bit_ceil(count * 2), 0);
    std::vector<Member> members;
    const auto end = table.nodes[object].extent;
    for (auto node = object + 1; node < end; node = table.next(node)) {
        auto& slot = slotOf(table, table.nodes[node]);
        if (slot == 0) {
            slot = node;
            members.push_back({node, node});
        } else {
            const auto known = std::lower_bound(members.begin(), members.end(), slot,
                [](const Member& member, std::uint32_t first) { return member.first < first; });
            known->last = node;
        }
    }

    std::vector<JSONNode> kept;
    for (const Member& member : members) {
        const auto start = object + 1 + static_cast<std::uint32_t>(kept.size());
        for (auto node = member.last; node < table.next(member.last); ++node) {
            kept.push_back(table.nodes[node]);
            if (kept.back().holdsOthers())
                kept.back().extent += start - member.last;
        }
    }
    std::copy(kept.begin(), kept.end(), table.nodes.data() + object + 1);
    table.nodes.truncate(object + 1 + kept.size());
    table.nodes[object].extent = table.nodes.size();
}

} // namespace orrenby::inline ORRENBY_ABI::detail
