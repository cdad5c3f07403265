#include "Orrenby/Platform/Store/PredicateTree.hpp"
#include <array>
#include <charconv>
#include <cmath>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

constexpr std::string_view operatorTexts[] = {"=", "!=", "<", "<=", ">", ">=", "BEGINSWITH", "CONTAINS",
    "ENDSWITH", "LIKE", "MATCHES", "IN", "BETWEEN"};

constexpr std::string_view quantifierTexts[] = {"", "ANY ", "ALL "};

void append(std::string& text, const PredicatePath& path)
{
    if (path.empty())
        text += "SELF";
    for (std::size_t index = 0; index < path.size(); ++index) {
        text += index != 0 ? "." : "";
        text += isPredicateWord(path[index]) ? "#" : "";
        text += path[index];
    }
}

void append(std::string& text, const Any& value)
{
    if (value.isNull()) {
        text += "nil";
    } else if (const auto* const boolean = value.get<bool>()) {
        text += *boolean ? "TRUE" : "FALSE";
    } else if (const auto* const number = value.get<double>(); number != nullptr && std::isfinite(*number)) {
        std::array<char, 32> digits{};
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), *number).ptr;
        const std::string_view written(digits.data(), static_cast<std::size_t>(end - digits.data()));
        text += written;
        if (written.find_first_of(".e") == std::string_view::npos)
            text += ".0";
    } else if (value.kind() == Any::Kind::Int) {
        text += std::to_string(*value.get<std::int64_t>());
    } else if (value.kind() == Any::Kind::Text) {
        text += '"';
        for (const char c : value.text()) {
            if (c == '"' || c == '\\')
                text += '\\';
            text += c;
        }
        text += '"';
    } else
        text += '<' + value.description() + '>';
}

void append(std::string& text, const PredicateComparison& comparison)
{
    text += quantifierTexts[static_cast<std::size_t>(comparison.quantifier)];
    append(text, comparison.left);
    text += ' ';
    text += operatorTexts[static_cast<std::size_t>(comparison.operation)];
    text += comparison.ignoresCase ? "[c] " : " ";
    const bool isList = comparison.operation >= PredicateOperator::In;
    if (comparison.right)
        return append(text, *comparison.right);
    text += isList ? "{" : "";
    for (std::size_t index = 0; index < comparison.values.size(); ++index) {
        text += index != 0 ? ", " : "";
        append(text, comparison.values[index]);
    }
    text += isList ? "}" : "";
}

void append(std::string& text, const PredicateNode& node)
{
    switch (node.kind) {
    case PredicateKind::True:
        text += "TRUEPREDICATE";
        return;
    case PredicateKind::False:
        text += "FALSEPREDICATE";
        return;
    case PredicateKind::Comparison:
        return append(text, node.comparison);
    case PredicateKind::Not:
        text += "NOT ";
        break;
    case PredicateKind::And:
    case PredicateKind::Or:
        break;
    }
    for (std::size_t index = 0; index < node.children.size(); ++index) {
        const auto& child = *node.children[index];
        if (index != 0)
            text += node.kind == PredicateKind::And ? " AND " : " OR ";
        const bool isChain = child.kind == PredicateKind::And || child.kind == PredicateKind::Or;
        text += isChain ? "(" : "";
        append(text, child);
        text += isChain ? ")" : "";
    }
}

} // namespace

std::string predicateText(const PredicateNode& node)
{
    std::string text;
    append(text, node);
    return text;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
