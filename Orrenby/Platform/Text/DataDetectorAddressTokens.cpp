#include "Orrenby/Platform/Text/DataDetectorAddresses.hpp"

#include <algorithm>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

constexpr std::size_t longest = 80; // bytes
constexpr std::size_t mostDigitsOfHouse = 5;

} // namespace

AddressToken AddressTokens::at(std::size_t place) const
{
    while (const auto length = m_text.blankLengthAt(place))
        place += length;
    if (place >= m_text.size())
        return {AddressToken::Kind::End, {place, place}};
    const auto byte = m_text.at(place);
    if (byte == '\n' || byte == '\r')
        return lineBreak(place);
    if (byte == ',')
        return {AddressToken::Kind::Comma, {place, place + 1}};
    if (m_text.isDigitAt(place))
        return number(place);
    if (m_text.wordLengthAt(place) > 0)
        return word(place);
    const auto length = std::max<std::size_t>(m_text.scalarAt(place).length, 1);
    return {AddressToken::Kind::Other, {place, place + length}};
}

AddressToken AddressTokens::lineBreak(std::size_t begin) const
{
    auto end = begin;
    end += m_text.at(end) == '\r' && m_text.at(end + 1) == '\n' ? 2 : 1;
    auto next = end;
    while (const auto length = m_text.blankLengthAt(next))
        next += length;
    // An empty line ends everything.
    const bool isEmptyLine = m_text.at(next) == '\n' || m_text.at(next) == '\r';
    return {isEmptyLine ? AddressToken::Kind::Other : AddressToken::Kind::Break, {begin, end}};
}

AddressToken AddressTokens::word(std::size_t begin) const
{
    AddressToken token{AddressToken::Kind::Word, {begin, begin}};
    const auto first = m_text.scalarAt(begin).value;
    token.isCapital = loweredScalar(first) != first;
    auto& end = token.span.end;
    while (true) {
        if (const auto length = m_text.wordLengthAt(end); length > 0) {
            end += length;
        } else {
            if (const auto byte = m_text.at(end); byte < 0x80 && byte != '\'' && byte != '-')
                break;
            const auto sign = m_text.scalarAt(end);
            const bool isElision = sign.value == '\'' || sign.value == 0x2019;
            const bool isInside = isElision || sign.value == '-';
            if (!isInside || m_text.wordLengthAt(end + sign.length) == 0
                || m_text.isDigitAt(end + sign.length))
                break;
            end += sign.length;
            const auto next = m_text.scalarAt(end).value;
            if (isElision && end - begin < 6) // d'Aligre, dell'Orto
                token.isCapital = token.isCapital || loweredScalar(next) != next;
        }
        if (end - begin > longest) {
            token.kind = AddressToken::Kind::Other;
            return token;
        }
    }
    token.hasDot = m_text.at(end) == '.';
    if (end - begin == 1 && m_text.at(end) == '/') // "C/ Mayor"
        ++end;
    return token;
}

AddressToken AddressTokens::number(std::size_t begin) const
{
    AddressToken token{AddressToken::Kind::Number, {begin, begin}};
    auto& end = token.span.end;
    while (m_text.isDigitAt(end) && end - begin <= mostDigitsOfHouse)
        token.value = token.value * 10 + (m_text.at(end++) - '0');
    bool isSound = end - begin <= mostDigitsOfHouse;
    const auto letters = end;
    while (end - letters < 4 && m_text.wordLengthAt(end) > 0 && !m_text.isDigitAt(end))
        end += m_text.wordLengthAt(end);
    const auto suffix = m_text.lowered({letters, end});
    token.isOrdinal = suffix == "st" || suffix == "nd" || suffix == "rd" || suffix == "th";
    isSound = isSound && m_text.wordLengthAt(end) == 0 && (token.isOrdinal || end - letters <= 1);
    // A range: 12-14, 12/3
    const auto dash = m_text.dashLengthAt(end);
    const auto sign = dash > 0 ? dash : m_text.at(end) == '/' ? 1 : 0;
    if (isSound && sign > 0 && m_text.isDigitAt(end + sign)) {
        auto next = end + sign;
        while (next - end < 6 && m_text.isDigitAt(next))
            ++next;
        next += m_text.isAt(next, DetectorClass::Word) ? 1 : 0;
        isSound = m_text.wordLengthAt(next) == 0 && next - end - sign <= 4;
        end = next;
    }
    if (!isSound)
        token.kind = AddressToken::Kind::Other;
    return token;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
