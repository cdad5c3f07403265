#include "Orrenby/Platform/Text/DataDetectorPhones.hpp"

#include <algorithm>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

constexpr std::size_t longestPhoneWord = 32; // bytes

/// How many digits a text has whose groups are counted.
template <class Groups> std::size_t digitsOf(const Groups& groups, std::size_t count)
{
    std::size_t sum = 0;
    for (std::size_t place = 0; place < count; ++place)
        sum += groups[place].digits;
    return sum;
}

} // namespace

std::optional<DetectorSpan> PhoneScanner::next()
{
    while (m_place < m_text.size()) {
        if (!m_text.isAt(m_place, DetectorClass::PhoneBegin)) {
            ++m_place;
            continue;
        }
        const auto begin = m_place;
        const auto candidate = mayBegin(begin) ? candidateAt(begin) : Candidate();
        for (auto groups = candidate.count; groups > 0; --groups)
            if (isNumber(candidate, groups) && mayEnd(candidate, groups)) {
                m_place = withExtension(candidate.groups[groups - 1].end);
                return DetectorSpan{begin, m_place};
            }
        // The rest of these digits begins nothing; the digits in brackets may.
        ++m_place;
        while (m_text.isDigitAt(begin) && m_text.isDigitAt(m_place))
            ++m_place;
    }
    return std::nullopt;
}

bool PhoneScanner::mayBegin(std::size_t place) const
{
    const auto before = m_text.scalarBefore(place);
    if (before.length == 0)
        return true;
    if (isWordScalar(before.value) && !isWideScalar(before.value))
        return false;
    constexpr std::string_view never = "/=@#$%&_~^\\+";
    if (before.value < 0x80 && never.find(static_cast<char>(before.value)) != std::string_view::npos)
        return false;
    if (before.value >= 0x20A0 && before.value <= 0x20CF) // a currency
        return false;
    if (before.value == 0xA3 || before.value == 0xA5 || before.value == 0xB1)
        return false;
    constexpr std::string_view inNumbers = ".,-:*)";
    const bool mayGoOn = (before.value < 0x80
                             && inNumbers.find(static_cast<char>(before.value)) != std::string_view::npos)
        || (before.value >= 0x2010 && before.value <= 0x2013);
    return !mayGoOn || !m_text.isWordBefore(place - before.length)
        || (before.value == ':' && !m_text.isDigitAt(place - 2));
}

/// Account and card numbers stand in groups of four, of which the first ones belong to no telephone number.
bool PhoneScanner::isInGroupsOfFour(const Candidate& candidate) const
{
    const auto begin = candidate.begin;
    if (candidate.groups[0].digits != 4 || begin < 5 || m_text.blankLengthAt(begin - 1) == 0)
        return false;
    for (auto place = begin - 5; place < begin - 1; ++place)
        if (!m_text.isDigitAt(place))
            return false;
    return true;
}

bool PhoneScanner::readGroup(std::size_t place, Candidate& candidate) const
{
    Group group{.begin = place, .end = place, .firstDigit = place};
    group.isInBrackets = m_text.at(place) == '(';
    group.firstDigit += group.isInBrackets ? 1 : 0;
    if (group.isInBrackets && candidate.count == 0 && m_text.at(group.firstDigit) == '+') {
        candidate.hasPlus = true;
        ++group.firstDigit;
    }
    auto end = group.firstDigit;
    while (m_text.isDigitAt(end) && candidate.digits.size() <= mostDigits)
        candidate.digits += static_cast<char>(m_text.at(end++));
    group.digits = end - group.firstDigit;
    if (group.digits == 0 || candidate.digits.size() > mostDigits)
        return false;
    if (group.isInBrackets && m_text.at(end++) != ')')
        return false;
    group.end = end;
    candidate.groups[candidate.count++] = group;
    return true;
}

std::optional<PhoneScanner::Separation> PhoneScanner::separationAt(
    std::size_t place, const Group& before) const
{
    auto end = place + m_text.blankLengthAt(place);
    Separation result{end, end > place ? PhoneSeparator::Blank : PhoneSeparator::None};
    const auto byte = m_text.at(end);
    const auto dash = m_text.dashLengthAt(end);
    const auto sign = dash > 0 ? dash : byte == '/' || (byte == '.' && end == place) ? 1 : 0;
    if (sign > 0) {
        result.separator = dash > 0 ? PhoneSeparator::Dash
            : byte == '/'           ? PhoneSeparator::Slash
                                    : PhoneSeparator::Dot;
        result.end = end + sign;
        if (byte != '.')
            result.end += m_text.blankLengthAt(result.end);
    }
    const bool isOpening = m_text.at(result.end) == '(';
    if (!isOpening && !m_text.isDigitAt(result.end))
        return std::nullopt;
    if (result.separator == PhoneSeparator::None && !isOpening && !before.isInBrackets)
        return std::nullopt;
    return result;
}

PhoneScanner::Candidate PhoneScanner::candidateAt(std::size_t begin) const
{
    Candidate candidate{.begin = begin, .hasPlus = m_text.at(begin) == '+'};
    if (!readGroup(begin + (candidate.hasPlus ? 1 : 0), candidate) || isInGroupsOfFour(candidate))
        return {};
    while (candidate.count < mostGroups) {
        const auto& last = candidate.groups[candidate.count - 1];
        const auto separation = separationAt(last.end, last);
        if (!separation || !readGroup(separation->end, candidate))
            break;
        candidate.groups[candidate.count - 1].separator = separation->separator;
    }
    return candidate;
}

