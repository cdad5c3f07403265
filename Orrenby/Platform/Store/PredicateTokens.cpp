#include "Orrenby/Platform/Store/PredicateTokens.hpp"
#include "Orrenby/Platform/Store/PredicateTree.hpp"
#include <algorithm>
#include <charconv>
#include <string>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

constexpr bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

} // namespace

bool isEqualWord(std::string_view word, std::string_view upper)
{
    return std::equal(word.begin(), word.end(), upper.begin(), upper.end(),
        [](char a, char b) { return (a >= 'a' && a <= 'z' ? static_cast<char>(a - 'a' + 'A') : a) == b; });
}

void PredicateTokens::fail(std::string_view message, std::size_t position)
{
    throwInvalidPredicate(std::string(message), position);
}

void PredicateTokens::skipBlanks()
{
    while (m_place < m_text.size() && isBlank(m_text[m_place]))
        ++m_place;
}

bool PredicateTokens::skipSignHere(std::string_view sign)
{
    if (!m_text.substr(m_place).starts_with(sign))
        return false;
    m_place += sign.size();
    return true;
}

bool PredicateTokens::skipSign(std::string_view sign)
{
    skipBlanks();
    return skipSignHere(sign);
}

void PredicateTokens::expectSign(std::string_view sign)
{
    if (!skipSign(sign))
        fail(std::string(sign) + " is expected");
}

std::string_view PredicateTokens::wordHere()
{
    skipBlanks();
    auto end = m_place;
    if (end < m_text.size() && isKeyLetter(m_text[end]))
        while (end < m_text.size() && (isKeyLetter(m_text[end]) || isDigit(m_text[end])))
            ++end;
    return m_text.substr(m_place, end - m_place);
}

bool PredicateTokens::skipWord(std::string_view upper)
{
    const auto word = wordHere();
    if (!isEqualWord(word, upper))
        return false;
    m_place += word.size();
    return true;
}

Any PredicateTokens::readText()
{
    const char quote = here();
    const auto position = m_place++;
    std::string text;
    while (m_place < m_text.size() && m_text[m_place] != quote) {
        if (m_text[m_place] == '\\') {
            // Before everything else it stays, for patterns.
            const char next = m_place + 1 < m_text.size() ? m_text[m_place + 1] : '\0';
            if (next == '\\' || next == '"' || next == '\'')
                ++m_place;
        }
        text += m_text[m_place++];
    }
    if (isAtEnd())
        fail("The text has no end", position);
    ++m_place;
    return text;
}

Any PredicateTokens::readNumber()
{
    const auto position = m_place;
    if (here() == '-')
        ++m_place;
    bool isWhole = true;
    while (isDigit(here()) || here() == '.' || here() == 'e' || here() == 'E'
        || ((here() == '-' || here() == '+') && (m_text[m_place - 1] == 'e' || m_text[m_place - 1] == 'E')))
        isWhole &= m_text[m_place] == '-' || isDigit(m_text[m_place]), ++m_place;
    const auto text = m_text.substr(position, m_place - position);
    const auto read = [&](auto number) -> Any {
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error == std::errc::result_out_of_range)
            fail("The number is too large or too small", position);
        if (error != std::errc() || end != text.data() + text.size())
            fail("This is no number", position);
        return number;
    };
    return isWhole ? read(std::int64_t()) : read(double());
}

} // namespace orrenby::inline ORRENBY_ABI::detail
