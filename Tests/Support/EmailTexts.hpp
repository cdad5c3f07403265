#pragma once

/// @file
/// Texts made by chance of what the pattern of e-mail addresses is about.

#include <array>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>

namespace orrenby::testing {

/// Characters that the pattern tells apart, and pieces that lead deep into it. Always UTF-8.
inline constexpr auto emailAtoms = std::to_array<std::string_view>(
    {"a", "b", "z", "A", "M", "Z", "0", "1", "2", "5", "6", "9", "-", ".", ".", ".", "@", "@", "@", "[", "]",
        "\"", "\"", "\\", "\\", ":", " ", "\t", "\n", "\r", "\x01", "\x0B", "\x7F", "!", "/", "`", "|", "(",
        ",", "\u00E9", "\u0436", "\u4E2D", "\U00020000", "\u20AC", "\u0301", "\u2028", "a@", "@b.", "b.co",
        "[1.2.3.", "[1.2.3.4]", "255.", "256.", "x:", "x-1:", "\"@", "a\"", "com"});

/// Short texts: a third of them noise, the others nearly addresses, and an eighth addresses.
class EmailTexts {
public:
    explicit EmailTexts(std::uint64_t seed)
        : m_engine(seed)
    {}

    std::string next()
    {
        if (below(3) == 0)
            return noise(below(12));
        auto text = localPart() + "@" + domain();
        if (below(2) == 0)
            insertAtom(text);
        return text;
    }

private:
    std::size_t below(std::size_t bound) { return m_engine() % bound; }
    std::string_view atom() { return emailAtoms[below(emailAtoms.size())]; }

    void insertAtom(std::string& text)
    {
        auto place = below(text.size() + 1);
        while (place < text.size() && (static_cast<unsigned char>(text[place]) & 0xC0U) == 0x80)
            ++place; // not within a character
        text.insert(place, atom());
    }

    std::string noise(std::size_t count)
    {
        std::string text;
        for (; count > 0; --count)
            text += atom();
        return text;
    }

    /// One or more of the pieces, which are letters, digits and what else may stand there nearly always.
    std::string run(std::string_view others)
    {
        static constexpr std::array<std::string_view, 9> letters{
            "a", "b", "z", "A", "Z", "0", "9", "\u00E9", "\u4E2D"};
        std::string text;
        for (auto left = 1 + below(4); left > 0; --left)
            if (const auto place = below(letters.size() + others.size()); place < letters.size())
                text += letters[place];
            else
                text += others[place - letters.size()];
        return text;
    }

    std::string localPart()
    {
        if (below(4) == 0)
            return "\"" + run("\\\\\\ \x01.@") + "\"";
        return below(2) == 0 ? run("!#-~") : run("!#") + "." + run("|`");
    }

    std::string domain()
    {
        if (below(3) == 0)
            return "[" + number() + "." + number() + "." + number() + "."
                + (below(2) == 0 ? number() : run("-") + ":" + run("\\\\[] @")) + "]";
        std::string text = run("-");
        for (auto labels = 1 + below(3); labels > 0; --labels)
            text += "." + run("-");
        return text;
    }

    std::string number()
    {
        const auto value = std::to_string(below(270));
        return below(4) == 0 ? "0" + value : value;
    }

    std::mt19937_64 m_engine;
};

} // namespace orrenby::testing
