#include "Orrenby/Platform/Text/DataDetectorRules.hpp"

#include "Orrenby/Platform/Objects/FatalError.hpp"
#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

template <class Value> using Names = std::pair<std::string_view, Value>;

constexpr Names<SchemeForm> schemeForms[] = {{"host", SchemeForm::Host}, {"path", SchemeForm::Path},
    {"word", SchemeForm::Word}, {"number", SchemeForm::Number}, {"mail", SchemeForm::Mail},
    {"query", SchemeForm::Query}};

constexpr Names<StreetRole> streetRoles[] = {{"after", StreetRole::After}, {"alone", StreetRole::Alone},
    {"first", StreetRole::First}, {"last", StreetRole::Last}, {"lead", StreetRole::Lead},
    {"particle", StreetRole::Particle}, {"number", StreetRole::Number}, {"unit", StreetRole::Unit},
    {"compass", StreetRole::Compass}, {"box", StreetRole::Box}, {"time", StreetRole::Time},
    {"article", StreetRole::Article}};

[[noreturn]] void refuse(std::string_view what)
{
    fatalError("A rule table of the data detector has an unknown entry: " + std::string(what),
        "Platform/Text/DataDetectorRules", __LINE__);
}

template <class Value, std::size_t count>
Value named(const Names<Value> (&names)[count], std::string_view name)
{
    for (const auto& [known, value] : names)
        if (known == name)
            return value;
    refuse(name);
}

std::size_t number(std::string_view digits)
{
    std::size_t value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error != std::errc() || end != digits.data() + digits.size())
        refuse(digits);
    return value;
}

/// The pieces between separators, without empty ones.
std::vector<std::string_view> pieces(std::string_view text, char separator)
{
    std::vector<std::string_view> result;
    while (!text.empty()) {
        const auto piece = text.substr(0, text.find(separator));
        if (!piece.empty())
            result.push_back(piece);
        text.remove_prefix(std::min(piece.size() + 1, text.size()));
    }
    return result;
}

constexpr auto none = static_cast<std::uint8_t>(PhoneSeparator::None);
constexpr auto blank = static_cast<std::uint8_t>(PhoneSeparator::Blank);

/// The separators that a sign of a form stands for, 0 when it is no separator.
std::uint8_t separators(char sign)
{
    switch (sign) {
    case ' ':
        return blank;
    case '-':
        return static_cast<std::uint8_t>(PhoneSeparator::Dash);
    case '.':
        return static_cast<std::uint8_t>(PhoneSeparator::Dot);
    case '/':
        return static_cast<std::uint8_t>(PhoneSeparator::Slash);
    case '~':
        return static_cast<std::uint8_t>(~none & 0x1F);
    default:
        return 0;
    }
}

/// One bit for each digit that a sign of a form stands for.
std::uint16_t digits(char sign)
{
    if (sign >= '0' && sign <= '9')
        return static_cast<std::uint16_t>(1 << (sign - '0'));
    if (sign == 'X')
        return 0x3FF;
    if (sign == 'Z')
        return 0x3FE;
    if (sign == 'N')
        return 0x3FC;
    refuse(std::string_view(&sign, 1));
}

/// Takes "[1-37]" from the front.
std::uint16_t takeChoice(std::string_view& rest)
{
    std::uint16_t result = 0;
    const auto end = rest.find(']');
    for (std::size_t place = 1; place < end; ++place) {
        const bool isRange = place + 2 < end && rest[place + 1] == '-';
        const char last = rest[isRange ? place + 2 : place];
        for (char digit = rest[place]; digit <= last; ++digit)
            result = static_cast<std::uint16_t>(result | digits(digit));
        place += isRange ? 2 : 0;
    }
    rest.remove_prefix(std::min(end, rest.size() - 1) + 1);
    return result;
}

/// Takes the digits of a group from the front.
void takeGroup(std::string_view& rest, PhoneFormGroup& group)
{
    while (!rest.empty() && rest.front() != '(' && rest.front() != ')' && separators(rest.front()) == 0) {
        if (rest.front() == '{') { // repeats the "X" before it
            const auto bounds = pieces(rest.substr(1, rest.find('}') - 1), ',');
            group.digits.pop_back();
            group.fewest += number(bounds.front()) - 1;
            group.most += number(bounds.back()) - 1;
            rest.remove_prefix(rest.find('}') + 1);
            continue;
        }
        if (rest.front() == '[')
            group.digits.push_back(takeChoice(rest));
        else {
            group.digits.push_back(digits(rest.front()));
            rest.remove_prefix(1);
        }
        ++group.fewest;
        ++group.most;
    }
}

} // namespace

PhoneForm phoneForm(std::string_view line)
{
    PhoneForm form;
    while (!line.empty()) {
        PhoneFormGroup group{.separators = none};
        if (!form.empty() && separators(line.front()) != 0) {
            group.separators = separators(line.front());
            if (form.back().isInBrackets && line.front() == ' ')
                group.separators |= none;
            line.remove_prefix(1);
        }
        group.isInBrackets = line.starts_with('(');
        line.remove_prefix(group.isInBrackets ? 1 : 0);
        takeGroup(line, group);
        if (group.isInBrackets != line.starts_with(')') || group.most == 0)
            refuse(line);
        line.remove_prefix(group.isInBrackets ? 1 : 0);
        form.push_back(std::move(group));
    }
    return form;
}

