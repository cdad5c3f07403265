#include "Orrenby/Platform/Coding/AnyDecoding.hpp"

#include "Orrenby/Platform/Coding/JSONNumber.hpp"
#include "Orrenby/Platform/Objects/Array.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

using Node = JSONDocument::Node;

/// Walks a document once. Recursive, which a document's limit of nesting allows.
class AnyWalk {
public:
    explicit AnyWalk(const JSONDocument& document) noexcept
        : m_document(document)
    {}

    /// False leaves `result` as it may be.
    bool read(Node node, Any& result)
    {
        switch (m_document.kind(node)) {
        case JSONKind::Null:
            break;
        case JSONKind::Bool:
            result = m_document.boolean(node);
            return true;
        case JSONKind::Number:
            return readNumber(node, result);
        case JSONKind::Text:
            result = m_document.text(node);
            return true;
        case JSONKind::List:
            return readList(node, result);
        case JSONKind::Object:
            return readObject(node, result);
        }
        m_refused = node;
        return false;
    }

    bool readMembers(Node node, Dictionary& dictionary)
    {
        dictionary.reserve(m_document.count(node));
        const auto end = m_document.endOf(node);
        for (auto child = JSONDocument::firstIn(node); child < end; child = m_document.next(child)) {
            Any member;
            if (!read(child, member))
                return false;
            dictionary.set(m_document.key(child), std::move(member));
        }
        return true;
    }

    Node refused() const noexcept { return m_refused; }

private:
    bool readNumber(Node node, Any& result)
    {
        const auto text = m_document.text(node);
        if (const auto integer = jsonInteger(text))
            result = *integer;
        else if (const auto number = jsonDouble(text))
            result = *number;
        else {
            m_refused = node;
            return false;
        }
        return true;
    }

    bool readList(Node node, Any& result)
    {
        Array list;
        list.reserve(m_document.count(node));
        const auto end = m_document.endOf(node);
        for (auto child = JSONDocument::firstIn(node); child < end; child = m_document.next(child))
            if (!read(child, list.emplace_back()))
                return false;
        result = std::move(list);
        return true;
    }

    bool readObject(Node node, Any& result)
    {
        Dictionary dictionary;
        if (!readMembers(node, dictionary))
            return false;
        result = std::move(dictionary);
        return true;
    }

    const JSONDocument& m_document;
    Node m_refused = JSONDocument::absent;
};

} // namespace

std::optional<Any> decodeAny(const DecodingPlace& place, JSONDocument::Node& refused)
{
    refused = place.node;
    if (place.node == JSONDocument::absent)
        return std::nullopt;
    AnyWalk walk(place.document());
    std::optional<Any> result(std::in_place);
    if (!walk.read(place.node, *result)) {
        refused = walk.refused();
        result.reset();
    }
    return result;
}

std::optional<Dictionary> decodeAnyMembers(const DecodingPlace& place, JSONDocument::Node& refused)
{
    refused = place.node;
    if (place.kind() != JSONKind::Object)
        return std::nullopt;
    AnyWalk walk(place.document());
    std::optional<Dictionary> result(std::in_place);
    if (!walk.readMembers(place.node, *result)) {
        refused = walk.refused();
        result.reset();
    }
    return result;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
