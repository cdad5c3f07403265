#include "Orrenby/Platform/Objects/DistinctList.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

DistinctList::DistinctList(const Any* first, const Any* last)
{
    for (const Any* object = first; object != last; ++object)
        insert(*object);
}

std::optional<std::size_t> DistinctList::indexOf(const Any& value) const
{
    const auto place = m_index.find(
        value.hash(), [&](std::size_t candidate) { return m_objects[candidate] == value; });
    return place != HashIndex::notFound ? std::optional(place) : std::nullopt;
}

bool DistinctList::insert(Any value)
{
    if (contains(value))
        return false;
    m_objects.push_back(std::move(value));
    m_index.insert(m_objects.back().hash(), m_objects.size() - 1);
    return true;
}

bool DistinctList::erase(const Any& value)
{
    const auto place = indexOf(value);
    if (!place)
        return false;
    m_objects.erase(m_objects.begin() + static_cast<std::ptrdiff_t>(*place));
    m_index.clear();
    for (std::size_t index = 0; index < m_objects.size(); ++index)
        m_index.insert(m_objects[index].hash(), index);
    return true;
}

void DistinctList::clear() noexcept
{
    m_objects.clear();
    m_index.clear();
}

bool DistinctList::hasSameMembers(const DistinctList& other) const
{
    if (size() != other.size())
        return false;
    for (const Any& object : m_objects)
        if (!other.contains(object))
            return false;
    return true;
}

std::size_t DistinctList::unorderedHash() const
{
    std::size_t result = size();
    for (const Any& object : m_objects)
        result += object.hash();
    return result;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
