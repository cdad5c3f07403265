#include "Orrenby/Foundation/Brackets.hpp"

#include "Orrenby/Platform/Text/UTF16.hpp"
#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

/// What "." does not match.
constexpr std::array<std::string_view, 7> lineEnds{"\n", "\v", "\f", "\r", "\u0085", "\u2028", "\u2029"};

/// How long the line is that the text begins with.
std::size_t lineLength(std::string_view text)
{
    const auto endsHere = [&](const char& first) {
        const bool mayBeEnd = (first >= '\n' && first <= '\r') || first == '\xC2' || first == '\xE2';
        const auto rest = text.substr(static_cast<std::size_t>(&first - text.data()));
        return mayBeEnd
            && std::any_of(lineEnds.begin(), lineEnds.end(), [&](auto end) { return rest.starts_with(end); });
    };
    return static_cast<std::size_t>(std::find_if(text.begin(), text.end(), endsHere) - text.begin());
}

/// The first stretch of the line in which all signs follow one another; nothing when there is none.
std::optional<std::string_view> firstStretch(std::string_view line, const BracketPattern& pattern)
{
    const auto first = line.find(pattern.signs.front());
    auto end = first;
    for (const auto sign : pattern.signs) {
        end = line.find(sign, end);
        if (end == std::string_view::npos)
            return std::nullopt;
        end += sign.size();
    }
    return line.substr(first, end - first);
}

/// The expression's own match in a stretch.
std::optional<BracketMatch> matchIn(std::string_view stretch, const RegularExpression& expression)
{
    const auto found = expression.tryFirstMatch(stretch).value();
    if (!found || !*found)
        return std::nullopt;
    const UTF16View view(stretch);
    BracketMatch match{view.slice((*found)->range()).value_or(stretch), {}};
    for (std::size_t group = 1; group < (*found)->ranges().size(); ++group)
        match.groups.push_back(view.slice((*found)->range(group).value_or(NSRange())).value_or(""));
    return match;
}

/// Without a limit of time: no stretch takes more than linear.
BracketPattern patternOf(std::string_view expression, std::vector<std::string_view> signs)
{
    return {RegularExpression::tryMake(expression, {.timeLimit = 0}).value(), std::move(signs)};
}

} // namespace

const BracketPattern& emphasisPattern()
{
    static const auto& pattern = *new BracketPattern(patternOf(R"(\[(.*?)\])", {"[", "]"}));
    return pattern;
}

const BracketPattern& linkPattern()
{
    static const auto& pattern = *new BracketPattern(patternOf(R"(\[(.*?)\]\((.*?)\))", {"[", "](", ")"}));
    return pattern;
}

std::optional<std::vector<BracketMatch>> bracketMatches(std::string_view text, const BracketPattern& pattern)
{
    if (!pattern.expression)
        return std::nullopt;
    std::vector<BracketMatch> matches;
    while (true) {
        text.remove_prefix(std::min(text.find(pattern.signs.front()), text.size()));
        if (text.empty())
            return matches;
        auto line = text.substr(0, lineLength(text));
        text.remove_prefix(line.size());
        while (const auto stretch = firstStretch(line, pattern)) {
            auto match = matchIn(*stretch, *pattern.expression);
            if (!match)
                return std::nullopt;
            matches.push_back(*std::move(match));
            line.remove_prefix(static_cast<std::size_t>(stretch->data() + stretch->size() - line.data()));
        }
    }
}

std::string formatted(std::string_view text, const std::vector<std::string_view>& arguments)
{
    std::string result;
    auto next = arguments.begin();
    while (!text.empty()) {
        const auto plain = std::min(text.find('%'), text.size());
        result += text.substr(0, plain);
        text.remove_prefix(plain);
        if (text.starts_with("%@")) {
            result += next != arguments.end() ? *next++ : "(null)";
            text.remove_prefix(2);
        } else if (!text.empty()) {
            result += '%';
            text.remove_prefix(text.starts_with("%%") ? 2 : 1);
        }
    }
    return result;
}

std::string formatted(std::string_view text)
{
    std::string result;
    while (!text.empty()) {
        const auto plain = std::min(text.find("%%"), text.size());
        result += text.substr(0, plain);
        text.remove_prefix(plain);
        if (!text.empty()) {
            result += '%';
            text.remove_prefix(2);
        }
    }
    return result;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
