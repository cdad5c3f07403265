#include "Orrenby/Platform/Text/EmailPatternMismatch.hpp"

#include "Orrenby/Platform/Text/UTF8.hpp"
#include <fmt/format.h>
#include <re2/re2.h>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace {

using Piece = EmailPatternPiece;
using Mismatch = std::optional<EmailPatternMismatch>;

bool isDigit(char character) { return character >= '0' && character <= '9'; }
bool isLowerCase(char character) { return character >= 'a' && character <= 'z'; }
bool isASCII(char character) { return static_cast<unsigned char>(character) < 0x80; }
bool isASCIILetter(char character) { return isLowerCase(static_cast<char>(character | 0x20)); }

/// The letters of Unicode are those of the engine that matches, so that both always agree.
bool isLetter(std::string_view character)
{
    if (character.size() == 1)
        return isASCIILetter(character.front());
    static const RE2& letter = *new RE2("\\p{L}", RE2::Quiet); // never destroyed, as the pattern itself
    return RE2::FullMatch(re2::StringPiece(character.data(), character.size()), letter);
}

/// A character as a sentence begins with it.
std::string named(std::string_view character)
{
    const auto scalar = firstUTF8Scalar(character);
    if (!scalar.isValid)
        return "A byte that is no UTF-8";
    if (scalar.value == ' ')
        return "A space";
    if (scalar.value == '"')
        return "A quotation mark";
    if (scalar.value < 0x20 || scalar.value == 0x7F)
        return fmt::format("The control character U+{:04X}", static_cast<std::uint32_t>(scalar.value));
    if (scalar.value < 0x80 || isLetter(character))
        return fmt::format("\"{}\"", character);
    return fmt::format("The character U+{:04X}", static_cast<std::uint32_t>(scalar.value));
}

/// Goes through the text once. Each function takes one piece from where the walk stands, and gives what is
/// wrong with it.
class Walk {
public:
    explicit Walk(std::string_view text)
        : m_text(text)
    {}

    Mismatch address()
    {
        if (m_text.empty())
            return wrong(0, "The address is empty.");
        if (auto mismatch = next() == '"' ? quotedLocalPart() : localPart())
            return mismatch;
        ++m_position; // the "@"
        if (!isAtEnd() && next() == '[')
            return literal();
        return domain();
    }

private:
    bool isAtEnd() const { return m_position == m_text.size(); }
    char next() const { return m_text[m_position]; }

    /// The character here, which may be several bytes.
    std::string_view character() const
    {
        const auto rest = m_text.substr(m_position);
        return isASCII(rest.front()) ? rest.substr(0, 1) : rest.substr(0, firstUTF8Scalar(rest).length);
    }

    Mismatch wrong(std::size_t position, std::string sentence) const
    {
        return EmailPatternMismatch{m_piece, position, std::move(sentence)};
    }
    Mismatch wrongHere(std::string sentence) const { return wrong(m_position, std::move(sentence)); }
    Mismatch strangeHere(std::string_view place) const
    {
        return wrongHere(fmt::format("{} may not stand {}.", named(character()), place));
    }

    Mismatch localPart()
    {
        m_piece = Piece::LocalPart;
        if (next() == '@')
            return wrongHere("There is nothing before the \"@\".");
        for (char before = '.';; ++m_position) {
            if (isAtEnd())
                return wrongHere("The \"@\" is missing.");
            const char here = next();
            if (before == '.' && here == '.')
                return wrongHere(m_position == 0 ? "The local part begins with a dot."
                                                 : "Two dots stand side by side in the local part.");
            if (here == '@')
                return before == '.' ? wrong(m_position - 1, "The local part ends with a dot.")
                                     : std::nullopt;
            const auto all = character();
            constexpr std::string_view symbols = "!#$%&'*+/=?^_`{|}~-.";
            if (!isDigit(here) && symbols.find(here) == std::string_view::npos && !isLetter(all))
                return strangeHere("in the local part");
            m_position += all.size() - 1;
            before = here;
        }
    }

    Mismatch quotedLocalPart()
    {
        m_piece = Piece::QuotedLocalPart;
        for (++m_position;; ++m_position) {
            if (isAtEnd())
                return wrongHere("The quotation mark is not closed.");
            bool isEscaped = false;
            if (next() == '\\') {
                isEscaped = true;
                if (++m_position == m_text.size())
                    return wrongHere("The quotation mark is not closed.");
            }
            const char here = next();
            if (here == '"' && !isEscaped)
                break;
            if (here == '\0' || here == '\n' || here == '\r' || !isASCII(here))
                return strangeHere("between quotation marks");
            if (!isEscaped && (here == ' ' || here == '\t'))
                return wrongHere(
                    named(character()) + " stands between quotation marks only behind a \"\\\".");
        }
        if (++m_position == m_text.size())
            return wrongHere("The \"@\" is missing.");
        if (next() != '@')
            return wrongHere("Behind the closing quotation mark stands only the \"@\".");
        return std::nullopt;
    }

    /// Up to the end of the text.
    Mismatch domain()
    {
        m_piece = Piece::Domain;
        for (bool isFirst = true;; isFirst = false) {
            if (auto mismatch = label(isFirst))
                return mismatch;
            if (isAtEnd())
                return isFirst ? wrongHere("The domain has no dot.") : std::nullopt;
            ++m_position; // the dot
        }
    }

