#include "Orrenby/Platform/Coding/JSONDistinctKeys.hpp"

#include "Orrenby/Platform/Coding/JSONKeyHash.hpp"
#include <algorithm>
#include <bit>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

bool haveOneKey(const JSONTable& table, const JSONNode& first, const JSONNode& second)
{
    return table.key(first) == table.key(second);
}

} // namespace

void JSONDistinctKeys::check(JSONTable& table, std::uint32_t object, std::size_t count, std::size_t depth)
{
    if (count < 2)
        return;
    if (m_known.size() <= depth)
        m_known.resize(depth + 1);
    // No object that has a neighbour is the root, so 0 can stand for none; the root itself comes last.
    if (m_known[depth] == 0 || !hasKeysOf(table, m_known[depth] - 1, object)) {
        if (!isDistinct(table, object, count)) {
            rewrite(table, object, count);
            // What was known inside it may be gone.
            std::fill(m_known.begin() + static_cast<std::ptrdiff_t>(depth), m_known.end(), 0);
        }
        m_known[depth] = object + 1;
    }
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
