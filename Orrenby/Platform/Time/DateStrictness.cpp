#include "Orrenby/Platform/Time/DateStrictness.hpp"

#include <algorithm>
#include <unicode/uchar.h>
#include <unicode/utf16.h>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

bool isLetter(char16_t unit) { return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z'); }

/// The scalar value that begins at a place. U+FFFF behind the end.
char32_t scalarAt(std::u16string_view text, std::size_t place)
{
    if (place >= text.size())
        return 0xFFFF;
    UChar32 scalar = 0;
    U16_GET(text, 0, place, text.size(), scalar);
    return static_cast<char32_t>(scalar);
}

bool isDigit(char32_t scalar) { return u_isdigit(static_cast<UChar32>(scalar)); }

/// ICU would read 2E9 as a number. Where numbers are counted there is one too many then.
bool isExponent(std::u16string_view text, std::size_t place)
{
    if (text[place] != u'E' && text[place] != u'e')
        return false;
    const auto next = scalarAt(text, place + 1);
    return isDigit(next == u'+' || next == u'-' ? scalarAt(text, place + 2) : next);
}

} // namespace

DateStrictness::DateStrictness(std::u16string_view pattern)
{
    bool isQuoted = false;
    char16_t field = 0;
    for (std::size_t place = 0; place < pattern.size(); ++place) {
        const char16_t unit = pattern[place];
        const bool isDoubled = unit == u'\'' && place + 1 < pattern.size() && pattern[place + 1] == unit;
        if (unit == u'\'' && !isDoubled) {
            isQuoted = !isQuoted;
        } else if (isLetter(unit) && !isQuoted) {
            addLetter(unit, field);
            field = unit;
        } else {
            addSign(unit);
            field = 0;
            place += isDoubled ? 1 : 0;
        }
    }
}

void DateStrictness::addSign(char16_t unit)
{
    m_end += unit;
    m_hasDigits = m_hasDigits || u_isdigit(unit);
    if (!u_isUWhiteSpace(unit))
        return;
    m_hasBlanks = true;
    m_beginsBlank = m_beginsBlank || !m_hasFields;
}

void DateStrictness::addLetter(char16_t letter, char16_t previous)
{
    constexpr std::u16string_view numbers = u"yYuUMLDdFHhKkmsSAgwWQqr";
    constexpr std::u16string_view names = u"MLQqU"; // with three letters or more
    constexpr std::u16string_view longOnes = u"SAg";
    m_length = letter == previous ? m_length + 1 : 1;
    if (numbers.find(letter) == std::u16string_view::npos
        || (m_length > 2 && names.find(letter) != std::u16string_view::npos))
        m_hasNames = true;
    if (previous == 0)
        m_numbers.emplace_back();
    auto& number = m_numbers.back();
    ++number.digits;
    number.isAlone = number.isAlone && (previous == 0 || previous == letter);
    number.isLong = longOnes.find(letter) != std::u16string_view::npos;
    m_hasFields = true;
    m_end.clear();
}

int DateStrictness::Number::limit() const
{
    constexpr int digitsOfYears = 6;
    constexpr int digitsOfFractions = 9;
    return isAlone ? std::max(digits, isLong ? digitsOfFractions : digitsOfYears) : digits;
}

bool DateStrictness::admits(std::u16string_view text) const
{
    return text.ends_with(m_end) && admitsBlanks(text) && admitsNumbers(text);
}

bool DateStrictness::admitsBlanks(std::u16string_view text) const
{
    if (m_hasBlanks || m_hasNames)
        return m_beginsBlank || !u_isUWhiteSpace(static_cast<UChar32>(scalarAt(text, 0)));
    return std::none_of(text.begin(), text.end(), [](char16_t unit) { return u_isUWhiteSpace(unit); });
}

/// One number after the other against that of the pattern, unless names or signs may hold digits too.
bool DateStrictness::admitsNumbers(std::u16string_view text) const
{
    std::size_t number = 0;
    int digits = 0;
    for (std::size_t place = 0; place <= text.size();) {
        const auto scalar = scalarAt(text, place);
        if (isDigit(scalar)) {
            ++digits;
        } else if (digits > 0) {
            const bool mayGoOn = place < text.size() && !areNumbersKnown();
            if (digits > limitOf(number++) || (mayGoOn && isExponent(text, place)))
                return false;
            digits = 0;
        }
        place += place < text.size() ? U16_LENGTH(scalar) : 1;
    }
    return true;
}

int DateStrictness::limitOf(std::size_t number) const
{
    if (areNumbersKnown())
        return number < m_numbers.size() ? m_numbers[number].limit() : 0;
    int limit = 0;
    for (const auto& any : m_numbers)
        limit = std::max(limit, any.limit());
    return limit;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
