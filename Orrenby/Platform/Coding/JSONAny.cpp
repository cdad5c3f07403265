#include "Orrenby/Platform/Coding/JSONAny.hpp"

#include "Orrenby/Platform/Coding/CodingTexts.hpp"
#include "Orrenby/Platform/Coding/DecodingError.hpp"
#include "Orrenby/Platform/Coding/EncodingError.hpp"
#include "Orrenby/Platform/Coding/JSONNumber.hpp"
#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include <cmath>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

/// The nearest double. One that is an `Int` is held as that, as it would be were it written that way.
Any roundedNumber(double number)
{
    constexpr double endOfIntegers = 0x1p63;
    const bool isNegativeZero = number == 0 && std::signbit(number);
    const bool isInteger = std::trunc(number) == number && number >= -endOfIntegers && number < endOfIntegers;
    return isInteger && !isNegativeZero ? Any::parsedNumber(static_cast<std::int64_t>(number))
                                        : Any::parsedNumber(number);
}

Any numberFromJSON(const JSONDocument& document, JSONDocument::Node node, const CodingStep* path)
{
    const auto text = document.text(node);
    const bool isPlain = document.isPlainNumber(node);
    // `-0` is an integer; `-0.0` keeps its sign.
    if (const auto integer = jsonInteger(text); integer && (isPlain || *integer != 0))
        return Any::parsedNumber(*integer);
    if (const auto large = jsonUnsigned(text); large && isPlain)
        return Any::parsedNumber(*large);
    if (const auto number = jsonDouble(text))
        return roundedNumber(*number);
    throw DecodingError::dataCorrupted(
        {codingPath(path), numberDoesNotFit(text, "Double"), {}, document.position(node)});
}

/// Recursive, which a document's limit of nesting allows.
Any valueFromJSON(const JSONDocument& document, JSONDocument::Node node, const CodingStep* path)
{
    switch (document.kind(node)) {
    case JSONKind::Null:
        return {};
    case JSONKind::Bool:
        return document.boolean(node);
    case JSONKind::Number:
        return numberFromJSON(document, node, path);
    case JSONKind::Text:
        return document.text(node);
    case JSONKind::List: {
        Array list;
        list.reserve(document.count(node));
        CodingStep step{path, {}, 0};
        for (auto child = JSONDocument::firstIn(node); child < document.endOf(node);
             child = document.next(child), ++step.index)
            list.push_back(valueFromJSON(document, child, &step));
        return list;
    }
    case JSONKind::Object: {
        Dictionary dictionary;
        dictionary.reserve(document.count(node));
        for (auto child = JSONDocument::firstIn(node); child < document.endOf(node);
             child = document.next(child)) {
            const CodingStep step{path, document.key(child), -1};
            dictionary.set(document.key(child), valueFromJSON(document, child, &step));
        }
        return dictionary;
    }
    }
    return {};
}

class AnyWriter {
public:
    AnyWriter(JSONTextBuffer& text, std::size_t depth)
        : m_text(text)
        , m_depth(depth)
    {}

    void write(const Any& value, const CodingStep* path)
    {
        switch (value.kind()) {
        case Any::Kind::Null:
            return m_text.append("null");
        case Any::Kind::Bool:
            return m_text.append(*value.get<bool>() ? "true" : "false");
        case Any::Kind::Int:
            return m_text.appendInteger(*value.get<std::int64_t>());
        case Any::Kind::Float:
            requireFinite(*value.get<float>(), value, path);
            return m_text.appendFloat(*value.get<float>());
        case Any::Kind::Double:
            requireFinite(*value.get<double>(), value, path);
            return m_text.appendDouble(*value.get<double>());
        case Any::Kind::Text:
            return writeText(value.text(), value, path);
        case Any::Kind::List:
            return writeList(value, path);
        case Any::Kind::Dictionary:
            return writeDictionary(value, path);
        default:
            if (const auto* large = value.get<std::uint64_t>())
                return m_text.appendUnsigned(*large);
            fail(value, path, "JSON does not support type " + value.typeName());
        }
    }

private:
    void writeList(const Any& value, const CodingStep* path)
    {
        enter(value, path);
        m_text.append('[');
        CodingStep step{path, {}, 0};
        for (const Any& element : *value.get<Array>()) {
            if (step.index > 0)
                m_text.append(',');
            write(element, &step);
            ++step.index;
        }
        m_text.append(']');
        --m_depth;
    }

    void writeDictionary(const Any& value, const CodingStep* path)
    {
        enter(value, path);
        m_text.append('{');
        bool isFirst = true;
        for (const auto& [key, member] : *value.get<Dictionary>()) {
            const CodingStep step{path, key, -1};
            if (!isFirst)
                m_text.append(',');
            isFirst = false;
            writeText(key, key, &step);
            m_text.append(':');
            write(member, &step);
        }
        m_text.append('}');
        --m_depth;
    }

    void writeText(std::string_view text, const Any& value, const CodingStep* path)
    {
        if (!m_text.appendText(text))
            fail(value, path, std::string(notUTF8));
    }

    void enter(const Any& value, const CodingStep* path)
    {
        if (++m_depth > deepestJSON)
            fail(value, path, std::string(nestedTooDeep));
    }

    static void requireFinite(double number, const Any& value, const CodingStep* path)
    {
        if (!std::isfinite(number))
            fail(value, path, noNumberFor(number));
    }

    [[noreturn]] static void fail(const Any& value, const CodingStep* path, std::string message)
    {
        throw EncodingError::invalidValue(value, {codingPath(path), std::move(message), {}});
    }

    JSONTextBuffer& m_text;
    std::size_t m_depth;
};

} // namespace

Any anyFromJSON(const JSONDocument& document, JSONDocument::Node node, const CodingStep* path)
{
    return valueFromJSON(document, node, path);
}

void writeAnyAsJSON(const Any& value, JSONTextBuffer& text, const CodingStep* path, std::size_t depth)
{
    AnyWriter(text, depth).write(value, path);
}

} // namespace orrenby::inline ORRENBY_ABI::detail
