#include "Orrenby/Platform/Coding/JSONTokenizer.hpp"

#include "Orrenby/Platform/Coding/JSONDistinctKeys.hpp"
#include "Orrenby/Platform/Coding/JSONReadError.hpp"
#include <boost/json/basic_parser_impl.hpp>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

constexpr std::size_t deepest = 512;

/// Fills the table from what the tokenizer reports. It reports no places: they follow from where the last
/// token ended, as only blanks, commas and colons stand between two.
class Handler {
public:
    using error_code = boost::json::error_code;
    using string_view = boost::json::string_view;
    static constexpr std::size_t max_object_size = static_cast<std::size_t>(-1);
    static constexpr std::size_t max_array_size = static_cast<std::size_t>(-1);
    static constexpr std::size_t max_key_size = static_cast<std::size_t>(-1);
    static constexpr std::size_t max_string_size = static_cast<std::size_t>(-1);

    explicit Handler(std::string_view source)
        : m_position(source.data())
    {
        table.source = source;
        // Service responses have a value for every 16 to 20 bytes.
        table.nodes.reserve(source.size() / 18 + 16);
        m_open.reserve(16);
    }

    JSONTable table;

    bool on_document_begin(error_code&) { return true; }
    bool on_document_end(error_code&) { return true; }

    bool on_object_begin(error_code&) { return open(JSONKind::Object); }
    bool on_array_begin(error_code&) { return open(JSONKind::List); }
    bool on_object_end(std::size_t count, error_code&)
    {
        const auto object = close();
        m_distinctKeys.check(table, object, count, m_open.size());
        return true;
    }
    bool on_array_end(std::size_t, error_code&)
    {
        close();
        return true;
    }

    bool on_key_part(string_view part, std::size_t, error_code&) { return copy(part); }
    bool on_key(string_view text, std::size_t, error_code&)
    {
        if (isInPlace(text) && text.size() <= JSONNode::longestKeyInPlace) {
            m_keyOffset = offsetOf(text.data());
            m_keyBits = static_cast<std::uint32_t>(text.size()) << JSONNode::keyLengthShift;
            m_position = text.data() + text.size() + 1;
            return true;
        }
        m_position = endOfText(tokenStart());
        copy(text);
        m_keyOffset = endCopy();
        m_keyBits = JSONNode::keyIsCopied;
        return true;
    }

    bool on_string_part(string_view part, std::size_t, error_code&) { return copy(part); }
    bool on_string(string_view text, std::size_t, error_code&)
    {
        if (isInPlace(text)) {
            m_position = text.data() + text.size() + 1;
            // Counted from the source: g++ 12 warns of what lies before the parser's own buffer otherwise.
            return push(JSONKind::Text, offsetOf(text.data()) - 1, text.size(), 0);
        }
        const char* start = tokenStart();
        m_position = endOfText(start);
        copy(text);
        return push(JSONKind::Text, offsetOf(start), endCopy(), JSONNode::textIsCopied);
    }

    bool on_number_part(string_view, error_code&) { return true; }
    bool on_int64(std::int64_t, string_view text, error_code&) { return number(text, JSONNode::isPlain); }
    bool on_uint64(std::uint64_t, string_view text, error_code&) { return number(text, JSONNode::isPlain); }
    bool on_double(double, string_view text, error_code&) { return number(text, 0); }
    bool on_bool(bool value, error_code&)
    {
        return literal(JSONKind::Bool, value ? 4 : 5, value ? JSONNode::isTrue : 0);
    }
    bool on_null(error_code&) { return literal(JSONKind::Null, 4, 0); }
    bool on_comment_part(string_view, error_code&) { return true; }
    bool on_comment(string_view, error_code&) { return true; }

private:
    static constexpr std::uint32_t noCopy = static_cast<std::uint32_t>(-1);

    std::uint32_t offsetOf(const char* place) const
    {
        return static_cast<std::uint32_t>(place - table.source.data());
    }

    const char* tokenStart() const
    {
        const char* place = m_position;
        while (*place == ' ' || *place == ',' || *place == ':' || *place == '\n' || *place == '\r'
            || *place == '\t')
            ++place;
        return place;
    }

