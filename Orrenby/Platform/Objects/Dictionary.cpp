#include "Orrenby/Platform/Objects/Dictionary.hpp"

#include "Orrenby/Platform/Objects/FatalError.hpp"
#include <algorithm>

namespace orrenby::inline ORRENBY_ABI {

namespace {

std::size_t hashOf(std::string_view key) { return std::hash<std::string_view>{}(key); }

} // namespace

Dictionary::Dictionary(std::initializer_list<Entry> entries)
{
    reserve(entries.size());
    for (const Entry& entry : entries)
        set(entry.key, entry.value);
}

std::size_t Dictionary::position(std::string_view key) const
{
    if (!m_index.isEmpty())
        return m_index.find(hashOf(key), [&](std::size_t place) { return m_entries[place].key == key; });
    for (std::size_t place = 0; place < m_entries.size(); ++place)
        if (m_entries[place].key == key)
            return place;
    return detail::HashIndex::notFound;
}

void Dictionary::buildIndex()
{
    m_index.clear();
    if (m_entries.size() > indexedAbove)
        for (std::size_t place = 0; place < m_entries.size(); ++place)
            m_index.insert(hashOf(m_entries[place].key), place);
}

const Any* Dictionary::find(std::string_view key) const
{
    const auto place = position(key);
    return place != detail::HashIndex::notFound ? &m_entries[place].value : nullptr;
}

const Any& Dictionary::operator[](std::string_view key) const
{
    static const Any& null = *new Any(); // never destroyed: readers at exit still refer to it
    const Any* value = find(key);
    return value != nullptr ? *value : null;
}

const Any& Dictionary::at(std::string_view key) const
{
    const Any* value = find(key);
    if (value == nullptr)
        fatalError("No value for key " + detail::quoted(key), "Platform/Dictionary", 63);
    return *value;
}

void Dictionary::set(std::string_view key, Any value)
{
    if (const auto place = position(key); place != detail::HashIndex::notFound) {
        m_entries[place].value = std::move(value);
        return;
    }
    m_entries.push_back({std::string(key), std::move(value)});
    if (!m_index.isEmpty())
        m_index.insert(hashOf(key), m_entries.size() - 1);
    else if (m_entries.size() > indexedAbove)
        buildIndex();
}

bool Dictionary::erase(std::string_view key)
{
    const auto place = position(key);
    if (place == detail::HashIndex::notFound)
        return false;
    m_entries.erase(m_entries.begin() + static_cast<std::ptrdiff_t>(place));
    buildIndex();
    return true;
}

/// Erases the rest, and says how much that was.
std::size_t Dictionary::eraseFrom(std::size_t place)
{
    const auto erased = m_entries.size() - place;
    if (erased != 0) {
        m_entries.erase(m_entries.begin() + static_cast<std::ptrdiff_t>(place), m_entries.end());
        buildIndex();
    }
    return erased;
}

void Dictionary::reserve(std::size_t count) { m_entries.reserve(count); }

void Dictionary::clear() noexcept
{
    m_entries.clear();
    m_index.clear();
}

std::vector<std::string> Dictionary::keys() const
{
    std::vector<std::string> result;
    result.reserve(size());
    for (const Entry& entry : m_entries)
        result.push_back(entry.key);
    return result;
}

std::string Dictionary::description() const
{
    std::vector<const Entry*> sorted;
    sorted.reserve(size());
    for (const Entry& entry : m_entries)
        sorted.push_back(&entry);
    std::sort(
        sorted.begin(), sorted.end(), [](auto* first, auto* second) { return first->key < second->key; });

    std::vector<std::pair<std::string, std::string>> members;
    members.reserve(size());
    for (const Entry* entry : sorted)
        members.emplace_back(debugDescribe(entry->key), debugDescribe(entry->value));
    return detail::joinedDictionary(std::move(members), true);
}

std::size_t Dictionary::hash() const
{
    std::size_t result = size();
    for (const Entry& entry : m_entries)
        result += hashOf(entry.key) * 31 + entry.value.hash();
    return result;
}

bool operator==(const Dictionary& first, const Dictionary& second)
{
    if (first.size() != second.size())
        return false;
    for (const auto& [key, value] : first)
        if (const Any* other = second.find(key); other == nullptr || *other != value)
            return false;
    return true;
}

} // namespace orrenby
