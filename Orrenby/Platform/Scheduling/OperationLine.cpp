#include "Orrenby/Platform/Scheduling/OperationLine.hpp"

#include "Orrenby/Platform/Scheduling/Operation.hpp"
#include "Orrenby/Platform/Scheduling/OperationPlace.hpp"
#include <algorithm>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

/// A burst should not hold its memory for ever.
constexpr std::size_t keptSize = 4096;

} // namespace

void OperationLine::insert(Operation& operation)
{
    auto& place = operation.m_place;
    if (m_count == 0 || (*at(m_end - 1)).m_place.key < place.key) {
        append(operation);
        place.line = OperationPlace::Line::InOrder;
    } else {
        m_late.emplace(place.key, &operation);
        place.line = OperationPlace::Line::Late;
    }
}

void OperationLine::append(Operation& operation)
{
    if (m_end - m_begin == m_ring.size()) {
        auto ring = std::vector<Operation*>(std::max<std::size_t>(16, 2 * m_ring.size()));
        for (auto position = m_begin; position != m_end; ++position)
            ring[position & (ring.size() - 1)] = at(position);
        m_ring.swap(ring);
    }
    operation.m_place.position = m_end;
    at(m_end++) = &operation;
    ++m_count;
}

Operation& OperationLine::takeFirst() noexcept
{
    const auto isLate = !m_late.empty()
        && (m_count == 0 || m_late.begin()->first < (*at(m_begin)).m_place.key);
    auto& first = isLate ? *m_late.begin()->second : *at(m_begin);
    remove(first);
    return first;
}

void OperationLine::remove(Operation& operation) noexcept
{
    auto& place = operation.m_place;
    if (place.line == OperationPlace::Line::Late) {
        m_late.erase({place.key, &operation});
    } else {
        at(place.position) = nullptr;
        --m_count;
        trim();
    }
    place.line = OperationPlace::Line::None;
}

void OperationLine::trim() noexcept
{
    while (m_begin != m_end && at(m_begin) == nullptr)
        ++m_begin;
    while (m_begin != m_end && at(m_end - 1) == nullptr)
        --m_end;
    if (m_count == 0 && m_ring.size() > keptSize)
        std::vector<Operation*>().swap(m_ring);
}

} // namespace orrenby::inline ORRENBY_ABI::detail
