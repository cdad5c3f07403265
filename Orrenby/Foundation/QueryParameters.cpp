#include "Orrenby/Foundation/QueryParameters.hpp"

#include "Orrenby/Foundation/Text.hpp"
#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Platform/Text/PercentEncoding.hpp"
#include "Orrenby/Utilities/Log.hpp"
#include <cstdint>
#include <optional>

namespace orrenby::inline ORRENBY_ABI {

namespace {

constexpr const char* sourceFile = "Foundation/NSDictionary+Halvet";
constexpr const char* function = "urlEncodeQueryParameters()";

template <class Number> std::string floatingText(Number number)
{
    auto text = describe(number);
    if (text.ends_with(".0"))
        text.resize(text.size() - 2);
    return text;
}

/// The text of a text or a number.
std::optional<std::string> parameterText(const Any& value)
{
    if (value.kind() == Any::Kind::Text)
        return std::string(value.text());
    if (const auto* truth = value.get<bool>())
        return *truth ? "1" : "0";
    if (const auto* integer = value.get<std::int64_t>())
        return describe(*integer);
    if (const auto* large = value.get<std::uint64_t>())
        return describe(*large);
    if (const auto* number = value.get<double>())
        return floatingText(*number);
    if (const auto* number = value.get<float>())
        return floatingText(*number);
    return std::nullopt;
}

/// What a missing text looks like in a format.
std::string escapedText(std::string_view text) { return urlencode(text).value_or("(null)"); }

void addParameter(std::string& query, const Any& key, const Any& value)
{
    if (key.kind() != Any::Kind::Text) {
        Log::critical("key is not a NSString", CallSite(sourceFile, 66, function));
        return;
    }
    const auto text = parameterText(value);
    if (!text) {
        Log::critical("value is not an NSString", CallSite(sourceFile, 67, function));
        return;
    }
    if (!query.empty())
        query += '&';
    query += escapedText(key.text()) + "=" + escapedText(*text);
}

/// Takes what stands before the sign off the text, and the sign; the whole when there is none.
std::string_view takePiece(std::optional<std::string_view>& text, char sign)
{
    const auto end = text->find(sign);
    const auto piece = text->substr(0, end);
    text = end == std::string_view::npos ? std::nullopt : std::optional(text->substr(end + 1));
    return piece;
}

} // namespace

namespace detail {

std::string QuerySource::encoded() const
{
    std::string query;
    if (m_dictionary != nullptr)
        for (const auto& [key, value] : *m_dictionary)
            addParameter(query, key, value);
    else
        for (const auto& [key, value] : *m_entries)
            addParameter(query, key, value);
    return query;
}

Dictionary queryParameters(std::string_view text)
{
    Dictionary parameters;
    std::optional<std::string_view> rest = text;
    const auto whole = takePiece(rest, '?');
    rest = rest ? takePiece(rest, '?') : whole;
    while (rest) {
        std::optional<std::string_view> piece = takePiece(rest, '&');
        const auto key = takePiece(piece, '=');
        if (!piece)
            continue;
        const auto encodedKey = addingPercentEncoding(key, CharacterSet::urlQueryAllowed());
        const auto encodedValue = addingPercentEncoding(
            takePiece(piece, '='), CharacterSet::urlQueryAllowed());
        if (encodedKey && encodedValue)
            parameters.set(*encodedKey, *encodedValue);
    }
    return parameters;
}

} // namespace detail

} // namespace orrenby
