#include "Orrenby/Platform/Coding/DecodingSession.hpp"

#include "Orrenby/Platform/Coding/JSONKeyEquality.hpp"
#include "Orrenby/Platform/Coding/SnakeCase.hpp"
#include <algorithm>

namespace orrenby::inline ORRENBY_ABI::detail {

/// The members' keys as types ask for them, in order and sorted.
struct DecodingMembers::ConvertedKeys {
    struct Entry {
        std::string key;
        JSONDocument::Node node;
    };
    std::vector<Entry> entries;
    std::vector<std::uint32_t> sorted;
};

namespace {

std::string convertedKey(const DecodingPlace& place, std::string_view key)
{
    const auto& strategy = place.session->options().keys;
    if (const auto* custom = strategy.customCoding()) {
        auto path = codingPath(place.path);
        path.emplace_back(key);
        return (*custom)(path).stringValue();
    }
    return fromSnakeCase(key);
}

} // namespace

DecodingMembers::DecodingMembers(const DecodingPlace& place)
    : m_place(place)
    , m_cursor(place.node + 1)
{
    if (place.kind() != JSONKind::Object)
        place.throwMismatch("Dictionary<String, Any>");
    m_end = place.document().endOf(place.node);
    if (place.session->options().keys.kind() == JSONKeyDecodingStrategy::Kind::UseDefaultKeys)
        return;

    auto keys = std::make_shared<ConvertedKeys>();
    const auto& document = place.document();
    for (auto node = JSONDocument::firstIn(place.node); node < document.endOf(place.node);
         node = document.next(node)) {
        keys->sorted.push_back(static_cast<std::uint32_t>(keys->entries.size()));
        keys->entries.push_back({convertedKey(place, document.key(node)), node});
    }
    const auto& entries = keys->entries;
    // Stable, so that the first of keys that became equal is the one that is found.
    std::stable_sort(keys->sorted.begin(), keys->sorted.end(),
        [&](std::uint32_t first, std::uint32_t second) { return entries[first].key < entries[second].key; });
    m_convertedKeys = std::move(keys);
}

JSONDocument::Node DecodingMembers::find(std::string_view key) const
{
    if (m_convertedKeys != nullptr)
        return findConverted(key);
    // The usual case, without a call.
    const auto& document = m_place.document();
    const auto next = m_cursor;
    if (next < m_end && isSameKey(document.key(next), key)) {
        m_cursor = document.next(next);
        return next;
    }
    return document.find(m_place.node, key, m_cursor);
}

JSONDocument::Node DecodingMembers::findConverted(std::string_view key) const
{
    const auto& [entries, sorted] = *m_convertedKeys;
    const auto found = std::lower_bound(
        sorted.begin(), sorted.end(), key, [&entries = entries](std::uint32_t index, std::string_view text) {
            return entries[index].key < text;
        });
    const bool isFound = found != sorted.end() && entries[*found].key == key;
    return isFound ? entries[*found].node : JSONDocument::absent;
}

std::vector<std::string> DecodingMembers::keys() const
{
    std::vector<std::string> keys;
    if (m_convertedKeys != nullptr) {
        for (const auto& entry : m_convertedKeys->entries)
            keys.push_back(entry.key);
        return keys;
    }
    const auto& document = m_place.document();
    for (auto node = JSONDocument::firstIn(m_place.node); node < document.endOf(m_place.node);
         node = document.next(node))
        keys.emplace_back(document.key(node));
    return keys;
}

void DecodingMembers::throwKeyNotFound(std::string_view key) const
{
    throw DecodingError::keyNotFound(
        key, m_place.context("No value under the key \"" + std::string(key) + "\""));
}

DecodingPlace DecodingMembers::keptPlace(std::string_view key) const
{
    const auto node = find(key);
    // The key asked for may be gone before the place is.
    const auto text = node == JSONDocument::absent ? std::string_view("super") : m_place.document().key(node);
    return {m_place.session, node, m_place.session->keep({m_place.path, text, -1})};
}

} // namespace orrenby::inline ORRENBY_ABI::detail
