#include "Orrenby/Standard/JSON/JSONPointer.hpp"

#include "Orrenby/Platform/Objects/Describe.hpp"
#include <charconv>

namespace orrenby::inline ORRENBY_ABI {

namespace {

/// The token of a step whose text has no stray `~`.
std::string unescaped(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (text[index] != '~')
            result += text[index];
        else
            result += text[++index] == '0' ? '~' : '/';
    }
    return result;
}

bool isIndex(std::string_view token)
{
    if (token.empty() || (token.front() == '0' && token.size() > 1))
        return false;
    return token.find_first_not_of("0123456789") == std::string_view::npos;
}

bool isBehindTheLast(std::string_view token) { return token == "-"; }

/// The index as far as there can be such a list.
std::optional<std::size_t> indexFrom(std::string_view token)
{
    std::size_t index = 0;
    if (!isIndex(token)
        || std::from_chars(token.data(), token.data() + token.size(), index).ec != std::errc())
        return std::nullopt;
    return index;
}

} // namespace

JSONPointer::Place::Place(const Any& value)
    : m_value(&value)
    , m_dictionary(value.get<Dictionary>())
    , m_list(value.get<Array>())
{}

Any JSONPointer::Place::value() const
{
    if (m_value != nullptr)
        return *m_value;
    return m_dictionary != nullptr ? Any(*m_dictionary) : Any(*m_list);
}

std::optional<JSONPointerError> JSONPointer::malformed(std::string_view text)
{
    const auto errorAt = [&](std::size_t offset, std::string reason) {
        reason += " (offset " + describe(offset) + ")";
        return JSONPointerError({.kind = JSONPointerError::Kind::Malformed,
            .pointer = std::string(text),
            .reason = std::move(reason),
            .offset = offset});
    };
    if (!text.empty() && text.front() != '/')
        return errorAt(0, "it does not begin with /");
    for (auto tilde = text.find('~'); tilde != std::string_view::npos; tilde = text.find('~', tilde + 1))
        if (tilde + 1 == text.size() || (text[tilde + 1] != '0' && text[tilde + 1] != '1'))
            return errorAt(tilde, "a ~ is followed by neither 0 nor 1");
    return std::nullopt;
}

JSONPointer::JSONPointer(std::string_view text)
{
    if (auto error = malformed(text))
        throw *std::move(error);
    while (!text.empty()) {
        text.remove_prefix(1);
        const auto token = text.substr(0, text.find('/'));
        m_tokens.push_back(unescaped(token));
        text.remove_prefix(token.size());
    }
}

std::optional<JSONPointer> JSONPointer::make(std::string_view text)
{
    return malformed(text) ? std::nullopt : std::optional(JSONPointer(text));
}

Result<JSONPointer, JSONPointerError> JSONPointer::tryMake(std::string_view text)
{
    using Outcome = Result<JSONPointer, JSONPointerError>;
    if (auto error = malformed(text))
        return Outcome::failure(*std::move(error));
    return Outcome::success(JSONPointer(text));
}

JSONPointer JSONPointer::fromTokens(std::vector<std::string> tokens)
{
    JSONPointer result;
    result.m_tokens = std::move(tokens);
    return result;
}

JSONPointer JSONPointer::appending(std::string_view token) const
{
    auto result = *this;
    result.m_tokens.emplace_back(token);
    return result;
}

JSONPointer JSONPointer::appending(std::size_t index) const { return appending(describe(index)); }

std::optional<JSONPointer> JSONPointer::parent() const
{
    if (m_tokens.empty())
        return std::nullopt;
    return fromTokens({m_tokens.begin(), m_tokens.end() - 1});
}

std::string JSONPointer::description() const { return textOf(m_tokens.size()); }

std::string JSONPointer::textOf(std::size_t count) const
{
    std::string result;
    for (std::size_t index = 0; index < count; ++index) {
        result += '/';
        for (const char character : m_tokens[index]) {
            if (character == '~')
                result += "~0";
            else if (character == '/')
                result += "~1";
            else
                result += character;
        }
    }
    return result;
}

const Any* JSONPointer::step(const Place& place, std::string_view token)
{
    if (const auto* dictionary = place.dictionary())
        return dictionary->find(token);
    const auto* list = place.list();
    const auto index = list != nullptr ? indexFrom(token) : std::nullopt;
    return index && *index < list->size() ? &(*list)[*index] : nullptr;
}

std::optional<Any> JSONPointer::followed(Place place) const
{
    for (const auto& token : m_tokens) {
        const auto* next = step(place, token);
        if (next == nullptr)
            return std::nullopt;
        place = Place(*next);
    }
    return place.value();
}

JSONPointerError JSONPointer::stuck(Place place) const
{
    std::size_t depth = 0;
    for (const Any* next = nullptr; (next = step(place, m_tokens[depth])) != nullptr; ++depth)
        place = Place(*next);

    const auto& token = m_tokens[depth];
    const auto here = depth == 0 ? "the root" : textOf(depth);
    auto content = JSONPointerError::Content{
        .kind = JSONPointerError::Kind::NotFound, .pointer = textOf(depth + 1), .value = place.value()};
    if (place.dictionary() != nullptr)
        content.reason = here + " has no such member";
    else if (place.list() == nullptr) {
        content.kind = JSONPointerError::Kind::NotAContainer;
        content.reason = here + " is " + (content.value.isNull() ? "null" : "a " + content.value.typeName());
    } else if (isIndex(token) || isBehindTheLast(token))
        content.reason = here + " is a list of " + describe(place.list()->size());
    else {
        content.kind = JSONPointerError::Kind::InvalidIndex;
        content.reason = token + " is no index of a list";
    }
    return JSONPointerError(std::move(content));
}

JSONPointerError JSONPointer::mismatch(const Any& value, const std::string& wanted) const
{
    const auto found = value.isNull() ? "null" : value.typeName();
    return JSONPointerError({.kind = JSONPointerError::Kind::TypeMismatch,
        .pointer = description(),
        .reason = found + " is no " + wanted,
        .value = value});
}

} // namespace orrenby
