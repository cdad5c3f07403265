#pragma once

/// @file
/// A set that several threads share.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Utilities/Synchronized.hpp"
#include <functional>
#include <unordered_set>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

/// A set of distinct elements in no particular order, empty at first. Lookups run side by side, a change runs
/// alone.
///
/// Each operation is whole by itself; two in a row are not. It cannot be walked: what must look at all
/// elements keeps them in a `Synchronized` of its own.
///
/// @snippet Tests/Utilities/ThreadSafeMutableSetTests.cpp Remembering who was seen
///
/// Elements are told apart by `std::hash` and `==`, which run under the lock and must not use the set.
/// Elements that leave the set end after the lock is given back, so their ends may use it.
///
/// One allocation for each new element, O(1) on average; `removeAll` is linear. Safe to use from several
/// threads.
template <class T> class ThreadSafeMutableSet {
public:
    ThreadSafeMutableSet() = default;

    /// An element that equals one in the set is dropped, and the one in the set stays.
    void add(T element)
    {
        m_set.apply([&](Elements& elements) { elements.insert(std::move(element)); });
    }

    /// Nothing happens when no element equals this one.
    void remove(const T& element)
    {
        typename Elements::node_type removed;
        m_set.apply([&](Elements& elements) { removed = elements.extract(element); });
    }

    /// Empties the set. The elements are let go of behind the lock.
    void removeAll()
    {
        Elements removed;
        m_set.apply([&](Elements& elements) { elements.swap(removed); });
    }

    /// Whether an element equals this one, at the moment of the call.
    [[nodiscard]] bool contains(const T& element) const
    {
        return m_set.map([&](const Elements& elements) { return elements.count(element) != 0; });
    }

private:
    using Elements = std::unordered_set<T>;

    Synchronized<Elements> m_set{Elements(), SynchronizedKind::readersWriter};
};

} // namespace orrenby
