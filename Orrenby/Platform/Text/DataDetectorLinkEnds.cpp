#include "Orrenby/Platform/Text/DataDetectorLinks.hpp"

#include <algorithm>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

constexpr bool isOpening(unsigned char byte) noexcept { return byte == '(' || byte == '['; }
constexpr bool isClosing(unsigned char byte) noexcept { return byte == ')' || byte == ']'; }

} // namespace

std::size_t LinkEnds::lengthAt(std::size_t place) const
{
    const auto byte = m_text.at(place);
    if (byte >= 0x80)
        return m_text.wordLengthAt(place);
    return m_text.isAt(place, DetectorClass::Barrier) ? 0 : 1;
}

void LinkEnds::pairBrackets(std::size_t begin)
{
    m_brackets.clear();
    m_nextBracket = 0;
    std::vector<std::size_t> open; // by their number
    auto place = begin;
    for (std::size_t length = lengthAt(place); length > 0; place += length, length = lengthAt(place)) {
        const auto byte = m_text.at(place);
        if (isOpening(byte)) {
            open.push_back(m_brackets.size());
            m_brackets.push_back({place, nowhere});
        } else if (isClosing(byte)) {
            const auto opening = byte == ')' ? '(' : '[';
            const bool hasPartner = !open.empty() && m_text.at(m_brackets[open.back()].place) == opening;
            m_brackets.push_back({place, nowhere});
            if (hasPartner) {
                m_brackets.back().partner = m_brackets[open.back()].place;
                m_brackets[open.back()].partner = place;
                open.pop_back();
            }
        }
    }
    m_pairedUntil = place;
}

const LinkEnds::Bracket& LinkEnds::bracketAt(std::size_t place)
{
    while (m_brackets[m_nextBracket].place < place)
        ++m_nextBracket;
    return m_brackets[m_nextBracket];
}

LinkEnds::End LinkEnds::endOf(std::size_t begin, std::size_t from)
{
    if (begin >= m_pairedUntil)
        pairBrackets(begin);
    auto place = from;
    std::size_t openBegin = nowhere, openEnd = 0; // the outermost pair around the place
    for (std::size_t length = lengthAt(place); length > 0; place += length, length = lengthAt(place)) {
        const auto byte = m_text.at(place);
        if (isOpening(byte)) {
            const auto partner = bracketAt(place).partner;
            if (partner == nowhere)
                break;
            if (place > openEnd || openBegin == nowhere) {
                openBegin = place;
                openEnd = partner;
            }
        } else if (isClosing(byte)) {
            const auto partner = bracketAt(place).partner;
            if (partner == nowhere || partner < begin)
                break;
        } else if ((byte == ',' || byte == ';') && m_text.at(place + 1) == 'h' && m_text.at(place + 2) == 't'
            && m_text.at(place + 3) == 't' && m_text.at(place + 4) == 'p')
            break; // a list of links
    }
    // A pair that is still open was cut through.
    const bool isCut = openBegin != nowhere && place <= openEnd;
    return {withoutPunctuation(from, isCut ? openBegin : place), std::max(place, from)};
}

std::size_t LinkEnds::withoutPunctuation(std::size_t begin, std::size_t end) const
{
    constexpr std::string_view ending = ".,;:!?'*";
    while (end > begin && ending.find(static_cast<char>(m_text.at(end - 1))) != std::string_view::npos)
        --end;
    return end;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
