#include "Card/Card.hpp"

#include "Card/Caption.hpp"
#include "Feed/FeedPrinter.hpp"
#include "Orrenby/Platform/Drawing/Font.hpp"
#include "Settings/Language.hpp"
#include "Terminal/MarkedText.hpp"
#include <algorithm>
#include <memory>
#include <string_view>

namespace fieldbook {

namespace {

using CardPlugin = orrenby::Plugin<CardStyle, orrenby::Ref<Card>, Report>;

/// The first number in a text, or nothing.
std::string firstNumber(std::string_view text)
{
    constexpr std::string_view digits = "0123456789";
    const auto begin = text.find_first_of(digits);
    if (begin == std::string_view::npos)
        return "";
    return std::string(text.substr(begin, text.find_first_not_of(digits, begin) - begin));
}

class AlertCard : public Card {
public:
    using Card::Card;

private:
    std::string note(const Report&) const override
    {
        return terminal().styled(Style::red, "keep people away until it is cleared");
    }
};

class CountCard : public Card {
public:
    using Card::Card;

private:
    std::string note(const Report& report) const override
    {
        return "counted: " + firstNumber(report.title.text);
    }
};

class AlertCards : public CardPlugin {
public:
    using Plugin::Plugin;
    bool isEnabled(const CardStyle&, const Report& report) const override
    {
        return report.severity == Severity::high;
    }
    orrenby::Ref<Card> build(const CardStyle& style) const override
    {
        return std::make_shared<AlertCard>(style);
    }
};

class CountCards : public CardPlugin {
public:
    using Plugin::Plugin;
    bool isEnabled(const CardStyle&, const Report& report) const override
    {
        return !firstNumber(report.title.text).empty();
    }
    orrenby::Ref<Card> build(const CardStyle& style) const override
    {
        return std::make_shared<CountCard>(style);
    }
};

class PlainCards : public CardPlugin {
public:
    using Plugin::Plugin;
    bool isEnabled(const CardStyle&, const Report&) const override { return true; }
    orrenby::Ref<Card> build(const CardStyle& style) const override { return std::make_shared<Card>(style); }
};

/// One line each of a text of several.
std::vector<std::string> linesOf(std::string_view text)
{
    std::vector<std::string> lines;
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

} // namespace

std::string Card::note(const Report&) const { return ""; }

std::vector<std::string> Card::lines(const NumberedReport& numbered) const
{
    const orrenby::TextAttributes title{{orrenby::TextAttribute::font, orrenby::Font::boldSystem(13)}};
    const auto& report = numbered.report;
    std::vector<std::string> lines;
    lines.push_back('#' + std::to_string(numbered.number) + ' '
        + terminal().styled(styleOf(report.severity), padded(nameOf(report.severity)))
        + marked(terminal(), report.title.text, title));
    lines.push_back(marked(terminal(), report.place.text) + ", by " + report.observer.text
        + (report.date ? ", " + shownDate(*report.date) : ""));
    if (auto text = note(report); !text.empty())
        lines.push_back(std::move(text));
    if (m_style.isDetailed && report.body)
        for (auto& line : linesOf(captioned(terminal(), report.body->text)))
            lines.push_back(std::move(line));
    for (auto& line : lines)
        line.insert(0, "| ");
    return lines;
}

Cards::Plugins Cards::plugins(const CardStyle& style) const
{
    return {std::make_shared<AlertCards>(style), std::make_shared<CountCards>(style),
        std::make_shared<PlainCards>(style)};
}

} // namespace fieldbook
