#pragma once

/// @file
/// The words, signs and values of a predicate's text. Not in the umbrella header: predicates read with it.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include <cstddef>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI::detail {

constexpr bool isKeyLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }
constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// Whether both are one word, in whatever case the first is.
bool isEqualWord(std::string_view word, std::string_view upper);

/// Goes through a text from its start to its end, piece by piece. Every failure is a `StoreError` of the kind
/// `InvalidPredicate` with the byte at which it is.
///
/// Not synchronised.
class PredicateTokens {
public:
    explicit PredicateTokens(std::string_view text)
        : m_text(text)
    {}

    [[noreturn]] void fail(std::string_view message) const { fail(message, m_place); }
    [[noreturn]] static void fail(std::string_view message, std::size_t position);

    std::size_t place() const { return m_place; }
    bool isAtEnd() const { return m_place == m_text.size(); }
    /// The byte at the place; null at the end.
    char here() const { return m_place < m_text.size() ? m_text[m_place] : '\0'; }

    void skip(std::size_t count) { m_place += count; }
    void skipBlanks();

    /// Without blanks before it.
    bool skipSignHere(std::string_view sign);
    /// Blanks before a sign or a word are passed over, whether it is there or not.
    bool skipSign(std::string_view sign);
    void expectSign(std::string_view sign);
    /// Empty when there is something else.
    std::string_view wordHere();
    bool skipWord(std::string_view upper);

    /// What stands between quotation marks, of which the first is here.
    Any readText();
    /// What begins here with a digit, a sign or a point.
    Any readNumber();

private:
    const std::string_view m_text;
    std::size_t m_place = 0;
};

} // namespace orrenby::inline ORRENBY_ABI::detail