    /// Behind the closing quote of the text that starts with a quote here. There is one: it has been read.
    static const char* endOfText(const char* place)
    {
        for (++place; *place != '"'; ++place)
            if (*place == '\\')
                ++place;
        return place + 1;
    }

    /// Whether the text stands in the source as it is, and all of it was reported at once.
    bool isInPlace(string_view text) const
    {
        const auto begin = reinterpret_cast<std::uintptr_t>(table.source.data());
        const auto place = reinterpret_cast<std::uintptr_t>(text.data());
        return m_copy == noCopy && place > begin && place < begin + table.source.size();
    }

    bool copy(string_view part)
    {
        if (m_copy == noCopy) {
            m_copy = static_cast<std::uint32_t>(table.copies.size());
            table.copies.append(sizeof(std::uint32_t), '\0');
        }
        table.copies.append(part.data(), part.size());
        return true;
    }

    std::uint32_t endCopy()
    {
        const auto place = std::exchange(m_copy, noCopy);
        const auto length = static_cast<std::uint32_t>(table.copies.size() - place - sizeof(std::uint32_t));
        std::memcpy(table.copies.data() + place, &length, sizeof length);
        return place;
    }

    bool push(JSONKind kind, std::uint32_t offset, std::size_t extent, std::uint32_t flags)
    {
        table.nodes.push({m_keyOffset, m_keyBits | flags | static_cast<std::uint32_t>(kind), offset,
            static_cast<std::uint32_t>(extent)});
        m_keyOffset = 0;
        m_keyBits = 0;
        return true;
    }

    bool open(JSONKind kind)
    {
        const char* start = tokenStart();
        m_position = start + 1;
        m_open.push_back(table.nodes.size());
        return push(kind, offsetOf(start), 0, 0);
    }

    std::uint32_t close()
    {
        m_position = tokenStart() + 1;
        const auto index = m_open.back();
        m_open.pop_back();
        table.nodes[index].extent = table.nodes.size();
        return index;
    }

    bool number(string_view text, std::uint32_t flags)
    {
        const char* start = tokenStart();
        m_position = text.data() + text.size();
        return push(JSONKind::Number, offsetOf(start), static_cast<std::size_t>(m_position - start), flags);
    }

    bool literal(JSONKind kind, std::size_t length, std::uint32_t flags)
    {
        const char* start = tokenStart();
        m_position = start + length;
        return push(kind, offsetOf(start), 0, flags);
    }

    const char* m_position;
    std::uint32_t m_keyOffset = 0;
    std::uint32_t m_keyBits = 0;
    std::uint32_t m_copy = noCopy;
    std::vector<std::uint32_t> m_open;
    JSONDistinctKeys m_distinctKeys;
};

[[noreturn]] void fail(JSONReadError::Kind kind, std::string_view text, std::size_t offset)
{
    throw JSONReadError(kind, TextPosition::in(text, offset));
}

JSONReadError::Kind kindOf(const boost::json::error_code& code)
{
    if (code == boost::json::error::incomplete)
        return JSONReadError::Kind::UnexpectedEnd;
    if (code == boost::json::error::too_deep)
        return JSONReadError::Kind::TooDeep;
    return JSONReadError::Kind::UnexpectedText;
}

} // namespace

JSONTable readJSON(std::string_view text)
{
    // Node numbers and offsets have 32 bits, and so have copies, which are never longer than the text they
    // stem from.
    if (text.size() >= 0xFFFFFFF0U)
        fail(JSONReadError::Kind::TooLarge, {}, 0);

    boost::json::parse_options options;
    options.max_depth = deepest;
    boost::json::basic_parser<Handler> parser(options, text);
    boost::json::error_code code;
    auto end = parser.write_some(false, text.data(), text.size(), code);
    if (code)
        fail(kindOf(code), text, end);
    while (end < text.size()
        && (text[end] == ' '
            || (text[end] >= '\t' && text[end] <= '\r' && text[end] != '\v' && text[end] != '\f')))
        ++end;
    if (end < text.size())
        fail(JSONReadError::Kind::TrailingText, text, end);
    return std::move(parser.handler().table);
}

} // namespace orrenby::inline ORRENBY_ABI::detail
