#include "Orrenby/Platform/Drawing/IndexPath.hpp"

#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"
#include <algorithm>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

IndexPath IndexPath::fromIndexes(std::vector<Index> indexes)
{
    IndexPath path;
    path.m_indexes = std::move(indexes);
    return path;
}

IndexPath IndexPath::zero() { return IndexPath({.item = 0, .section = 0}); }

IndexPath IndexPath::one() { return IndexPath({.item = 1, .section = 0}); }

void IndexPath::requireItem(int line) const
{
    if (count() != 2)
        fatalError("An item has an index path of a section and an item", "Platform/IndexPath", line);
}

void IndexPath::requireLevel(std::size_t level, int line) const
{
    if (level >= count())
        fatalError("The index path has no such level", "Platform/IndexPath", line);
}

IndexPath::Index IndexPath::item() const
{
    requireItem(28);
    return m_indexes[1];
}

IndexPath::Index IndexPath::section() const
{
    requireItem(34);
    return m_indexes[0];
}

void IndexPath::setItem(Index item)
{
    requireItem(40);
    m_indexes[1] = item;
}

void IndexPath::setSection(Index section)
{
    requireItem(46);
    m_indexes[0] = section;
}

IndexPath::Index IndexPath::operator[](std::size_t level) const
{
    requireLevel(level, 52);
    return m_indexes[level];
}

void IndexPath::set(std::size_t level, Index index)
{
    requireLevel(level, 58);
    m_indexes[level] = index;
}

IndexPath IndexPath::appending(Index index) const
{
    auto result = *this;
    result.m_indexes.push_back(index);
    return result;
}

IndexPath IndexPath::appending(const IndexPath& further) const
{
    auto result = *this;
    result.m_indexes.insert(result.m_indexes.end(), further.begin(), further.end());
    return result;
}

IndexPath IndexPath::droppingLast() const { return empty() ? IndexPath() : prefix(count() - 1); }

IndexPath IndexPath::prefix(std::size_t count) const
{
    return fromIndexes({begin(), begin() + std::min(count, size())});
}

bool IndexPath::startsWith(const IndexPath& beginning) const noexcept
{
    return beginning.count() <= count() && std::equal(beginning.begin(), beginning.end(), begin());
}

std::string IndexPath::description() const { return describe(m_indexes); }

std::size_t IndexPath::hash() const noexcept
{
    std::size_t result = count();
    for (const Index index : m_indexes)
        result = result * 0x9E3779B97F4A7C15U + std::hash<Index>{}(index);
    return result;
}

std::strong_ordering operator<=>(const IndexPath& first, const IndexPath& second)
{
    return first.m_indexes <=> second.m_indexes;
}

} // namespace orrenby
