#pragma once

/// @file
/// Sets that keep the order in which their members came.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Utilities/OrderedDiff.hpp"
#include "Orrenby/Utilities/OrderedSetComparison.hpp"
#include "Orrenby/Utilities/OrderedSetMember.hpp"
#include "Orrenby/Utilities/OrderedSetPlace.hpp"
#include "Orrenby/Utilities/OrderedSetPositions.hpp"
#include "Orrenby/Utilities/OrderedSetSorting.hpp"
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <memory>
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
    using Positions = detail::OrderedSetPositions;

public:
    using Index = std::int64_t;
    using Key = detail::OrderedSetKey<Element>;
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
    OrderedSet(std::initializer_list<Element> elements) { buildByReference(elements); }

    /// The members of an array, without its later duplicates.
    explicit OrderedSet(std::vector<Element>&& array) { build(std::move(array)); }
    explicit OrderedSet(const std::vector<Element>& array)
    {
        if constexpr (std::is_trivially_copyable_v<Element>)
            build(std::vector<Element>(array));
        else
            buildByReference(array);
    }

    /// The members of any sequence, which is walked once.
    template <detail::SequenceOf<Element> Sequence>
        requires(!std::is_same_v<std::remove_cvref_t<Sequence>, OrderedSet>)
    explicit OrderedSet(Sequence&& sequence) { build(sequence); }

    // --- the collection ---

    /// The members in order.
    const std::vector<Element>& elements() const noexcept { return m_elements; }

    /// Always 0.
    Index startIndex() const noexcept { return 0; }
    /// The position behind the last member.
    Index endIndex() const noexcept { return static_cast<Index>(m_elements.size()); }

    /// One more and one less; overflow of 64 bits ends the process.
    Index indexAfter(Index position) const { return stepped(position, 1); }
    Index indexBefore(Index position) const { return stepped(position, -1); }

    /// How many different members can be looked up. Less than `size()` after `set` brought in a duplicate.
    Index count() const noexcept { return static_cast<Index>(m_positions.count()); }

    /// The length of `elements()`, and what iteration walks over.
    std::size_t size() const noexcept { return m_elements.size(); }
    bool empty() const noexcept { return m_elements.empty(); }
    bool isEmpty() const noexcept { return m_elements.empty(); }
    const_iterator begin() const noexcept { return m_elements.begin(); }
    const_iterator end() const noexcept { return m_elements.end(); }

    const_reference operator[](Index position) const { return m_elements[checked(position, size())]; }
    Place operator[](Index position)
    {
        checked(position, size());
        return Place(*this, position);
    }

    std::optional<Element> first() const { return isEmpty() ? std::nullopt : some(m_elements.front()); }
    std::optional<Element> last() const { return isEmpty() ? std::nullopt : some(m_elements.back()); }

    /// The position by which the member is known, or nothing. Text is looked up without making a string.
    std::optional<Index> indexOf(Key element) const
    {
        const auto position = m_positions.find(hash(element), isAt(element));
        return position != Positions::notFound ? std::optional(static_cast<Index>(position)) : std::nullopt;
    }

    /// Whether it is among `elements()`. O(1) on average, linear while a duplicate is there.
    bool contains(Key element) const { return firstIndexOf(element).has_value(); }

    /// The first position in `elements()`. It differs from `indexOf` only while a duplicate is there. O(1)
    /// on average, linear while a duplicate is there.
    std::optional<Index> firstIndexOf(Key element) const
    {
        if (isWhole())
            return indexOf(element);
        for (std::size_t position = 0; position < size(); ++position)
            if (m_elements[position] == element)
                return static_cast<Index>(position);
        return std::nullopt;
    }

    /// As the list of the members prints: `[1, 2, 3]`.
    std::string description() const { return describe(m_elements); }
    std::string debugDescription() const { return debugDescribe(m_elements); }

    /// The same members in the same order.
    friend bool operator==(const OrderedSet& first, const OrderedSet& second)
    {
        return first.m_elements == second.m_elements;
    }

    // --- changes ---

    /// Puts a value in the place of the member at a position, without a look at the others. `set[i] = value`
    /// does the same.
    ///
    /// If the value stands elsewhere too, both places hold it from then on: `indexOf` gives this one, and
    /// `count()` is one less than `size()`. If the member that had been here stood elsewhere too, it cannot
    /// be looked up any more. The next change of any other kind, `reserveCapacity` among them, drops the
    /// duplicates; `remove` of what cannot be looked up changes nothing. O(1) on average.
    void set(Index position, Element value)
    {
        const auto place = checked(position, size());
        const Element& old = m_elements[place];
        const auto oldMixed = hash(old); // both before the first change: hashing may throw
        const auto mixed = hash(value);
        m_positions.reserve(m_positions.count() + 1);
        m_positions.erase(oldMixed, isAt(old));
        m_positions.assign(mixed, place, isAt(value));
        m_elements[place] = std::move(value);
    }

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
    void replaceSubrange(Index lower, Index upper, Sequence&& elements)
    {
        const auto last = checked(upper, size() + 1);
        const auto first = checked(lower, last + 1);
        std::vector<Element> array(m_elements.begin(), m_elements.begin() + offset(first));
        for (auto&& element : elements)
            array.push_back(std::forward<decltype(element)>(element));
        array.insert(array.end(), m_elements.begin() + offset(last), m_elements.end());
        *this = OrderedSet(std::move(array));
    }
    void replaceSubrange(Index lower, Index upper, std::initializer_list<Element> elements)
    {
        replaceSubrange<std::initializer_list<Element>&>(lower, upper, elements);
    }

    void append(Element element)
    {
        repair();
        add(std::move(element));
    }
    template <detail::SequenceOf<Element> Sequence> void appendContentsOf(Sequence&& elements)
    {
        // Taken in full before the first change: it may be a view of this very set.
        std::vector<Element> added;
        for (auto&& element : elements)
            added.push_back(std::forward<decltype(element)>(element));
        repair();
        for (auto&& element : added)
            add(std::move(element));
    }
    void appendContentsOf(std::initializer_list<Element> elements)
    {
        appendContentsOf<std::initializer_list<Element>&>(elements);
    }

    /// At the end is the same as `append`.
    void insert(Element element, Index position)
    {
        const auto place = checked(position, size() + 1);
        const auto mixed = hash(element);
        if (!isShiftSafe || !isWhole() || m_positions.find(mixed, isAt(element)) != Positions::notFound) {
            replaceSubrange(position, position, {std::move(element)});
            return;
        }
        m_positions.reserve(size() + 1);
        m_elements.insert(m_elements.begin() + offset(place), std::move(element));
        m_positions.shift(place, 1);
        m_positions.findOrInsert(mixed, place, [](std::size_t) { return false; });
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
        Element removed = m_elements[place];
        if (!isShiftSafe || !isWhole()) {
            replaceSubrange(position, position + 1, {});
            return removed;
        }
        const auto mixed = hash(removed);
        m_elements.erase(m_elements.begin() + offset(place));
        m_positions.erase(mixed, [=](std::size_t other) { return other == place; });
        if (place != size())
            m_positions.shift(place + 1, -1);
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

    void removeAll() { *this = OrderedSet(); }
    /// Empties the set and keeps its memory for what comes next.
    void removeAllKeepingCapacity() noexcept
    {
        m_elements.clear();
        m_positions.clear();
    }
    /// Removes the members for which the predicate holds.
    template <std::predicate<const Element&> Predicate> void removeAll(Predicate&& shouldBeRemoved)
    {
        std::vector<Element> kept;
        for (const Element& element : m_elements)
            if (!std::invoke(shouldBeRemoved, element))
                kept.push_back(element);
        *this = OrderedSet(std::move(kept));
    }

    /// Makes room for `number` members at once; a hint below the size has no effect on the memory.
    void reserveCapacity(Index number)
    {
        repair();
        if (number > endIndex()) {
            m_positions.reserve(static_cast<std::size_t>(number));
            m_elements.reserve(static_cast<std::size_t>(number));
        }
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
        return OrderedSet(detail::sortedMembers(m_elements, isBefore));
    }

    // --- with another set ---

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
        if (m_elements == other.m_elements)
            return std::nullopt;
        return isWhole() && other.isWhole() ? detail::comparedByHash(*this, other)
                                            : detail::comparedByScan(*this, other);
    }

    /// As `compared`, but a move stands only for members that changed their place among the common ones, and
    /// as few of them as possible: from `[a, b, c]` to `[x, c, a, b]` it is one insert and the move of `c`.
    /// Inserts are made and deletes are done around what stays; ascending order as in `compared`. n log n.
    [[nodiscard]] std::optional<Diff> comparedWithFewestMoves(const OrderedSet& other) const
    {
        if (m_elements == other.m_elements)
            return std::nullopt;
        const OrderedSet old(m_elements);
        const OrderedSet target(other.m_elements);
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
    /// Whether members can be shifted in their array. Where a move may throw halfway, a new set is made.
    static constexpr bool isShiftSafe
        = std::is_nothrow_move_constructible_v<Element> && std::is_nothrow_move_assignable_v<Element>;

    /// No member stands twice: each entry has a position of its own, so as many entries as members leave no
    /// room for a duplicate.
    bool isWhole() const noexcept { return m_positions.count() == m_elements.size(); }

    void repair()
    {
        if (!isWhole())
            *this = OrderedSet(m_elements);
    }

    static std::uint32_t hash(Key element)
    {
        if constexpr (std::is_same_v<Element, std::string>)
            return static_cast<std::uint32_t>(detail::hashText(element) >> 32U); // is spread already
        else
            return Positions::mix(std::hash<Element>{}(element));
    }

    struct IsAt {
        const std::vector<Element>& elements;
        Key element;
        bool operator()(std::size_t position) const { return elements[position] == element; }
    };
    IsAt isAt(Key element) const { return {m_elements, element}; }

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

    /// Adds what is not there yet to a set without duplicates.
    void add(Element element)
    {
        const auto mixed = hash(element);
        m_positions.reserve(size() + 1);
        if (m_elements.size() == m_elements.capacity())
            m_elements.reserve(m_elements.empty() ? 4 : size() * 2);
        if constexpr (isShiftSafe) {
            if (m_positions.findOrInsert(mixed, size(), isAt(element)) == Positions::notFound)
                m_elements.push_back(std::move(element));
        } else if (m_positions.find(mixed, isAt(element)) == Positions::notFound) {
            m_elements.push_back(std::move(element)); // what it throws finds the positions as they were
            m_positions.findOrInsert(mixed, size() - 1, [](std::size_t) { return false; });
        }
    }

    template <class Sequence> void build(Sequence& sequence)
    {
        if constexpr (requires { std::size(sequence); })
            m_positions.reserve(std::size(sequence)), m_elements.reserve(std::size(sequence));
        for (auto&& element : sequence) {
            if constexpr (std::is_same_v<std::remove_cvref_t<decltype(element)>, Element>) {
                // Looked for before it is copied. What is thrown then leaves no set at all.
                if constexpr (!requires { std::size(sequence); })
                    m_positions.reserve(size() + 1);
                if (m_positions.findOrInsert(hash(element), size(), isAt(element)) == Positions::notFound)
                    m_elements.push_back(std::forward<decltype(element)>(element));
            } else
                add(Element(std::forward<decltype(element)>(element)));
        }
    }
    /// Finds out which members stay before it copies the first: those allocate in a row then, and no
    /// duplicate is copied.
    template <class Sequence> void buildByReference(const Sequence& sequence)
    {
        const auto kept = std::make_unique_for_overwrite<const Element*[]>(std::size(sequence));
        m_positions.reserve(std::size(sequence));
        std::size_t count = 0;
        for (const Element& element : sequence) {
            const auto isMatch = [&](std::size_t position) { return *kept[position] == element; };
            kept[count] = std::addressof(element);
            if (m_positions.findOrInsert(hash(element), count, isMatch) == Positions::notFound)
                ++count;
        }
        m_elements.reserve(count);
        for (std::size_t place = 0; place < count; ++place)
            m_elements.push_back(*kept[place]);
    }
    void build(std::vector<Element>&& array)
    {
        m_positions.reserve(array.size());
        m_elements = std::move(array);
        std::size_t kept = 0;
        for (std::size_t next = 0; next < m_elements.size(); ++next) {
            Key element = m_elements[next];
            if (m_positions.findOrInsert(hash(element), kept, isAt(element)) != Positions::notFound)
                continue;
            if (kept != next)
                m_elements[kept] = std::move(m_elements[next]);
            ++kept;
        }
        m_elements.erase(m_elements.begin() + offset(kept), m_elements.end());
    }

    OrderedSet chosen(const OrderedSet& other, bool areCommon) const
    {
        std::vector<Element> array;
        for (const Element& element : m_elements)
            if (other.contains(element) == areCommon)
                array.push_back(element);
        return OrderedSet(std::move(array));
    }

    std::vector<Element> m_elements;
    Positions m_positions;
};

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
