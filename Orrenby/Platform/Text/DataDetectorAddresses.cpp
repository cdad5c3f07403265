#include "Orrenby/Platform/Text/DataDetectorAddresses.hpp"

#include <algorithm>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

using Kind = AddressToken::Kind;

constexpr std::size_t mostWordsOfName = 6;
constexpr std::size_t shortestName = 2; // bytes before a suffix: "Zobrist", not "Xstr"

bool isAmong(std::uint16_t roles, StreetRole role) { return (roles & static_cast<std::uint16_t>(role)) != 0; }

bool isYear(unsigned value) { return value >= 1900 && value <= 2099; }

} // namespace

std::optional<DetectorSpan> AddressScanner::next()
{
    while (true) {
        const auto token = m_tokens.at(m_place);
        if (token.kind == Kind::End)
            return std::nullopt;
        if (const auto address = addressAt(token)) {
            m_place = address->end;
            m_beforeCount = 0;
            return address;
        }
        m_place = token.kind == Kind::Word ? token.next() : token.span.end;
        remember(token);
    }
}

void AddressScanner::remember(const AddressToken& token)
{
    if (token.kind != Kind::Word) {
        m_beforeCount = 0;
        return;
    }
    if (m_beforeCount == mostWordsBefore) {
        std::move(m_before.begin() + 1, m_before.end(), m_before.begin());
        --m_beforeCount;
    }
    m_before[m_beforeCount++] = token;
}

std::uint16_t AddressScanner::roles(const AddressToken& word) const
{
    constexpr std::size_t longest = 24; // bytes, more than any word of the table has
    return word.span.end - word.span.begin < longest ? m_rules.roles(m_text.lowered(word.span))
                                                     : std::uint16_t();
}

bool AddressScanner::mayBeginAddress(const AddressToken& word) const
{
    const auto first = m_text.at(word.span.begin);
    const auto lower = static_cast<unsigned char>(first >= 'A' && first <= 'Z' ? first + 32 : first);
    // Letters beyond ASCII may change their first byte with their case.
    return first >= 0x80 || m_rules.mayBeginAddress(lower, word.span.end - word.span.begin);
}

std::optional<DetectorSpan> AddressScanner::addressAt(const AddressToken& token) const
{
    if (token.kind == Kind::Number) {
        const auto end = afterHouseNumber(token);
        return end ? std::optional(DetectorSpan{token.span.begin, m_tail.after(*end).place}) : std::nullopt;
    }
    if (token.kind == Kind::Other)
        return m_text.scalarAt(token.span.begin).value == 0x3012 ? japanese(token.span.begin) : std::nullopt;
    if (token.kind != Kind::Word)
        return std::nullopt;
    const auto known = mayBeginAddress(token) ? roles(token) : std::uint16_t();
    if (isAmong(known, StreetRole::First))
        if (const auto address = firstWord(token))
            return address;
    if (isAmong(known, StreetRole::Last))
        if (const auto address = lastWord(token))
            return address;
    if (!token.isCapital)
        return std::nullopt;
    if (const auto address = compound(token))
        return address;
    return isAmong(known, StreetRole::BoxBegin) ? box(token) : std::nullopt;
}

bool AddressScanner::isHouseNumber(const AddressToken& token) const
{
    return token.kind == Kind::Number && !token.isOrdinal && token.value > 0;
}

std::optional<std::size_t> AddressScanner::afterHouseNumber(const AddressToken& number) const
{
    const auto before = m_text.scalarBefore(number.span.begin).value;
    constexpr std::string_view mayStandBefore = "(\"':;>*\n\r\t ,";
    const bool isFree = before == 0 || before == 0xA0 || before == 0x201C || before == 0x201E
        || (before < 0x80 && mayStandBefore.find(static_cast<char>(before)) != std::string_view::npos);
    if (!isHouseNumber(number) || !isFree)
        return std::nullopt;
    if (isYear(number.value) && m_beforeCount > 0 && isRole(m_before[m_beforeCount - 1], StreetRole::Time))
        return std::nullopt;
    auto place = number.span.end;
    if (const auto token = m_tokens.at(place); token.kind == Kind::Word && isRole(token, StreetRole::Number))
        place = token.next(); // 12 bis
    if (const auto street = streetNamed(place))
        return street;
    return streetByLastWord(place);
}

