#include "Orrenby/Foundation/SafeCopies.hpp"

#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

namespace {

bool isContainer(const Any& value)
{
    return value.kind() == Any::Kind::List || value.kind() == Any::Kind::Dictionary
        || value.kind() == Any::Kind::Set;
}

/// What becomes of a value inside its container.
enum class Fate { Kept, Replaced, Removed };

/// A nested container on the way through it. What stays is copied only from the first change on.
class Level {
public:
    Level(const Any& container, bool removesEmptyMembers)
        : m_container(&container)
        , m_list(container.get<Array>())
        , m_members(container.get<Dictionary>())
        // Only a dictionary keeps empty containers, and only where it was not reached through a list or a
        // set.
        , m_removesEmpty(m_members == nullptr || removesEmptyMembers)
    {
        if (const auto* set = container.get<NSSet>())
            m_list = &set->allObjects();
    }

    bool isDone() const { return m_position == size(); }
    bool removesEmpty() const { return m_removesEmpty; }
    const Any& current() const { return child(m_position); }

    void keep()
    {
        if (m_isChanged)
            append(current());
        ++m_position;
    }
    void replace(Any value)
    {
        beginChange();
        append(std::move(value));
        ++m_position;
    }
    void remove()
    {
        beginChange();
        ++m_position;
    }

    bool isChanged() const { return m_isChanged; }
    bool isEmpty() const
    {
        if (!m_isChanged)
            return size() == 0;
        return m_members != nullptr ? m_newMembers.empty() : m_newList.empty();
    }
    Any takeResult()
    {
        if (m_members != nullptr)
            return std::move(m_newMembers);
        return m_container->kind() == Any::Kind::Set ? Any(NSSet(m_newList)) : Any(std::move(m_newList));
    }

private:
    std::size_t size() const { return m_members != nullptr ? m_members->size() : m_list->size(); }
    const Any& child(std::size_t place) const
    {
        return m_members != nullptr ? m_members->begin()[place].value : (*m_list)[place];
    }
    void append(Any value)
    {
        if (m_members != nullptr)
            m_newMembers.set(m_members->begin()[m_position].key, std::move(value));
        else
            m_newList.push_back(std::move(value));
    }
    void beginChange()
    {
        if (m_isChanged)
            return;
        m_isChanged = true;
        if (m_members != nullptr)
            m_newMembers.reserve(size());
        else
            m_newList.reserve(size());
        const auto reached = m_position;
        for (m_position = 0; m_position < reached; ++m_position)
            append(current());
    }

    const Any* m_container;
    const Array* m_list;
    const Dictionary* m_members;
    Array m_newList;
    Dictionary m_newMembers;
    std::size_t m_position = 0;
    bool m_removesEmpty;
    bool m_isChanged = false;
};

/// Cleans nested containers. It keeps its levels itself, so that depth is no matter of the stack; one cleaner
/// serves all values of its subject.
class Cleaner {
public:
    explicit Cleaner(bool removesEmpty)
        : m_removesEmpty(removesEmpty)
    {}

    /// Replaces the value by its safe copy, unless that is the value itself, or it does not stay at all.
    Fate clean(Any& value)
    {
        if (value.isNull())
            return Fate::Removed;
        if (!isContainer(value))
            return Fate::Kept;
        m_levels.emplace_back(value, m_removesEmpty);
        for (;;) {
            Level& level = m_levels.back();
            if (!level.isDone())
                visit(level);
            else if (m_levels.size() > 1)
                leave();
            else
                break;
        }
        Level level = std::move(m_levels.back());
        m_levels.pop_back();
        if (level.isEmpty() && m_removesEmpty)
            return Fate::Removed;
        if (!level.isChanged())
            return Fate::Kept;
        value = level.takeResult();
        return Fate::Replaced;
    }

private:
    void visit(Level& level)
    {
        const Any& value = level.current();
        if (value.isNull())
            level.remove();
        else if (isContainer(value))
            m_levels.emplace_back(value, level.removesEmpty());
        else
            level.keep();
    }

    void leave()
    {
        Level done = std::move(m_levels.back());
        m_levels.pop_back();
        Level& parent = m_levels.back();
        if (done.isEmpty() && parent.removesEmpty())
            parent.remove();
        else if (done.isChanged())
            parent.replace(done.takeResult());
        else
            parent.keep();
    }

    std::vector<Level> m_levels;
    bool m_removesEmpty;
};

/// Cleans each value in place; `valueOf` finds it in its entry.
template <class List, class ValueOf> void cleanEach(List& list, Cleaner cleaner, ValueOf valueOf)
{
    auto kept = list.begin();
    for (auto entry = list.begin(); entry != list.end(); ++entry)
        if (cleaner.clean(valueOf(*entry)) != Fate::Removed) {
            if (kept != entry)
                *kept = std::move(*entry);
            ++kept;
        }
    list.erase(kept, list.end());
}

} // namespace

namespace detail {

Dictionary safeDictionaryOf(Dictionary dictionary, SafeDictionaryOptions options)
{
    Cleaner cleaner(options.removeEmptyCollections);
    dictionary.eraseIf([&](std::string_view, Any& value) { return cleaner.clean(value) == Fate::Removed; });
    return dictionary;
}

AnyEntries safeDictionaryOf(AnyEntries entries, SafeDictionaryOptions options)
{
    cleanEach(
        entries, Cleaner(options.removeEmptyCollections), [](auto& entry) -> Any& { return entry.second; });
    return entries;
}

Array safeArrayOf(Array array)
{
    cleanEach(array, Cleaner(true), [](Any& value) -> Any& { return value; });
    return array;
}

NSSet safeSetOf(NSSet set)
{
    const Array& members = set.allObjects();
    Cleaner cleaner(true);
    Array cleaned;
    bool isChanged = false;
    for (std::size_t place = 0; place < members.size(); ++place) {
        Any member = members[place];
        const auto fate = cleaner.clean(member);
        if (fate != Fate::Kept && !isChanged) {
            isChanged = true;
            cleaned.assign(members.begin(), members.begin() + static_cast<std::ptrdiff_t>(place));
        }
        if (isChanged && fate != Fate::Removed)
            cleaned.push_back(std::move(member));
    }
    return isChanged ? NSSet(cleaned) : std::move(set);
}

} // namespace detail

} // namespace orrenby
