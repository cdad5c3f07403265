#include "Orrenby/Platform/Coding/JSONDocument.hpp"

#include "Orrenby/Platform/Coding/JSONKeyEquality.hpp"
#include "Orrenby/Platform/Coding/JSONKeyHash.hpp"
#include "Orrenby/Platform/Coding/JSONTextForm.hpp"
#include "Orrenby/Platform/Coding/JSONTokenizer.hpp"
#include "Orrenby/Platform/Objects/HashIndex.hpp"
#include <unordered_map>

namespace orrenby::inline ORRENBY_ABI {

namespace {

constexpr std::size_t indexedAbove = 32;

} // namespace

/// Positions of members, for each object that was searched and has many.
struct JSONDocument::WideObjects {
    std::unordered_map<Node, detail::HashIndex> indexes;
};

JSONDocument::JSONDocument(std::span<const std::byte> data)
    : m_table(detail::readJSON(detail::jsonTextAsUTF8(data, m_converted)))
{}

JSONDocument::JSONDocument(std::string_view utf8)
    : m_table(detail::readJSON(utf8))
{}

JSONDocument::~JSONDocument() = default;

std::size_t JSONDocument::count(Node node) const noexcept
{
    std::size_t count = 0;
    const auto end = endOf(node);
    for (auto child = firstIn(node); child < end; child = next(child))
        ++count;
    return count;
}

JSONDocument::Node JSONDocument::find(Node object, std::string_view key, Node& cursor) const
{
    const auto end = endOf(object);
    std::size_t looked = 0;
    for (auto node = cursor; node < end; node = next(node)) {
        if (detail::isSameKey(this->key(node), key)) {
            cursor = next(node);
            return node;
        }
        if (++looked > indexedAbove)
            return findIndexed(object, key, cursor);
    }
    for (auto node = firstIn(object); node < cursor; node = next(node)) {
        if (detail::isSameKey(this->key(node), key)) {
            cursor = next(node);
            return node;
        }
        if (++looked > indexedAbove)
            return findIndexed(object, key, cursor);
    }
    return absent;
}

JSONDocument::Node JSONDocument::find(Node object, std::string_view key) const
{
    auto cursor = firstIn(object);
    return find(object, key, cursor);
}

JSONDocument::Node JSONDocument::findIndexed(Node object, std::string_view key, Node& cursor) const
{
    if (!m_wideObjects)
        m_wideObjects = detail::Owned<WideObjects>::make();
    const auto [entry, isNew] = m_wideObjects->indexes.try_emplace(object);
    auto& index = entry->second;
    if (isNew)
        for (auto node = firstIn(object); node < endOf(object); node = next(node))
            index.insert(detail::jsonKeyHash(this->key(node)), node);

    const auto found = index.find(detail::jsonKeyHash(key),
        [&](std::size_t position) { return this->key(static_cast<Node>(position)) == key; });
    if (found == detail::HashIndex::notFound)
        return absent;
    cursor = next(static_cast<Node>(found));
    return static_cast<Node>(found);
}

std::size_t JSONDocument::byteCount() const noexcept
{
    return m_table.nodes.capacity() * sizeof(detail::JSONNode) + m_table.copies.capacity();
}

} // namespace orrenby
