#include "Orrenby/Platform/Text/DataDetectorLinks.hpp"

#include <algorithm>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

constexpr std::size_t longestScheme = 32;
constexpr std::size_t longestLabel = 63; // bytes, the limit of the domain name system

} // namespace

std::optional<DetectedLink> LinkScanner::next()
{
    while (m_place < m_text.size()) {
        if (!m_text.isAt(m_place, DetectorClass::Head) && m_text.wordLengthAt(m_place) == 0) {
            m_place += std::max<std::size_t>(m_text.scalarAt(m_place).length, 1);
            continue;
        }
        const auto head = headAt(m_place);
        const auto behind = m_text.at(head.end);
        m_place = head.end + (behind == ':' || behind == '@' ? 1 : 0);
        std::optional<DetectedLink> link;
        if (behind == '@')
            link = mailLink(head);
        else if (behind == ':')
            link = schemeLink(head);
        if (!link && head.hasDot && behind != '@')
            link = domainLink(head);
        if (link)
            return link;
    }
    return std::nullopt;
}

LinkScanner::Head LinkScanner::headAt(std::size_t begin) const
{
    Head head{.begin = begin, .end = begin, .scheme = begin, .narrow = begin};
    while (true) {
        const auto byte = m_text.at(head.end);
        if (byte >= 0x80) {
            const auto scalar = m_text.scalarAt(head.end);
            if (!isWordScalar(scalar.value))
                return head;
            head.end += scalar.length;
            head.scheme = head.end;
            if (isWideScalar(scalar.value))
                head.narrow = head.end;
            continue;
        }
        if ((detectorClasses[byte] & static_cast<std::uint8_t>(DetectorClass::Head)) == 0)
            return head;
        ++head.end;
        if ((detectorClasses[byte] & static_cast<std::uint8_t>(DetectorClass::Scheme)) == 0)
            head.scheme = head.end;
        head.hasDot = head.hasDot || byte == '.';
    }
}

bool LinkScanner::mayFollow(SchemeForm form, std::size_t place) const
{
    const auto byte = m_text.at(place);
    switch (form) {
    case SchemeForm::Host:
        return m_text.wordLengthAt(place) > 0 || byte == '[' || byte == '%' || byte == '_';
    case SchemeForm::Path:
    case SchemeForm::Unknown:
        return m_text.wordLengthAt(place) > 0 || byte == '[' || byte == '%' || byte == '/' || byte == '_';
    case SchemeForm::Word:
        return m_text.wordLengthAt(place) > 0;
    case SchemeForm::Number:
        return m_text.isDigitAt(place)
            || ((byte == '+' || byte == '-' || byte == '(') && m_text.isDigitAt(place + 1));
    case SchemeForm::Mail:
        return m_text.wordLengthAt(place) > 0 || byte == '?' || byte == '%';
    case SchemeForm::Query:
        return byte == '?' && m_text.wordLengthAt(place + 1) > 0;
    }
    return false;
}

std::optional<DetectedLink> LinkScanner::schemeLink(const Head& head)
{
    auto begin = head.scheme;
    while (begin < head.end && (m_text.at(begin) < 'A' || m_text.isDigitAt(begin)))
        ++begin;
    if (begin == head.end || head.end - begin > longestScheme)
        return std::nullopt;
    const bool hasSlashes = m_text.at(head.end + 1) == '/' && m_text.at(head.end + 2) == '/';
    const auto scheme = m_text.lowered({begin, head.end});
    auto form = m_rules.schemeForm(scheme);
    if (form == SchemeForm::Unknown) { // a sentence may run into it: "here.http://example.com"
        const auto dot = scheme.find_last_of(".-");
        if (dot != std::string::npos)
            form = m_rules.schemeForm(std::string_view(scheme).substr(dot + 1));
        if (form != SchemeForm::Unknown)
            begin += dot + 1;
    }
    const bool wantsSlashes = form == SchemeForm::Host || form == SchemeForm::Path
        || form == SchemeForm::Unknown;
    if (wantsSlashes != hasSlashes || head.end - begin < 2)
        return std::nullopt;
    const auto from = head.end + (hasSlashes ? 3 : 1);
    if (!mayFollow(form, from))
        return std::nullopt;
    const auto [end, resume] = m_ends.endOf(begin, from);
    if (end <= from)
        return std::nullopt;
    // "Tel:030 1234567" is a word, a colon and a number with a blank in it.
    if (form == SchemeForm::Number && m_text.blankLengthAt(end) > 0
        && m_text.isDigitAt(end + m_text.blankLengthAt(end)))
        return std::nullopt;
    m_place = resume;
    return DetectedLink{{begin, end}, ""};
}

LinkScanner::Domain LinkScanner::domainAt(std::size_t begin) const
{
    Domain domain{.end = begin, .labels = 1, .lastLabel = begin, .isSound = true, .isAllDigits = true};
    auto place = begin;
    while (true) {
        const auto byte = m_text.at(place);
        if (byte == '.') {
            // A dot that no label follows ends the name, or a sentence.
            if (m_text.wordLengthAt(place + 1) == 0 && m_text.at(place + 1) != '-')
                break;
            domain.isSound = domain.isSound && place > domain.lastLabel && m_text.at(place - 1) != '-';
            ++domain.labels;
            domain.lastLabel = ++place;
        } else if (byte == '-') {
            domain.isSound = domain.isSound && place > domain.lastLabel;
            ++place;
        } else if (const auto length = m_text.wordLengthAt(place); length > 0) {
            const bool isInLast = m_text.isDigitAt(place);
            domain.isAllDigits = (place == domain.lastLabel || domain.isAllDigits) && isInLast;
            place += length;
        } else
            break;
    }
    while (place > domain.lastLabel && m_text.at(place - 1) == '-')
        --place;
    domain.end = place;
    domain.isSound = domain.isSound && place > domain.lastLabel && place - domain.lastLabel <= longestLabel;
    return domain;
}

