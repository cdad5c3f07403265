#pragma once

/// @file
/// What an ordered set holds: its members in order, and where to find each of them.

// Not in the umbrella header: it serves ordered sets alone, which include it.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Utilities/OrderedSetMember.hpp"
#include "Orrenby/Utilities/OrderedSetPositions.hpp"
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Walks over the values that an array of pointers points to.
template <class Element> struct Pointed {
    using iterator_category = std::forward_iterator_tag;
    using value_type = Element;
    using difference_type = std::ptrdiff_t;
    using pointer = const Element*;
    using reference = const Element&;

    const Element* const* place;

    reference operator*() const { return **place; }
    Pointed& operator++() { return ++place, *this; }
    Pointed operator++(int) { return {place++}; }
    friend bool operator==(const Pointed&, const Pointed&) = default;
};

/// The members of an ordered set and the table of their positions, kept in step. It checks no position and
/// says nothing of ranges: that is what the set is for. Positions count from 0. Not synchronised.
template <OrderedSetMember Element> class OrderedSetMembers {
    using Positions = OrderedSetPositions;

public:
    using Key = OrderedSetKey<Element>;

    static constexpr std::size_t notFound = Positions::notFound;

    /// Whether members can be shifted in their array. Where a move may throw halfway, a new set is made.
    static constexpr bool isShiftSafe
        = std::is_nothrow_move_constructible_v<Element> && std::is_nothrow_move_assignable_v<Element>;

    const std::vector<Element>& array() const noexcept { return m_array; }

    /// How many can be looked up.
    std::size_t count() const noexcept { return m_positions.count(); }

    /// No member stands twice: each entry has a position of its own, so as many entries as members leave no
    /// room for a duplicate.
    bool isWhole() const noexcept { return m_positions.count() == m_array.size(); }

    std::size_t find(Key element) const { return m_positions.find(hash(element), isAt(element)); }

    // Making them of a sequence. What is thrown then leaves no set at all.

    /// Takes the array over, and drops later duplicates from it.
    void take(std::vector<Element>&& array)
    {
        m_positions.reserve(array.size());
        m_array = std::move(array);
        std::size_t kept = 0;
        for (std::size_t next = 0; next < m_array.size(); ++next) {
            Key element = m_array[next];
            if (m_positions.findOrInsert(hash(element), kept, isAt(element)) != notFound)
                continue;
            if (kept != next)
                m_array[kept] = std::move(m_array[next]);
            ++kept;
        }
        m_array.erase(at(kept), m_array.end());
    }

    /// Finds out which members stay before it copies the first: those allocate in a row then, and no
    /// duplicate is copied.
    template <class Sequence> void copy(const Sequence& sequence)
    {
        const auto kept = std::make_unique_for_overwrite<const Element*[]>(std::size(sequence));
        m_positions.reserve(std::size(sequence));
        std::size_t count = 0;
        for (const Element& element : sequence) {
            const auto isMatch = [&](std::size_t position) { return *kept[position] == element; };
            kept[count] = std::addressof(element);
            if (m_positions.findOrInsert(hash(element), count, isMatch) == notFound)
                ++count;
        }
        m_array = std::vector<Element>(Pointed<Element>{kept.get()}, Pointed<Element>{kept.get() + count});
    }

    /// Walks any sequence, once.
    template <class Sequence> void collect(Sequence& sequence)
    {
        if constexpr (requires { std::size(sequence); })
            reserve(std::size(sequence));
        for (auto&& element : sequence) {
            if constexpr (std::is_same_v<std::remove_cvref_t<decltype(element)>, Element>) {
                // Looked for before it is copied.
                if constexpr (!requires { std::size(sequence); })
                    m_positions.reserve(m_array.size() + 1);
                if (m_positions.findOrInsert(hash(element), m_array.size(), isAt(element)) == notFound)
                    m_array.push_back(std::forward<decltype(element)>(element));
            } else
                append(Element(std::forward<decltype(element)>(element)));
        }
    }

    // Changing them.

    /// Puts a value in the place of a member, without a look at the others.
    void set(std::size_t place, Element&& value)
    {
        const Element& old = m_array[place];
        const auto oldMixed = hash(old); // both before the first change: hashing may throw
        const auto mixed = hash(value);
        m_positions.reserve(m_positions.count() + 1);
        m_positions.erase(oldMixed, isAt(old));
        m_positions.assign(mixed, place, isAt(value));
        m_array[place] = std::move(value);
    }

    /// Adds at the end what is not there yet. None may stand twice.
    void append(Element&& element)
    {
        const auto mixed = hash(element);
        m_positions.reserve(m_array.size() + 1);
        if (m_array.size() == m_array.capacity())
            m_array.reserve(m_array.empty() ? 4 : m_array.size() * 2);
        if constexpr (isShiftSafe) {
            if (m_positions.findOrInsert(mixed, m_array.size(), isAt(element)) == notFound)
                m_array.push_back(std::move(element));
        } else if (m_positions.find(mixed, isAt(element)) == notFound) {
            m_array.push_back(std::move(element)); // what it throws finds the positions as they were
            m_positions.findOrInsert(mixed, m_array.size() - 1, never);
        }
    }

    /// Puts in a member that is not there yet, where shifting is safe. None may stand twice.
    void insert(std::size_t place, Element&& element)
    {
        const auto mixed = hash(element);
        m_positions.reserve(m_array.size() + 1);
        m_array.insert(at(place), std::move(element));
        m_positions.shift(place, 1);
        m_positions.findOrInsert(mixed, place, never);
    }

    /// Takes a member out, where shifting is safe. None may stand twice.
    void erase(std::size_t place)
    {
        const auto mixed = hash(m_array[place]);
        m_array.erase(at(place));
        m_positions.erase(mixed, [=](std::size_t other) { return other == place; });
        if (place != m_array.size())
            m_positions.shift(place + 1, -1);
    }

    void reserve(std::size_t number)
    {
        m_positions.reserve(number);
        m_array.reserve(number);
    }

    /// Keeps the memory.
    void clear() noexcept
    {
        m_array.clear();
        m_positions.clear();
    }

private:
    static std::uint32_t hash(Key element)
    {
        if constexpr (std::is_same_v<Element, std::string>)
            return static_cast<std::uint32_t>(hashText(element) >> 32U); // is spread already
        else
            return Positions::mix(std::hash<Element>{}(element));
    }

    struct IsAt {
        const std::vector<Element>& array;
        Key element;
        bool operator()(std::size_t position) const { return array[position] == element; }
    };
    IsAt isAt(Key element) const { return {m_array, element}; }

    static bool never(std::size_t) noexcept { return false; }

    auto at(std::size_t place) { return m_array.begin() + static_cast<std::ptrdiff_t>(place); }

    std::vector<Element> m_array;
    Positions m_positions;
};

} // namespace orrenby::inline ORRENBY_ABI::detail
