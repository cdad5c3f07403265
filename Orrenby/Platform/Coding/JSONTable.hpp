#pragma once

/// @file
/// The storage of a JSON document: its nodes in one block, the texts with escapes in another. Not in the
/// umbrella header: part of the coders' own workings.

#include "Orrenby/Platform/Coding/JSONNode.hpp"
#include "Orrenby/Platform/Export.hpp"
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <string_view>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

/// A growing block of nodes. Not synchronised.
class JSONNodes {
public:
    JSONNodes() = default;
    JSONNodes(JSONNodes&& other) noexcept
        : m_nodes(std::exchange(other.m_nodes, nullptr))
        , m_count(std::exchange(other.m_count, 0))
        , m_capacity(std::exchange(other.m_capacity, 0))
    {}
    JSONNodes& operator=(JSONNodes&& other) noexcept
    {
        std::swap(m_nodes, other.m_nodes);
        std::swap(m_count, other.m_count);
        std::swap(m_capacity, other.m_capacity);
        return *this;
    }
    ~JSONNodes() { std::free(m_nodes); }

    JSONNode& operator[](std::size_t index) noexcept { return m_nodes[index]; }
    const JSONNode& operator[](std::size_t index) const noexcept { return m_nodes[index]; }
    std::uint32_t size() const noexcept { return static_cast<std::uint32_t>(m_count); }
    std::size_t capacity() const noexcept { return m_capacity; }
    JSONNode* data() noexcept { return m_nodes; }

    void push(const JSONNode& node)
    {
        if (m_count == m_capacity)
            reserve(m_capacity + m_capacity / 2 + 16);
        m_nodes[m_count++] = node;
    }

    void reserve(std::size_t capacity)
    {
        auto* grown = static_cast<JSONNode*>(std::realloc(m_nodes, capacity * sizeof(JSONNode)));
        if (grown == nullptr)
            throw std::bad_alloc();
        m_nodes = grown;
        m_capacity = capacity;
    }

    void truncate(std::size_t count) noexcept { m_count = count; }

private:
    JSONNode* m_nodes = nullptr;
    std::size_t m_count = 0;
    std::size_t m_capacity = 0;
};

/// What a JSON text is read into. It points into the text, which has to live as long. Not synchronised.
struct JSONTable {
    std::string_view source; ///< UTF-8 without a byte-order mark.
    JSONNodes nodes;         ///< The root first, then depth first.
    std::string copies;      ///< Texts that had escapes: four bytes of length, then the text.

    std::string_view copied(std::uint32_t place) const noexcept
    {
        std::uint32_t length = 0;
        std::memcpy(&length, copies.data() + place, sizeof length);
        return {copies.data() + place + sizeof length, length};
    }

    std::string_view key(const JSONNode& node) const noexcept
    {
        if (node.is(JSONNode::keyIsCopied))
            return copied(node.keyOffset);
        return {source.data() + node.keyOffset, node.keyLength()};
    }

    /// Of a text or a number.
    std::string_view text(const JSONNode& node) const noexcept
    {
        if (node.is(JSONNode::textIsCopied))
            return copied(node.extent);
        const std::size_t quote = node.kind() == JSONKind::Text ? 1 : 0;
        return {source.data() + node.offset + quote, node.extent};
    }

    /// The node behind this one and all it holds.
    std::uint32_t next(std::uint32_t index) const noexcept
    {
        const JSONNode& node = nodes[index];
        return node.holdsOthers() ? node.extent : index + 1;
    }
};

} // namespace orrenby::inline ORRENBY_ABI::detail