/// "rue de Rivoli", with a comma before it or without.
std::optional<std::size_t> AddressScanner::streetNamed(std::size_t place) const
{
    auto token = m_tokens.at(place);
    if (token.kind == Kind::Comma)
        token = m_tokens.at(token.next());
    if (token.kind != Kind::Word || !isRole(token, StreetRole::First))
        return std::nullopt;
    // "12 Avenue Road" ends in a street word and is read as such.
    const auto end = name(token.next(), true);
    return end && !streetByLastWord(place) ? end : std::nullopt;
}

/// "Main Street", "5th Ave NW", "Broadway".
std::optional<std::size_t> AddressScanner::streetByLastWord(std::size_t place) const
{
    std::optional<std::size_t> end;
    std::size_t names = 0;
    for (std::size_t count = 0; count < mostWordsOfName; ++count) {
        const auto token = m_tokens.at(place);
        const bool isWord = token.kind == Kind::Word;
        const bool isOrdinal = token.kind == Kind::Number && token.isOrdinal;
        const bool isSmall = isWord && !token.isCapital && names > 0 && isRole(token, StreetRole::Particle);
        if (!isOrdinal && !isSmall && !(isWord && token.isCapital))
            break;
        if (isWord && names == 0 && isRole(token, StreetRole::Alone)) {
            end = token.span.end;
            break;
        }
        const bool isStreet = isWord && names > 0 && isRole(token, StreetRole::After);
        const bool isCompass = isWord && isRole(token, StreetRole::Compass);
        if (end && !isStreet) {
            if (isCompass)
                end = token.next();
            break;
        }
        if (isStreet)
            end = token.span.end;
        if (token.hasDot && !isStreet && !isCompass && token.span.end - token.span.begin > 3)
            break; // a sentence ends
        names += isCompass && names == 0 ? 0 : 1;
        place = token.next();
    }
    return end;
}

std::optional<std::size_t> AddressScanner::name(std::size_t place, bool mayHoldNumbers) const
{
    std::optional<std::size_t> end;
    for (std::size_t count = 0; count < mostWordsOfName; ++count) {
        const auto token = m_tokens.at(place);
        const bool isNumber = token.kind == Kind::Number && mayHoldNumbers && count > 0 && token.value < 100;
        if (token.kind == Kind::Word && token.isCapital)
            end = token.span.end;
        else if (!isNumber && !(token.kind == Kind::Word && isRole(token, StreetRole::Particle)))
            break;
        place = token.next();
        if (token.hasDot && token.span.end - token.span.begin > 3)
            break;
    }
    return end;
}

std::optional<AddressScanner::House> AddressScanner::houseNumber(std::size_t place) const
{
    auto token = m_tokens.at(place);
    if (token.kind == Kind::Comma)
        token = m_tokens.at(token.next());
    if (token.kind == Kind::Word && isRole(token, StreetRole::Number)) {
        auto next = token.next();
        next += m_text.at(next) == ':' ? 1 : 0;
        token = m_tokens.at(next);
    }
    if (!isHouseNumber(token) || token.value > 9999)
        return std::nullopt;
    auto end = token.span.end;
    const auto letter = m_tokens.at(end); // 12 a
    const bool isLetter = letter.kind == Kind::Word && letter.span.end - letter.span.begin == 1
        && !letter.isCapital && !letter.hasDot && m_text.at(letter.span.begin) < 'i';
    if (isLetter && (m_tokens.at(letter.next()).kind != Kind::Word))
        end = letter.span.end;
    if (m_text.at(end) == '.' && m_text.isDigitAt(end + 1))
        return std::nullopt; // a decimal fraction
    return House{end, isYear(token.value)};
}