    /// Up to a dot or the end of the text. Only the last label may have any letter between its ends.
    Mismatch label(bool isFirst)
    {
        const auto start = m_position;
        auto last = start;              // where the latest character begins
        std::optional<std::size_t> odd; // the first that may stand between the ends of the last label alone
        for (; !isAtEnd() && next() != '.'; m_position += character().size()) {
            const char here = next();
            if (!isDigit(here) && here != '-' && !isLetter(character()))
                return strangeHere("in the domain");
            if (m_position == start && here == '-')
                return wrongHere("A label of the domain begins with \"-\".");
            if (last != start && !odd && !isLowerCase(m_text[last]) && !isDigit(m_text[last])
                && m_text[last] != '-')
                odd = last;
            if (odd && isFirst)
                return oddIn(*odd);
            last = m_position;
        }
        if (m_position == start && isAtEnd())
            return isFirst ? wrongHere("There is nothing behind the \"@\".")
                           : wrong(start - 1, "The domain ends with a dot.");
        if (m_position == start)
            return wrongHere(
                isFirst ? "The domain begins with a dot." : "Two dots stand side by side in the domain.");
        if (odd && !isAtEnd())
            return oddIn(*odd);
        if (m_text[last] == '-')
            return wrong(last, "A label of the domain ends with \"-\".");
        return std::nullopt;
    }

    Mismatch oddIn(std::size_t position) const
    {
        return wrong(position,
            "Between the ends of a label before the last stand only the letters from a to z, digits and "
            "\"-\".");
    }

    Mismatch literal()
    {
        m_piece = Piece::AddressLiteral;
        ++m_position; // the bracket
        for (int number = 0; number < 3; ++number) {
            const auto start = m_position;
            while (!isAtEnd() && isDigit(next()))
                ++m_position;
            if (auto mismatch = octet(start))
                return mismatch;
            if (isAtEnd() || next() == ']')
                return wrongHere("An address literal has four numbers with dots between them.");
            if (next() != '.')
                return strangeHere("in the numbers of an address literal");
            ++m_position;
        }
        return lastOfLiteral();
    }

    /// The digits between `start` and here are a number from 0 to 255.
    Mismatch octet(std::size_t start) const
    {
        const auto digits = m_text.substr(start, m_position - start);
        if (digits.empty() && (isAtEnd() || next() == '.' || next() == ']'))
            return wrong(start, "A number of the address literal is missing.");
        if (digits.empty())
            return strangeHere("in the numbers of an address literal");
        if (digits.size() > 3)
            return wrong(start, "A number of the address literal has more than three digits.");
        int value = 0;
        for (const char digit : digits)
            value = value * 10 + (digit - '0');
        return value > 255 ? wrong(start, "A number of the address literal is above 255.") : std::nullopt;
    }

    /// The fourth number, or a tag with text behind it.
    Mismatch lastOfLiteral()
    {
        const auto start = m_position;
        char last = 0;
        bool isNumber = true;
        while (!isAtEnd() && (isDigit(next()) || next() == '-' || isLetter(character()))) {
            last = next();
            isNumber = isNumber && isDigit(last);
            m_position += character().size();
        }
        if (isAtEnd())
            return wrongHere("The address literal is not closed with \"]\".");
        if (next() == ':') {
            if (m_position == start)
                return wrongHere("There is no tag before the \":\" of the address literal.");
            if (last == '-')
                return wrong(m_position - 1, "The tag of the address literal ends with \"-\".");
            return textOfLiteral();
        }
        if (next() != ']')
            return strangeHere("in the last number or tag of an address literal");
        if (!isNumber)
            return wrongHere("Behind the tag of the address literal stands a \":\" and a text.");
        if (auto mismatch = octet(start))
            return mismatch;
        if (++m_position != m_text.size())
            return wrongHere("Nothing may stand behind the address literal.");
        return std::nullopt;
    }

    /// Brackets belong to the text, too; the last character closes the literal. A space or a tab may follow
    /// any backslash, since no backslash is bound to the one before it.
    Mismatch textOfLiteral()
    {
        const auto start = ++m_position; // behind the colon
        for (; !isAtEnd(); ++m_position) {
            const char here = next();
            if (here == '\0' || here == '\n' || here == '\r' || !isASCII(here))
                return strangeHere("in the text of an address literal");
            if ((here == ' ' || here == '\t') && m_text[m_position - 1] != '\\')
                return wrongHere(
                    named(character()) + " stands in the text of an address literal only behind a \"\\\".");
        }
        if (m_text.back() != ']' || m_position == start)
            return wrongHere("The address literal is not closed with \"]\".");
        if (m_position == start + 1)
            return wrong(start, "There is no text behind the \":\" of the address literal.");
        return std::nullopt;
    }

    std::string_view m_text;
    std::size_t m_position = 0;
    Piece m_piece = Piece::LocalPart;
};

} // namespace

std::optional<EmailPatternMismatch> emailPatternMismatch(std::string_view text)
{
    return Walk(text).address();
}

} // namespace orrenby