bool PhoneScanner::mayEnd(const Candidate& candidate, std::size_t groups) const
{
    const auto end = candidate.groups[groups - 1].end;
    if (m_text.wordLengthAt(end) > 0 && !isWideScalar(m_text.scalarAt(end).value))
        return m_rules.isExtensionWord(m_text.lowered({end, end + 1})) && m_text.isDigitAt(end + 1);
    if (groups < candidate.count)
        return candidate.groups[groups].separator == PhoneSeparator::Blank;
    constexpr std::string_view goesOn = ".,-:/";
    const auto byte = m_text.at(end);
    if (byte == '%' || byte == '_' || byte == '@' || byte == '=')
        return false;
    const auto dash = m_text.dashLengthAt(end);
    const bool isSign = dash > 0 || (byte != 0 && goesOn.find(static_cast<char>(byte)) != goesOn.npos);
    return !isSign || m_text.wordLengthAt(end + std::max<std::size_t>(dash, 1)) == 0;
}

bool PhoneScanner::isNumber(const Candidate& candidate, std::size_t groups) const
{
    return isInternational(candidate, groups)
        || (!candidate.hasPlus && (isNational(candidate, groups) || isAnnounced(candidate, groups)));
}

bool PhoneScanner::isInternational(const Candidate& candidate, std::size_t groups) const
{
    auto digits = std::string_view(candidate.digits).substr(0, digitsOf(candidate.groups, groups));
    std::size_t prefix = 0;
    if (!candidate.hasPlus) {
        prefix = digits.starts_with("00") ? 2 : digits.starts_with("011") ? 3 : 0;
        if (prefix == 0)
            return false;
    }
    digits.remove_prefix(prefix);
    const auto code = m_rules.callingCode(digits);
    if (!code)
        return false;
    auto count = digits.size() - code->codeLength;
    // The "0" of "+49 (0) 30 …" is not dialled. Some write it without brackets, too.
    const bool hasTrunk = count > 0 && digits[code->codeLength] == '0'
        && digits.substr(0, code->codeLength) != "39";
    const auto all = candidate.groups;
    for (std::size_t place = 1; place < groups; ++place)
        if (all[place].isInBrackets && all[place].digits == 1 && !hasTrunk)
            return false;
    if (hasTrunk)
        --count;
    // The code is a group of its own, or all is one group, or a bracket holds the code.
    return count >= code->fewest && count <= code->most && count >= 5;
}

bool PhoneScanner::isNational(const Candidate& candidate, std::size_t groups) const
{
    const auto all = std::string_view(candidate.digits).substr(0, digitsOf(candidate.groups, groups));
    if (all.ends_with("000000")) // a large round number
        return false;
    for (const auto& form : m_rules.phoneForms(groups))
        if (form.size() == groups && fits(candidate, form))
            return true;
    return false;
}

bool PhoneScanner::fits(const Candidate& candidate, const PhoneForm& form) const
{
    auto digits = std::string_view(candidate.digits);
    for (std::size_t place = 0; place < form.size(); ++place) {
        const auto& group = candidate.groups[place];
        const auto& wanted = form[place];
        const bool isSeparated = (wanted.separators & static_cast<std::uint8_t>(group.separator)) != 0;
        if (group.digits < wanted.fewest || group.digits > wanted.most
            || group.isInBrackets != wanted.isInBrackets || (place > 0 && !isSeparated))
            return false;
        for (std::size_t digit = 0; digit < wanted.digits.size() && digit < group.digits; ++digit)
            if ((wanted.digits[digit] >> (digits[digit] - '0') & 1) == 0)
                return false;
        digits.remove_prefix(group.digits);
    }
    return true;
}

bool PhoneScanner::isAnnounced(const Candidate& candidate, std::size_t groups) const
{
    const auto count = digitsOf(candidate.groups, groups);
    return count >= 6 && count <= 15 && hasPhoneWordBefore(candidate.begin);
}

bool PhoneScanner::hasPhoneWordBefore(std::size_t place) const
{
    constexpr std::string_view between = ":.# \t=";
    for (int signs = 0; signs < 4; ++signs) {
        const auto before = m_text.scalarBefore(place);
        const bool isBetween = before.length > 0
            && ((before.value < 0x80 && between.find(static_cast<char>(before.value)) != between.npos)
                || m_text.blankLengthAt(place - before.length) > 0 || before.value == 0xFF1A);
        if (!isBetween)
            break;
        place -= before.length;
    }
    auto begin = place;
    while (begin > 0 && place - begin < longestPhoneWord && m_text.isWordBefore(begin))
        begin -= m_text.scalarBefore(begin).length;
    return begin < place && m_rules.isPhoneWord(m_text.lowered({begin, place}));
}

std::size_t PhoneScanner::withExtension(std::size_t end) const
{
    auto place = end;
    if (m_text.at(place) == ',')
        ++place;
    place += m_text.blankLengthAt(place);
    const auto word = place;
    while (place - word < longestPhoneWord && m_text.wordLengthAt(place) > 0 && !m_text.isDigitAt(place))
        place += m_text.wordLengthAt(place);
    if (place == word || !m_rules.isExtensionWord(m_text.lowered({word, place})))
        return end;
    place += m_text.at(place) == '.' || m_text.at(place) == ':' ? 1 : 0;
    place += m_text.blankLengthAt(place);
    const auto digits = place;
    while (place - digits < 6 && m_text.isDigitAt(place))
        ++place;
    return place > digits && m_text.wordLengthAt(place) == 0 ? place : end;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