const DetectorRules& DetectorRules::shared()
{
    // Never destroyed, so that texts can still be searched while the process exits.
    static const auto& rules = *new DetectorRules(detectorRuleTexts());
    return rules;
}

DetectorRules::DetectorRules(std::span<const EmbeddedText> texts)
{
    for (const auto& [name, text] : texts)
        for (auto line : pieces(text, '\n')) {
            const auto remark = line.starts_with("#\t") ? std::string_view::npos : line.find('#');
            line = line.substr(0, remark);
            line = line.substr(0, line.find_last_not_of(" \t") + 1);
            if (!line.empty())
                readLine(name, line);
        }
}

void DetectorRules::readLine(std::string_view file, std::string_view line)
{
    const auto columns = pieces(line, '\t');
    if (file == "TopLevelDomains")
        return readDomains(line);
    if (file == "PhoneForms") {
        auto form = phoneForm(line);
        m_phoneForms[std::min(form.size(), mostPhoneGroups)].push_back(std::move(form));
    } else if (file == "Regions") {
        for (const auto region : pieces(line, ' '))
            m_regions.emplace(region);
    } else if (file == "Countries")
        m_countries.emplace(line);
    else if (file == "CallingCodes" && columns.size() == 3)
        readCallingCode(columns);
    else if (columns.size() != 2)
        refuse(line);
    else if (file == "Schemes")
        m_schemes.emplace(columns[0], named(schemeForms, columns[1]));
    else if (file == "PhoneWords")
        (columns[1] == "extension" ? m_extensions : m_phoneWords).emplace(columns[0]);
    else if (file == "Postcodes")
        m_postcodes.push_back({std::string(columns[0]), columns[1] == "before"});
    else if (file == "StreetWords")
        readStreetWord(columns[0], columns[1]);
    else
        refuse(file);
}

void DetectorRules::readDomains(std::string_view line)
{
    for (const auto label : pieces(line, ' '))
        if (label.starts_with('!'))
            m_domains[std::string(label.substr(1))] = DomainEnding::FileEnding;
        else
            m_domains.emplace(label, DomainEnding::Known);
}

void DetectorRules::readCallingCode(std::span<const std::string_view> columns)
{
    m_callingCodes.emplace(
        columns[0], CallingCode{columns[0].size(), number(columns[1]), number(columns[2])});
}

void DetectorRules::readStreetWord(std::string_view word, std::string_view role)
{
    if (role == "suffix" || role == "ending") {
        m_suffixes.emplace(word, role == "ending");
        return;
    }
    addRole(word, named(streetRoles, role));
    if (role == "box")
        addRole(word.substr(0, word.find(' ')), StreetRole::BoxBegin);
}

void DetectorRules::addRole(std::string_view word, StreetRole role)
{
    auto& roles = m_streetWords[std::string(word)];
    roles = static_cast<std::uint16_t>(roles | static_cast<std::uint16_t>(role));
    if (role == StreetRole::First || role == StreetRole::Last || role == StreetRole::BoxBegin)
        m_beginnings[std::min(word.size(), m_beginnings.size() - 1)].set(
            static_cast<unsigned char>(word.front()));
}

SchemeForm DetectorRules::schemeForm(std::string_view scheme) const
{
    const auto found = m_schemes.find(std::string(scheme));
    return found != m_schemes.end() ? found->second : SchemeForm::Unknown;
}

DomainEnding DetectorRules::domainEnding(std::string_view label) const
{
    if (label.starts_with("xn--") && label.size() > 4)
        return DomainEnding::Known;
    const auto found = m_domains.find(std::string(label));
    return found != m_domains.end() ? found->second : DomainEnding::Unknown;
}

std::optional<CallingCode> DetectorRules::callingCode(std::string_view digits) const
{
    for (std::size_t length = 1; length <= 3 && length <= digits.size(); ++length)
        if (const auto found = m_callingCodes.find(std::string(digits.substr(0, length)));
            found != m_callingCodes.end())
            return found->second;
    return std::nullopt;
}

const std::vector<PhoneForm>& DetectorRules::phoneForms(std::size_t groups) const
{
    return m_phoneForms[std::min(groups, mostPhoneGroups)];
}

std::uint16_t DetectorRules::roles(std::string_view word) const
{
    const auto found = m_streetWords.find(std::string(word));
    return found != m_streetWords.end() ? found->second : std::uint16_t();
}

DetectorRules::Suffix DetectorRules::suffix(std::string_view word) const
{
    constexpr std::size_t longest = 12; // bytes: "promenade", "chaussee", "brücke" and some to spare
    for (auto length = std::min(longest, word.size()); length >= 3; --length)
        if (const auto found = m_suffixes.find(std::string(word.substr(word.size() - length)));
            found != m_suffixes.end() && length < word.size())
            return {length, found->second};
    return {};
}

} // namespace orrenby::inline ORRENBY_ABI::detail