std::optional<DetectorSpan> AddressScanner::firstWord(const AddressToken& word) const
{
    const auto named = name(word.next(), false);
    const auto house = named ? houseNumber(*named) : std::nullopt;
    if (!house)
        return std::nullopt;
    const auto tail = m_tail.after(house->end);
    // "via" and "place" are words of other kinds, too.
    const bool isClear = (word.isCapital || word.hasDot || m_text.at(word.span.begin) >= 0x80
                             || m_text.at(word.span.end - 1) == '/')
        && !house->isYear;
    return isClear || tail.hasPlace ? std::optional(DetectorSpan{word.span.begin, tail.place}) : std::nullopt;
}

std::optional<DetectorSpan> AddressScanner::compound(const AddressToken& word) const
{
    const auto house = houseNumber(word.next());
    if (!house)
        return std::nullopt;
    const auto lowered = m_text.lowered(word.span);
    const auto suffix = m_rules.suffix(lowered);
    if (suffix.length == 0 || lowered.size() < suffix.length + shortestName)
        return std::nullopt;
    const auto tail = m_tail.after(house->end);
    if ((suffix.wantsPlace || house->isYear) && !tail.hasPlace)
        return std::nullopt;
    const bool hasLead = m_beforeCount > 0 && isRole(m_before[m_beforeCount - 1], StreetRole::Lead);
    return DetectorSpan{hasLead ? m_before[m_beforeCount - 1].span.begin : word.span.begin, tail.place};
}

std::optional<DetectorSpan> AddressScanner::lastWord(const AddressToken& word) const
{
    auto begin = word.span.begin;
    for (auto count = m_beforeCount; count > 0; --count) {
        const auto& name = m_before[count - 1];
        if (!name.isCapital || isRole(name, StreetRole::Article)
            || (name.hasDot && name.span.end - name.span.begin > 3))
            break;
        begin = name.span.begin;
    }
    const auto house = begin < word.span.begin ? houseNumber(word.next()) : std::nullopt;
    if (!house)
        return std::nullopt;
    const auto tail = m_tail.after(house->end);
    return house->isYear && !tail.hasPlace ? std::nullopt : std::optional(DetectorSpan{begin, tail.place});
}

std::optional<DetectorSpan> AddressScanner::box(const AddressToken& word) const
{
    std::string words = m_text.lowered(word.span);
    auto place = word.next();
    for (std::size_t count = 0; count < 2 && !m_rules.hasRole(words, StreetRole::Box); ++count) {
        const auto token = m_tokens.at(place);
        if (token.kind != Kind::Word || words.size() > 16)
            return std::nullopt;
        words += ' ' + m_text.lowered(token.span);
        place = token.next();
    }
    if (!m_rules.hasRole(words, StreetRole::Box))
        return std::nullopt;
    auto end = place;
    for (std::size_t count = 0; count < 4; ++count) { // Postfach 10 20 30
        const auto token = m_tokens.at(end);
        if (token.kind != Kind::Number || token.isOrdinal)
            break;
        end = token.span.end;
    }
    return end > place ? std::optional(DetectorSpan{word.span.begin, m_tail.after(end).place}) : std::nullopt;
}

/// The postal mark, a postcode, and then a line without blanks.
std::optional<DetectorSpan> AddressScanner::japanese(std::size_t begin) const
{
    constexpr std::size_t longest = 240; // bytes
    auto place = begin + m_text.scalarAt(begin).length;
    place += m_text.blankLengthAt(place);
    for (std::size_t digit = 0; digit < 7; ++digit) {
        place += digit == 3 ? m_text.dashLengthAt(place) : 0;
        if (!m_text.isDigitAt(place++))
            return std::nullopt;
    }
    const auto space = m_text.scalarAt(place);
    place += space.value == 0x3000 ? space.length : m_text.blankLengthAt(place);
    const auto street = place;
    while (place - street < longest) {
        const auto length = std::max(m_text.wordLengthAt(place), m_text.dashLengthAt(place));
        if (length == 0)
            break;
        place += length;
    }
    constexpr std::size_t shortest = 12; // four ideographs
    return place - street >= shortest ? std::optional(DetectorSpan{begin, place}) : std::nullopt;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
