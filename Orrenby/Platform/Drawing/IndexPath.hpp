#pragma once

/// @file
/// Places in nested lists.

#include "Orrenby/Platform/Export.hpp"
#include <compare>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// A place in a list that is cut into sections.
struct IndexPathItem {
    std::int64_t item = 0;    ///< Within the section, counted from 0.
    std::int64_t section = 0; ///< Counted from 0.
};

/// The way to one element through lists in lists: an index for each level, the outermost first.
///
/// In a list with sections, which is what most are for, it has two: the section, then the item in it. It
/// does not know the lists: any integer is an index.
///
/// @snippet Tests/Platform/Drawing/IndexPathTests.cpp Naming places
///
/// A plain value, ordered as a table of contents is: index by index, and a path before all that go on from
/// it. Not synchronised.
class ORRENBY_EXPORT IndexPath {
public:
    /// One step of the way; negative ones are kept as they are.
    using Index = std::int64_t;

    using value_type = Index;
    using const_iterator = const Index*;
    using iterator = const_iterator;

    /// Without indexes: the whole.
    IndexPath() = default;
    /// `IndexPath({.item = 2, .section = 0})`
    IndexPath(IndexPathItem place)
        : m_indexes{place.section, place.item}
    {}
    /// As deep as the list is long: `IndexPath::fromIndexes({0, 2, 5})`.
    static IndexPath fromIndexes(std::vector<Index> indexes);

    /// Item 0 of section 0.
    static IndexPath zero();
    /// Item 1 of section 0.
    static IndexPath one();

    /// The second and the first index. A path that has not exactly two is a programming error and ends the
    /// process.
    Index item() const;
    Index section() const;
    void setItem(Index item);
    void setSection(Index section);

    /// Levels.
    std::size_t count() const noexcept { return m_indexes.size(); }
    std::size_t size() const noexcept { return m_indexes.size(); }
    bool empty() const noexcept { return m_indexes.empty(); }

    /// The index of a level below `count()`; any other is a programming error and ends the process.
    Index operator[](std::size_t level) const;
    void set(std::size_t level, Index index);

    const_iterator begin() const noexcept { return m_indexes.data(); }
    const_iterator end() const noexcept { return m_indexes.data() + m_indexes.size(); }

    /// One level or several further in.
    IndexPath appending(Index index) const;
    IndexPath appending(const IndexPath& further) const;
    /// The place that this one lies in; the whole lies in itself.
    IndexPath droppingLast() const;
    /// At most so many levels.
    IndexPath prefix(std::size_t count) const;
    /// Whether the path is this one's beginning, or all of it.
    bool startsWith(const IndexPath& beginning) const noexcept;

    /// `[0, 2]`
    std::string description() const;
    std::string debugDescription() const { return "IndexPath" + description(); }
    std::size_t hash() const noexcept;

    friend bool operator==(const IndexPath&, const IndexPath&) = default;

    /// As in a table of contents: index by index, and a path before all that go on from it.
    ORRENBY_EXPORT friend std::strong_ordering operator<=>(const IndexPath& first, const IndexPath& second);

private:
    void requireItem(int line) const;
    void requireLevel(std::size_t level, int line) const;

    std::vector<Index> m_indexes;
};

} // namespace orrenby

template <> struct std::hash<orrenby::IndexPath> {
    std::size_t operator()(const orrenby::IndexPath& path) const noexcept { return path.hash(); }
};