/// "example.com.Then it" is a name and a new sentence.
bool LinkScanner::dropCapitalLabel(std::size_t begin, Domain& domain) const
{
    if (domain.labels < 3 || !isCapitalLabel(domain))
        return false;
    domain.end = domain.lastLabel - 1;
    --domain.labels;
    const auto oldest = domain.end > begin + longestLabel ? domain.end - longestLabel - 1 : begin;
    for (domain.lastLabel = domain.end; domain.lastLabel > oldest && m_text.at(domain.lastLabel - 1) != '.';)
        --domain.lastLabel;
    return true;
}

bool LinkScanner::isCapitalLabel(const Domain& domain) const
{
    return m_text.isAt(domain.lastLabel, DetectorClass::Upper)
        && !m_text.isAt(domain.lastLabel + 1, DetectorClass::Upper);
}

DomainEnding LinkScanner::ending(const Domain& domain) const
{
    if (!domain.isSound || domain.end - domain.lastLabel > longestLabel)
        return DomainEnding::Unknown;
    return m_rules.domainEnding(m_text.lowered({domain.lastLabel, domain.end}));
}

std::optional<DetectedLink> LinkScanner::mailLink(const Head& head)
{
    auto begin = head.narrow < head.end ? head.narrow : head.begin;
    while (begin < head.end && m_text.wordLengthAt(begin) == 0 && m_text.at(begin) != '_')
        ++begin;
    const bool isSound = begin < head.end && m_text.at(head.end - 1) != '.'
        && m_text.slice({begin, head.end}).find("..") == std::string_view::npos
        && m_text.scalarBefore(begin).value != '@';
    if (!isSound)
        return std::nullopt;
    auto domain = domainAt(head.end + 1);
    const auto behind = m_text.at(domain.end);
    if (!domain.isSound || domain.labels < 2 || behind == '@' || behind == '_')
        return std::nullopt;
    auto known = ending(domain);
    if (known == DomainEnding::Unknown && dropCapitalLabel(head.end + 1, domain))
        known = ending(domain);
    // A name inside a company's own network is as good here, if it looks like one.
    const bool isPlausible = known != DomainEnding::Unknown
        || (!domain.isAllDigits && domain.end - domain.lastLabel >= 2);
    if (!isPlausible)
        return std::nullopt;
    m_place = domain.end;
    return DetectedLink{{begin, domain.end}, "mailto:"};
}

std::size_t LinkScanner::endOfPort(std::size_t place) const
{
    auto end = place + 1;
    while (end < place + 6 && m_text.isDigitAt(end))
        ++end;
    const bool isPort = m_text.at(place) == ':' && end > place + 1 && m_text.wordLengthAt(end) == 0;
    return isPort ? end : place;
}

std::optional<DetectedLink> LinkScanner::domainLink(const Head& head)
{
    auto begin = head.begin;
    for (auto place = head.begin; place < head.end; ++place) // behind an elision: "l'example.com"
        if (m_text.at(place) == '\'' && m_text.wordLengthAt(place + 1) > 0 && place < head.begin + 4)
            begin = place + 1;
    if (head.narrow > begin && head.narrow < head.end && m_text.at(head.narrow) != '.')
        begin = head.narrow;
    while (begin < head.end && m_text.wordLengthAt(begin) == 0)
        ++begin;
    constexpr std::string_view before = "@/\\#$~=";
    const auto previous = m_text.scalarBefore(begin).value;
    if (begin == head.end || m_text.scalarBefore(head.begin).value == '@'
        || (previous < 0x80 && previous != 0
            && before.find(static_cast<char>(previous)) != std::string_view::npos))
        return std::nullopt;

    auto domain = domainAt(begin);
    const auto behind = m_text.at(domain.end);
    const bool goesOn = behind == '@'
        || ((behind == '_' || behind == '+' || behind == '%' || behind == '&')
            && m_text.wordLengthAt(domain.end + 1) > 0);
    if (goesOn || domain.labels < 2)
        return std::nullopt;
    auto known = ending(domain);
    if (known == DomainEnding::Unknown && dropCapitalLabel(begin, domain))
        known = ending(domain);
    if (known == DomainEnding::Unknown)
        return std::nullopt;
    const auto name = m_text.slice({begin, domain.end});
    const bool isWeb = name.size() > 4 && m_text.lowered({begin, begin + 4}) == "www.";
    if (isCapitalLabel(domain) && !isWeb)
        return std::nullopt;
    const bool isNumbered = domain.end - domain.lastLabel == 2 // "in 4.2.in the manual"
        && name.find_first_not_of("0123456789.") == domain.lastLabel - begin;
    const auto port = endOfPort(domain.end);
    const auto tail = m_text.at(port);
    const bool hasTail = tail == '/' || tail == '?' || tail == '#';
    const bool isFile = known == DomainEnding::FileEnding && tail != '/' && port == domain.end;
    if ((isNumbered || isFile) && !isWeb)
        return std::nullopt;
    m_place = port;
    if (!hasTail)
        return DetectedLink{{begin, port}, "http://"};
    const auto [end, resume] = m_ends.endOf(begin, port);
    m_place = resume;
    return DetectedLink{{begin, end}, "http://"};
}

} // namespace orrenby::inline ORRENBY_ABI::detail
