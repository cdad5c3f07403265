#include "Orrenby/Platform/Coding/JSONTextWriter.hpp"

#include <algorithm>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

using Node = JSONDocument::Node;

/// Recursive, which a document's limit of nesting allows.
class Writer {
public:
    Writer(const JSONDocument& document, JSONOutput output, JSONTextBuffer& text)
        : m_document(document)
        , m_output(output)
        , m_text(text)
    {}

    void write(Node node)
    {
        switch (m_document.kind(node)) {
        case JSONKind::Null:
            return m_text.append("null");
        case JSONKind::Bool:
            return m_text.append(m_document.boolean(node) ? "true" : "false");
        case JSONKind::Number:
            return m_text.append(m_document.text(node));
        case JSONKind::Text:
            m_text.appendText(m_document.text(node));
            return;
        case JSONKind::List:
            return writeAll(node, '[', ']', false);
        case JSONKind::Object:
            return writeAll(node, '{', '}', true);
        }
    }

private:
    void writeAll(Node holder, char opening, char closing, bool hasKeys)
    {
        m_text.append(opening);
        ++m_depth;
        bool isFirst = true;
        const auto writeOne = [&](Node node) {
            if (!isFirst)
                m_text.append(',');
            isFirst = false;
            startLine();
            if (hasKeys)
                writeKey(node);
            write(node);
        };
        if (hasKeys && m_output.sortedKeys)
            for (const Node node : sortedMembers(holder))
                writeOne(node);
        else
            for (auto node = JSONDocument::firstIn(holder); node < m_document.endOf(holder);
                 node = m_document.next(node))
                writeOne(node);
        --m_depth;
        if (!isFirst)
            startLine();
        m_text.append(closing);
    }

    void writeKey(Node node)
    {
        m_text.appendText(m_document.key(node));
        m_text.append(m_output.prettyPrinted ? " : " : ":");
    }

    void startLine()
    {
        if (!m_output.prettyPrinted)
            return;
        m_text.append('\n');
        for (std::size_t level = 0; level < m_depth; ++level)
            m_text.append("  ");
    }

    std::vector<Node> sortedMembers(Node object) const
    {
        std::vector<Node> members;
        for (auto node = JSONDocument::firstIn(object); node < m_document.endOf(object);
             node = m_document.next(node))
            members.push_back(node);
        std::sort(members.begin(), members.end(),
            [&](Node first, Node second) { return m_document.key(first) < m_document.key(second); });
        return members;
    }

    const JSONDocument& m_document;
    JSONOutput m_output;
    JSONTextBuffer& m_text;
    std::size_t m_depth = 0;
};

} // namespace

void writeJSON(const JSONDocument& document, JSONOutput output, JSONTextBuffer& text)
{
    Writer(document, output, text).write(JSONDocument::root);
}

} // namespace orrenby::inline ORRENBY_ABI::detail
