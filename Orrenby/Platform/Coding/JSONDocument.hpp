#pragma once

/// @file
/// A JSON text, read into a table of its values.

#include "Orrenby/Platform/Coding/JSONNode.hpp"
#include "Orrenby/Platform/Coding/JSONTable.hpp"
#include "Orrenby/Platform/Coding/TextPosition.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Owned.hpp"
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// A JSON text whose grammar has been checked, and whose values can be walked without reading it again.
///
/// What the coders stand on. A value is named by its number: the root is 0, and the values of a list or
/// object follow it, depth first. Texts without escapes and all numbers stay where they are in the bytes
/// given, which have to live as long as the document.
///
/// It does not convert numbers: their text is kept, so none is rounded before somebody says what it shall be.
///
/// @snippet Tests/Platform/Coding/JSONDocumentTests.cpp Walking a document
///
/// Reads RFC 8259 strictly, in UTF-8, UTF-16 or UTF-32, with or without a byte-order mark. Nesting is limited
/// to 512. Of members with one key the last value counts, at the place of the first. 16 bytes for each value.
/// Not synchronised, `find` included.
class ORRENBY_EXPORT JSONDocument {
public:
    /// A value's place in the document. Good for this document only.
    using Node = std::uint32_t;
    static constexpr Node root = 0;                       ///< The outermost value; every document has it.
    static constexpr Node absent = static_cast<Node>(-1); ///< What the searches give where there is nothing.

    /// Throws `JSONReadError`. Linear.
    explicit JSONDocument(std::span<const std::byte> data);
    explicit JSONDocument(std::string_view utf8);
    JSONDocument(const JSONDocument&) = delete;
    JSONDocument& operator=(const JSONDocument&) = delete;
    ~JSONDocument();

    /// What a value is. The node must be one of this document and not `absent`, here and in the next one.
    JSONKind kind(Node node) const noexcept { return m_table.nodes[node].kind(); }

    /// Whether a boolean is true; `false` for everything that is no boolean.
    bool boolean(Node node) const noexcept { return m_table.nodes[node].is(detail::JSONNode::isTrue); }

    /// Of a text, without quotes and escapes; of a number, as it is written.
    std::string_view text(Node node) const noexcept { return m_table.text(m_table.nodes[node]); }

    /// Whether a number is written as an integer: digits after an optional sign.
    bool isPlainNumber(Node node) const noexcept { return m_table.nodes[node].is(detail::JSONNode::isPlain); }

    /// Under which a value stands in its object; empty for all others.
    std::string_view key(Node node) const noexcept { return m_table.key(m_table.nodes[node]); }

    /// The values in a list or object are those from `firstIn` up to, not including, `endOf`, each followed
    /// by its `next`.
    static Node firstIn(Node node) noexcept { return node + 1; }
    Node endOf(Node node) const noexcept { return m_table.nodes[node].extent; }
    Node next(Node node) const noexcept { return m_table.next(node); }

    /// The number of values in a list or object. Linear in it.
    std::size_t count(Node node) const noexcept;

    /// The member of an object with this key, or `absent`.
    ///
    /// `cursor` says where to look first: `firstIn(object)`, or what the last call made of it. Members that
    /// are asked for in their order are found at once.
    ///
    /// Otherwise up to 32 members are searched one by one, more by a hash index that is made at the first
    /// need.
    Node find(Node object, std::string_view key, Node& cursor) const;
    Node find(Node object, std::string_view key) const;

    /// Of the value's first byte.
    std::size_t offset(Node node) const noexcept { return m_table.nodes[node].offset; }
    TextPosition position(Node node) const { return TextPosition::in(m_table.source, offset(node)); }

    /// The text in UTF-8, without a byte-order mark.
    std::string_view source() const noexcept { return m_table.source; }

    /// Bytes that the table takes, the text itself not counted.
    std::size_t byteCount() const noexcept;

    /// All values.
    std::size_t nodeCount() const noexcept { return m_table.nodes.size(); }

private:
    struct WideObjects;

    Node findIndexed(Node object, std::string_view key, Node& cursor) const;

    std::string m_converted; ///< Of a text in UTF-16 or UTF-32.
    detail::JSONTable m_table;
    mutable detail::Owned<WideObjects> m_wideObjects;
};

} // namespace orrenby
