#include "Orrenby/Platform/Text/DataDetectorAddresses.hpp"

#include <algorithm>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

using Kind = AddressToken::Kind;

constexpr std::size_t mostWordsOfPlace = 6;
constexpr std::size_t mostWordsOfCountry = 4;
constexpr std::size_t mostUnits = 3;

} // namespace

AddressTail::End AddressTail::after(std::size_t end) const
{
    // The full stop of "Main St." belongs to what follows, if that is a part of the address.
    const auto dot = m_text.at(end) == '.' ? 1U : 0U;
    if (const auto unit = afterUnits(end + dot); unit > end + dot)
        end = unit;
    const auto begin = afterSeparator(m_text.at(end) == '.' ? end + 1 : end);
    auto place = postcodeThenPlace(begin);
    if (!place)
        place = placeThenPostcode(begin);
    if (!place)
        return {end, false};
    return {country(afterSeparator(*place)).value_or(*place), true};
}

std::size_t AddressTail::afterSeparator(std::size_t place) const
{
    auto token = m_tokens.at(place);
    if (token.kind == Kind::Comma) {
        place = token.next();
        token = m_tokens.at(place);
    }
    return token.kind == Kind::Break ? token.next() : place;
}

std::size_t AddressTail::afterUnits(std::size_t end) const
{
    for (std::size_t count = 0; count < mostUnits; ++count) {
        const auto next = afterUnit(end);
        if (next == end)
            break;
        end = next;
    }
    return end;
}

std::size_t AddressTail::afterUnit(std::size_t end) const
{
    const auto first = m_tokens.at(afterSeparator(end));
    if (first.kind == Kind::Other && m_text.at(first.span.begin) == '#') {
        const auto number = m_tokens.at(first.span.end);
        return number.kind == Kind::Number ? number.span.end : end;
    }
    const auto isUnit = [this](const AddressToken& token) {
        return token.kind == Kind::Word && m_rules.hasRole(m_text.lowered(token.span), StreetRole::Unit);
    };
    const auto second = m_tokens.at(first.next());
    if (first.kind == Kind::Number && first.isOrdinal && isUnit(second)) // 4th Floor
        return second.span.end;
    const bool isNamed = second.kind == Kind::Number
        || (second.kind == Kind::Word && second.isCapital && second.span.end - second.span.begin <= 2);
    return isUnit(first) && isNamed ? second.span.end : end;
}

std::size_t AddressTail::matched(std::string_view form, std::size_t place) const
{
    const auto begin = place;
    for (const char sign : form) {
        const auto byte = m_text.at(place);
        if (sign == ' ') {
            const auto length = m_text.blankLengthAt(place);
            if (length == 0)
                return 0;
            place += length;
            continue;
        }
        const bool fits = sign == '9' ? m_text.isDigitAt(place)
            : sign == 'A'             ? m_text.isAt(place, DetectorClass::Upper)
                                      : byte == static_cast<unsigned char>(sign);
        if (!fits)
            return 0;
        ++place;
    }
    return m_text.wordLengthAt(place) == 0 ? place - begin : 0;
}

std::optional<std::size_t> AddressTail::postcode(std::size_t place, bool isBeforePlace) const
{
    while (const auto length = m_text.blankLengthAt(place))
        place += length;
    std::size_t longest = 0;
    for (const auto& form : m_rules.postcodeForms())
        if (form.isBeforePlace == isBeforePlace)
            longest = std::max(longest, matched(form.form, place));
    return longest > 0 ? std::optional(place + longest) : std::nullopt;
}

std::optional<std::size_t> AddressTail::placeName(std::size_t place) const
{
    std::optional<std::size_t> end;
    for (std::size_t count = 0; count < mostWordsOfPlace; ++count) {
        const auto token = m_tokens.at(place);
        if (token.kind != Kind::Word)
            break;
        const bool isSmall = m_text.lowered(token.span).size() <= 5 && count > 0;
        if (!token.isCapital && !isSmall)
            break;
        if (token.isCapital)
            end = token.span.end;
        place = token.next();
        if (token.hasDot && token.span.end - token.span.begin > 3) // a sentence ends, unlike behind "St."
            break;
    }
    return end;
}

std::optional<std::size_t> AddressTail::postcodeThenPlace(std::size_t place) const
{
    const auto end = postcode(place, true);
    if (!end)
        return std::nullopt;
    const auto name = placeName(*end);
    if (!name)
        return std::nullopt;
    // The province of an Italian place: "00184 Roma (RM)"
    const auto bracket = *name + m_text.blankLengthAt(*name);
    return m_text.at(bracket) == '(' && matched("(AA)", bracket) > 0 ? bracket + 4 : *name;
}

std::optional<std::size_t> AddressTail::regionAndPostcode(std::size_t place) const
{
    const auto token = m_tokens.at(place);
    if (token.kind == Kind::Word && token.span.end - token.span.begin <= 3
        && m_rules.isRegion(m_text.slice(token.span)))
        return postcode(token.next(), false).value_or(token.span.end);
    return postcode(place, false);
}

std::optional<std::size_t> AddressTail::placeThenPostcode(std::size_t place) const
{
    std::optional<std::size_t> best;
    for (std::size_t words = 0; words < mostWordsOfPlace; ++words) {
        const auto token = m_tokens.at(place);
        if (token.kind != Kind::Word || !(token.isCapital || words > 0))
            break;
        place = token.next();
        if (token.isCapital || best) {
            auto behind = afterSeparator(place);
            if (const auto dash = m_text.dashLengthAt(behind + m_text.blankLengthAt(behind)); dash > 0)
                behind += m_text.blankLengthAt(behind) + dash; // São Paulo - SP
            const auto end = regionAndPostcode(behind);
            if (const auto found = end ? end : country(behind); found)
                best = std::max(best.value_or(0), *found);
        }
        place = afterSeparator(place);
    }
    return best;
}

std::optional<std::size_t> AddressTail::country(std::size_t place) const
{
    std::optional<std::size_t> best;
    std::string words;
    for (std::size_t count = 0; count < mostWordsOfCountry; ++count) {
        const auto token = m_tokens.at(place);
        if (token.kind != Kind::Word || (count == 0 && !token.isCapital))
            break;
        words += (words.empty() ? "" : " ") + m_text.lowered(token.span);
        if (m_rules.isCountry(words))
            best = token.span.end;
        place = token.next();
        if (token.hasDot)
            break;
    }
    return best;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
