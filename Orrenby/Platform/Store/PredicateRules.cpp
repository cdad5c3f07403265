#include "Orrenby/Platform/Store/PredicateTree.hpp"
#include "Orrenby/Platform/Store/ValueOrder.hpp"
#include <cmath>
#include <unicode/uchar.h>
#include <unicode/utf8.h>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

/// The characters of a text, folded one by one if case is ignored. Bytes that are no text are characters of
/// their own, equal to themselves only.
class Characters {
public:
    Characters(std::string_view text, bool ignoresCase)
        : m_text(text)
        , m_ignoresCase(ignoresCase)
    {}

    bool isAtEnd() const { return m_place == m_text.size(); }
    char byte() const { return m_text[m_place]; }
    void skipByte() { ++m_place; }

    UChar32 next()
    {
        constexpr UChar32 afterAllCharacters = 0x110000;
        const auto* const bytes = reinterpret_cast<const std::uint8_t*>(m_text.data());
        const auto first = bytes[m_place];
        UChar32 character = 0;
        auto place = m_place;
        U8_NEXT(bytes, place, m_text.size(), character);
        if (character < 0) {
            ++m_place;
            return afterAllCharacters + first;
        }
        m_place = place;
        return m_ignoresCase ? u_foldCase(character, U_FOLD_CASE_DEFAULT) : character;
    }

private:
    std::string_view m_text;
    bool m_ignoresCase;
    std::size_t m_place = 0;
};

/// Whether the text begins with the other.
bool begins(Characters text, Characters other, bool isWhole)
{
    while (!other.isAtEnd())
        if (text.isAtEnd() || text.next() != other.next())
            return false;
    return !isWhole || text.isAtEnd();
}

bool contains(Characters text, const Characters& other, bool isAtEnd)
{
    for (;; text.next()) {
        if (begins(text, other, isAtEnd))
            return true;
        if (text.isAtEnd())
            return false;
    }
}

/// Goes back to the latest star only: time grows with the product of the lengths, not faster.
bool isLike(Characters text, Characters pattern)
{
    std::optional<Characters> patternAfterStar;
    auto textAtStar = text;
    for (;;) {
        if (!pattern.isAtEnd() && pattern.byte() == '*') {
            pattern.skipByte();
            patternAfterStar = pattern;
            textAtStar = text;
            continue;
        }
        if (text.isAtEnd() && pattern.isAtEnd())
            return true;
        if (text.isAtEnd())
            return false; // a star that took less would leave more to match
        bool isMatch = false;
        if (!pattern.isAtEnd()) {
            const char sign = pattern.byte();
            if (sign == '?') {
                pattern.skipByte();
                text.next();
                isMatch = true;
            } else {
                if (sign == '\\') {
                    auto escaped = pattern;
                    escaped.skipByte();
                    if (!escaped.isAtEnd())
                        pattern = escaped;
                }
                isMatch = text.next() == pattern.next();
            }
        }
        if (isMatch)
            continue;
        if (!patternAfterStar)
            return false;
        textAtStar.next();
        text = textAtStar;
        pattern = *patternAfterStar;
    }
}

template <class T> int ordered(T first, T second) { return first < second ? -1 : second < first ? 1 : 0; }

/// By their exact values, although not every integer is a floating number.
int comparedExactly(std::int64_t integer, double number)
{
    constexpr double afterAllIntegers = 9223372036854775808.0;
    if (number >= afterAllIntegers)
        return -1;
    if (number < -afterAllIntegers)
        return 1;
    const double whole = std::trunc(number);
    const int comparison = ordered(integer, static_cast<std::int64_t>(whole));
    return comparison != 0 ? comparison : ordered(whole, number);
}

bool isNoNumber(const Any& value)
{
    const auto* const number = value.get<double>();
    const auto* const date = value.get<Date>();
    return (number != nullptr && std::isnan(*number))
        || (date != nullptr && std::isnan(date->secondsSince1970()));
}

/// Nothing for what has no order: empty values, and what is no number, which is never stored.
std::optional<int> order(const Any& first, const Any& second)
{
    if (first.isNull() || second.isNull() || isNoNumber(first) || isNoNumber(second))
        return std::nullopt;
    const auto* const integer = first.get<std::int64_t>();
    const auto* const otherInteger = second.get<std::int64_t>();
    const auto* const number = first.get<double>();
    const auto* const otherNumber = second.get<double>();
    if (integer != nullptr && otherNumber != nullptr)
        return comparedExactly(*integer, *otherNumber);
    if (number != nullptr && otherInteger != nullptr)
        return -comparedExactly(*otherInteger, *number);
    return compareValues(first, second);
}

} // namespace

bool matchesText(PredicateOperator operation, bool ignoresCase, std::string_view text, std::string_view other)
{
    const Characters characters(text, ignoresCase);
    const Characters wanted(other, ignoresCase);
    switch (operation) {
    case PredicateOperator::BeginsWith:
        return ignoresCase ? begins(characters, wanted, false) : text.starts_with(other);
    case PredicateOperator::Contains:
        return ignoresCase ? contains(characters, wanted, false) : text.find(other) != std::string_view::npos;
    case PredicateOperator::EndsWith:
        return ignoresCase ? contains(characters, wanted, true) : text.ends_with(other);
    default:
        return isLike(characters, wanted);
    }
}

bool fulfils(const Any& left, PredicateOperator operation, bool ignoresCase, const Any& right)
{
    if (comparesTexts(operation))
        return !left.isNull() && !right.isNull()
            && matchesText(operation, ignoresCase, left.text(), right.text());
    const auto comparison = order(left, right);
    const bool isEqual = comparison ? *comparison == 0 : left.isNull() && right.isNull();
    switch (operation) {
    case PredicateOperator::Equal:
        return isEqual;
    case PredicateOperator::NotEqual:
        return !isEqual;
    case PredicateOperator::Less:
        return comparison && *comparison < 0;
    case PredicateOperator::LessOrEqual:
        return comparison && *comparison <= 0;
    case PredicateOperator::Greater:
        return comparison && *comparison > 0;
    default:
        return comparison && *comparison >= 0;
    }
}

} // namespace orrenby::inline ORRENBY_ABI::detail
