#pragma once

/// @file
/// Sets that keep the order in which their members came.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Utilities/OrderedDiff.hpp"
#include "Orrenby/Utilities/OrderedSetComparison.hpp"
#include "Orrenby/Utilities/OrderedSetMember.hpp"
#include "Orrenby/Utilities/OrderedSetMembers.hpp"
#include "Orrenby/Utilities/OrderedSetPlace.hpp"
#include "Orrenby/Utilities/OrderedSetSorting.hpp"
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// Holds each member at most once, in the order in which they came.
///
/// Members are found by hash. Their `==` must agree with their hash, and each must equal itself: a
/// floating-point NaN is no member. Whatever changes the set drops later duplicates and keeps the first:
/// appending a member that is there changes nothing; inserting it further to the front moves it there;
/// inserting it further to the back changes nothing. Only the positional setter looks for no duplicate, see
/// `set`.
///
/// It gives its members as constants; those of the standard algorithms that swap or assign would break what
/// makes it a set, so only sorting is offered.
///
/// @snippet Tests/Utilities/OrderedSetTests.cpp Keeping an order
///
/// Positions count from 0; one at or beyond the end ends the process. Up to 2^31 − 1 members. Appending and
/// removing at the end cost O(1) on average, lookup as well; other changes are linear in the size. When
/// copying, moving, hashing or a callable throws, the set is as before, except that a duplicate may be gone,
/// that `appendContentsOf` keeps what it has added by then, and that the assignment of a member, which `set`
/// needs, must not throw.
///
/// A plain value: a copy is independent. Not synchronised.
template <detail::OrderedSetMember Element> class OrderedSet {
    using Members = detail::OrderedSetMembers<Element>;

public:
    /// A position, counted from 0; signed, so that differences are positions.
    using Index = std::int64_t;

    /// What members are looked up by: text by a view, anything else by itself.
    using Key = detail::OrderedSetKey<Element>;

    /// What `compared` gives.
    using Diff = OrderedDiff<Index>;

    using value_type = Element;
    using size_type = std::size_t;
    using difference_type = std::ptrdiff_t;
    using const_reference = typename std::vector<Element>::const_reference;
    using reference = const_reference;
    using const_iterator = typename std::vector<Element>::const_iterator;
    using iterator = const_iterator;

    /// What a position of a set that can be changed gives: it reads as the member there, and assigning to it
    /// is `set`. It refers to the set; do not keep it.
    using Place = detail::OrderedSetPlace<OrderedSet>;

    OrderedSet() = default;
    OrderedSet(const OrderedSet&) = default;
    OrderedSet(OrderedSet&&) noexcept = default;
    OrderedSet& operator=(const OrderedSet& other)
    {
        if (this != &other)
            *this = OrderedSet(other); // a copy that fails must not leave one half of it here
        return *this;
    }
    OrderedSet& operator=(OrderedSet&&) noexcept = default;
    ~OrderedSet() = default;

    /// The members of a list, without its later duplicates.
    OrderedSet(std::initializer_list<Element> elements) { m_members.copy(elements); }

    /// The members of an array, without its later duplicates.
    explicit OrderedSet(std::vector<Element>&& array) { m_members.take(std::move(array)); }
    explicit OrderedSet(const std::vector<Element>& array)
    {
        if constexpr (std::is_trivially_copyable_v<Element>)
            m_members.take(std::vector<Element>(array));
        else
            m_members.copy(array);
    }

    /// The members of any sequence, which is walked once.
    template <detail::SequenceOf<Element> Sequence>
        requires(!std::is_same_v<std::remove_cvref_t<Sequence>, OrderedSet>)
    explicit OrderedSet(Sequence&& sequence) { m_members.collect(sequence); }

    /// The members in order.
    const std::vector<Element>& elements() const noexcept { return m_members.array(); }

    /// Always 0.
    Index startIndex() const noexcept { return 0; }
    /// The position behind the last member.
    Index endIndex() const noexcept { return static_cast<Index>(elements().size()); }

    /// One more and one less; overflow of 64 bits ends the process.
    Index indexAfter(Index position) const { return stepped(position, 1); }
    Index indexBefore(Index position) const { return stepped(position, -1); }

    /// How many different members can be looked up. Less than `size()` after `set` brought in a duplicate.
    Index count() const noexcept { return static_cast<Index>(m_members.count()); }

    /// The length of `elements()`, and what iteration walks over.
    std::size_t size() const noexcept { return elements().size(); }
    bool empty() const noexcept { return elements().empty(); }

    /// Whether there is nothing to walk over.
    bool isEmpty() const noexcept { return elements().empty(); }
    const_iterator begin() const noexcept { return elements().begin(); }
    const_iterator end() const noexcept { return elements().end(); }

    /// The member at a position. One at or beyond the end, or a negative one, ends the process.
    const_reference operator[](Index position) const { return elements()[checked(position, size())]; }
    Place operator[](Index position)
    {
        checked(position, size());
        return Place(*this, position);
    }

    /// The first and the last member; nothing in an empty set.
    std::optional<Element> first() const { return isEmpty() ? std::nullopt : some(elements().front()); }
    std::optional<Element> last() const { return isEmpty() ? std::nullopt : some(elements().back()); }

    /// The position by which the member is known, or nothing. Text is looked up without making a string.
    std::optional<Index> indexOf(Key element) const
    {
        const auto position = m_members.find(element);
        return position != Members::notFound ? std::optional(static_cast<Index>(position)) : std::nullopt;
    }

    /// Whether it is among `elements()`. O(1) on average, linear while a duplicate is there.
    bool contains(Key element) const { return firstIndexOf(element).has_value(); }

    /// The first position in `elements()`. It differs from `indexOf` only while a duplicate is there. O(1)
    /// on average, linear while a duplicate is there.
    std::optional<Index> firstIndexOf(Key element) const
    {
        if (m_members.isWhole())
            return indexOf(element);
        for (std::size_t position = 0; position < size(); ++position)
            if (elements()[position] == element)
                return static_cast<Index>(position);
        return std::nullopt;
    }

    /// As the list of the members prints: `[1, 2, 3]`.
    std::string description() const { return describe(elements()); }
    std::string debugDescription() const { return debugDescribe(elements()); }

    /// The same members in the same order.
    friend bool operator==(const OrderedSet& first, const OrderedSet& second)
    {
        return first.elements() == second.elements();
    }

    /// Puts a value in the place of the member at a position, without a look at the others. `set[i] = value`
    /// does the same.
    ///
    /// If the value stands elsewhere too, both places hold it from then on: `indexOf` gives this one, and
    /// `count()` is one less than `size()`. If the member that had been here stood elsewhere too, it cannot
    /// be looked up any more. The next change of any other kind, `reserveCapacity` among them, drops the
    /// duplicates; `remove` of what cannot be looked up changes nothing. O(1) on average.
    void set(Index position, Element value) { m_members.set(checked(position, size()), std::move(value)); }

    /// Reads the member at a position, lets `change` work on a copy, and puts that in its place as `set`
    /// does.
    template <std::invocable<Element&> Change> void modify(Index position, Change&& change)
    {
        Element value = std::as_const(*this)[position];
        std::invoke(std::forward<Change>(change), value);
        set(position, std::move(value));
    }

    /// Replaces the members from `lower` up to, but not including, `upper`. Afterwards later duplicates are
    /// dropped from the whole.
    template <detail::SequenceOf<Element> Sequence>
    void replaceSubrange(Index lower, Index upper, Sequence&& sequence)
    {
        const auto last = checked(upper, size() + 1);
        const auto first = checked(lower, last + 1);
        std::vector<Element> array(elements().begin(), elements().begin() + offset(first));
        for (auto&& element : sequence)
            array.push_back(std::forward<decltype(element)>(element));
        array.insert(array.end(), elements().begin() + offset(last), elements().end());
        *this = OrderedSet(std::move(array));
    }
    void replaceSubrange(Index lower, Index upper, std::initializer_list<Element> sequence)
    {
        replaceSubrange<std::initializer_list<Element>&>(lower, upper, sequence);
    }

    /// Adds a member behind the others; nothing happens when it is there already.
    void append(Element element)
    {
        repair();
        m_members.append(std::move(element));
    }

    /// Appends the elements in their order, those that are there already left out. They may be part of this
    /// set.
    template <detail::SequenceOf<Element> Sequence> void appendContentsOf(Sequence&& elements)
    {
        // Taken in full before the first change: it may be a view of this very set.
        std::vector<Element> added;
        for (auto&& element : elements)
            added.push_back(std::forward<decltype(element)>(element));
        repair();
        for (auto&& element : added)
            m_members.append(std::move(element));
    }
    void appendContentsOf(std::initializer_list<Element> elements)
    {
        appendContentsOf<std::initializer_list<Element>&>(elements);
    }

    /// At the end is the same as `append`.
    void insert(Element element, Index position)
    {
        const auto place = checked(position, size() + 1);
        if (canShift() && m_members.find(element) == Members::notFound)
            m_members.insert(place, std::move(element));
        else
            replaceSubrange(position, position, {std::move(element)});
    }
    template <detail::SequenceOf<Element> Sequence> void insertContentsOf(Sequence&& elements, Index position)
    {
        replaceSubrange(position, position, std::forward<Sequence>(elements));
    }
    void insertContentsOf(std::initializer_list<Element> elements, Index position)
    {
        replaceSubrange(position, position, elements);
    }

    /// @returns The value passed in, or nothing when it cannot be looked up; then nothing changes.
    std::optional<Element> remove(Key element)
    {
        std::optional<Element> result; // returned in place: nothing is moved after the removal
        if (const auto position = indexOf(element)) {
            result.emplace(element);
            removeAt(*position);
        }
        return result;
    }

    /// @returns The member that was there.
    Element removeAt(Index position)
    {
        const auto place = checked(position, size());
        Element removed = elements()[place];
        if (canShift())
            m_members.erase(place);
        else
            replaceSubrange(position, position + 1, {});
        return removed;
    }

    /// Removes the members from `lower` up to, but not including, `upper`.
    void removeSubrange(Index lower, Index upper) { replaceSubrange(lower, upper, {}); }

    /// Of an empty set: ends the process.
    Element removeFirst() { return removeAt(0); }
    Element removeLast() { return removeAt(endIndex() - 1); }
    /// The first or last so many. A negative number, or more than there are, ends the process.
    void removeFirst(Index number) { replaceSubrange(0, number, {}); }
    void removeLast(Index number)
    {
        const auto removed = checked(number, size() + 1);
        replaceSubrange(static_cast<Index>(size() - removed), endIndex(), {});
    }

    /// Empties the set.
    void removeAll() { *this = OrderedSet(); }
    /// Empties the set and keeps its memory for what comes next.
    void removeAllKeepingCapacity() noexcept { m_members.clear(); }
    /// Removes the members for which the predicate holds.
    template <std::predicate<const Element&> Predicate> void removeAll(Predicate&& shouldBeRemoved)
    {
        std::vector<Element> kept;
        for (const Element& element : elements())
            if (!std::invoke(shouldBeRemoved, element))
                kept.push_back(element);
        *this = OrderedSet(std::move(kept));
    }

    /// Makes room for `number` members at once; a hint below the size has no effect on the memory.
    void reserveCapacity(Index number)
    {
        repair();
        if (number > endIndex())
            m_members.reserve(static_cast<std::size_t>(number));
    }

    /// Sorts by a predicate that says whether its first argument stands before its second. Members of which
    /// neither stands before the other keep their order.
    template <std::predicate<const Element&, const Element&> Predicate> void sort(Predicate&& isBefore)
    {
        *this = sorted(std::forward<Predicate>(isBefore));
    }
    template <std::predicate<const Element&, const Element&> Predicate>
    [[nodiscard]] OrderedSet sorted(Predicate&& isBefore) const
    {
        return OrderedSet(detail::sortedMembers(elements(), isBefore));
    }

    /// The members that `other` has too, in the order of this set. Linear in the sizes of both.
    [[nodiscard]] OrderedSet intersection(const OrderedSet& other) const { return chosen(other, true); }
    /// The members that `other` lacks, in the order of this set. Linear in the sizes of both.
    [[nodiscard]] OrderedSet subtracting(const OrderedSet& other) const { return chosen(other, false); }

    /// How this set turned into `other`; nothing when both are equal.
    ///
    /// Inserts are ascending positions in `other`, deletes ascending positions here. Every common member
    /// whose position changed is a move, even if only something before it came or went, in ascending order of
    /// the position here: from `[a, b, c]` to `[x, a, b, c]` it is one insert and three moves. For as few
    /// moves as possible see `comparedWithFewestMoves`.
    ///
    /// Linear in the sizes of both. With duplicates brought in by `set` on either side, quadratic; a member
    /// that is missing on the other side and cannot be looked up on its own then ends the process.
    [[nodiscard]] std::optional<Diff> compared(const OrderedSet& other) const
    {
        if (elements() == other.elements())
            return std::nullopt;
        return m_members.isWhole() && other.m_members.isWhole() ? detail::comparedByHash(*this, other)
                                                                : detail::comparedByScan(*this, other);
    }

    /// As `compared`, but a move stands only for members that changed their place among the common ones, and
    /// as few of them as possible: from `[a, b, c]` to `[x, c, a, b]` it is one insert and the move of `c`.
    /// Inserts are made and deletes are done around what stays; ascending order as in `compared`. n log n.
    [[nodiscard]] std::optional<Diff> comparedWithFewestMoves(const OrderedSet& other) const
    {
        if (elements() == other.elements())
            return std::nullopt;
        const OrderedSet old(elements());
        const OrderedSet target(other.elements());
        return detail::withFewestMoves(old, target, detail::comparedByHash(old, target));
    }

    /// The set that a diff of `compared` turned this one into, given the members that were inserted, in the
    /// order of `diff.inserts`. Nothing when the diff and this set do not fit together. Linear.
    [[nodiscard]] std::optional<OrderedSet> applying(
        const Diff& diff, const std::vector<Element>& inserted) const
    {
        return detail::applying(*this, diff, inserted);
    }

private:
    bool canShift() const noexcept { return Members::isShiftSafe && m_members.isWhole(); }

    void repair()
    {
        if (!m_members.isWhole())
            *this = OrderedSet(elements());
    }

    static std::ptrdiff_t offset(std::size_t place) noexcept { return static_cast<std::ptrdiff_t>(place); }
    static std::optional<Element> some(const Element& element) { return element; }

    static std::size_t checked(Index position, std::size_t end)
    {
        if (position < 0 || static_cast<std::size_t>(position) >= end)
            fatalError("Index out of range", "Utilities/OrderedSet", 84);
        return static_cast<std::size_t>(position);
    }

    static Index stepped(Index position, Index step)
    {
        Index result = 0;
        if (__builtin_add_overflow(position, step, &result))
            fatalError("Arithmetic operation overflowed", "Utilities/OrderedSet", 62);
        return result;
    }

    OrderedSet chosen(const OrderedSet& other, bool areCommon) const
    {
        std::vector<Element> array;
        for (const Element& element : elements())
            if (other.contains(element) == areCommon)
                array.push_back(element);
        return OrderedSet(std::move(array));
    }

    Members m_members;
};

/// Of the sequence's elements.
template <class Sequence>
OrderedSet(Sequence&&) -> OrderedSet<std::remove_cvref_t<decltype(*std::begin(std::declval<Sequence&>()))>>;

} // namespace orrenby

/// That of the members in their order. Linear.
template <class Element> struct std::hash<orrenby::OrderedSet<Element>> {
    std::size_t operator()(const orrenby::OrderedSet<Element>& set) const
    {
        std::size_t result = set.size();
        for (const Element& element : set)
            result = result * 0x9E3779B97F4A7C15U + std::hash<Element>{}(element);
        return result;
    }
};
