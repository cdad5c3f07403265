#include "Orrenby/Platform/Store/PredicateTree.hpp"
#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

using Operator = PredicateOperator;

constexpr bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }
constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }
constexpr bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

constexpr bool isEqualWord(std::string_view word, std::string_view upper)
{
    return std::equal(word.begin(), word.end(), upper.begin(), upper.end(),
        [](char a, char b) { return (a >= 'a' && a <= 'z' ? static_cast<char>(a - 'a' + 'A') : a) == b; });
}

constexpr std::string_view words[] = {"AND", "OR", "NOT", "ANY", "NONE", "IN", "BETWEEN", "BEGINSWITH",
    "CONTAINS", "ENDSWITH", "LIKE", "SELF", "NIL", "NULL", "TRUE", "FALSE", "YES", "NO", "TRUEPREDICATE",
    "FALSEPREDICATE"};

constexpr std::pair<std::string_view, Operator> wordOperators[] = {{"BEGINSWITH", Operator::BeginsWith},
    {"CONTAINS", Operator::Contains}, {"ENDSWITH", Operator::EndsWith}, {"LIKE", Operator::Like},
    {"IN", Operator::In}, {"BETWEEN", Operator::Between}};

// Longer ones before their beginnings.
constexpr std::pair<std::string_view, Operator> signOperators[] = {{"==", Operator::Equal},
    {"=<", Operator::LessOrEqual}, {"=>", Operator::GreaterOrEqual}, {"=", Operator::Equal},
    {"!=", Operator::NotEqual}, {"<>", Operator::NotEqual}, {"<=", Operator::LessOrEqual},
    {"<", Operator::Less}, {">=", Operator::GreaterOrEqual}, {">", Operator::Greater}};

Operator mirrored(Operator operation)
{
    switch (operation) {
    case Operator::Less:
        return Operator::Greater;
    case Operator::LessOrEqual:
        return Operator::GreaterOrEqual;
    case Operator::Greater:
        return Operator::Less;
    case Operator::GreaterOrEqual:
        return Operator::LessOrEqual;
    default:
        return operation;
    }
}

/// Reads by recursive descent; what is nested is counted before it is entered.
class Reader {
public:
    Reader(std::string_view text, const std::vector<Any>& arguments)
        : m_text(text)
        , m_arguments(arguments)
    {}

    Ref<const PredicateNode> read()
    {
        auto node = readEither(0);
        skipBlanks();
        if (m_place != m_text.size())
            fail("AND, OR or the end is expected");
        if (m_nextArgument != m_arguments.size())
            fail("More arguments are given than the text asks for");
        return node;
    }

private:
    struct Operand {
        std::optional<PredicatePath> path = {};
        Any value = {};
        std::size_t position = 0;
    };

    [[noreturn]] void fail(std::string_view message) const { fail(message, m_place); }
    [[noreturn]] static void fail(std::string_view message, std::size_t position)
    {
        throwInvalidPredicate(std::string(message), position);
    }

    char here() const { return m_place < m_text.size() ? m_text[m_place] : '\0'; }

    void skipBlanks()
    {
        while (m_place < m_text.size() && isBlank(m_text[m_place]))
            ++m_place;
    }

    bool skipSign(std::string_view sign)
    {
        skipBlanks();
        if (!m_text.substr(m_place).starts_with(sign))
            return false;
        m_place += sign.size();
        return true;
    }

    void expectSign(std::string_view sign)
    {
        if (!skipSign(sign))
            fail(std::string(sign) + " is expected");
    }

    std::string_view wordHere()
    {
        skipBlanks();
        auto end = m_place;
        if (end < m_text.size() && isLetter(m_text[end]))
            while (end < m_text.size() && (isLetter(m_text[end]) || isDigit(m_text[end])))
                ++end;
        return m_text.substr(m_place, end - m_place);
    }

    bool skipWord(std::string_view upper)
    {
        const auto word = wordHere();
        if (!isEqualWord(word, upper))
            return false;
        m_place += word.size();
        return true;
    }

    Ref<const PredicateNode> readChain(PredicateKind kind, std::size_t depth)
    {
        const bool isOr = kind == PredicateKind::Or;
        std::vector<Ref<const PredicateNode>> members;
        do {
            if (members.size() == maximumComparisonCount)
                fail("There are too many comparisons");
            members.push_back(isOr ? readChain(PredicateKind::And, depth) : readNegation(depth));
        } while (skipSign(isOr ? "||" : "&&") || skipWord(isOr ? "OR" : "AND"));
        return members.size() == 1 ? std::move(members[0]) : compoundNode(kind, std::move(members), m_place);
    }

    Ref<const PredicateNode> readEither(std::size_t depth) { return readChain(PredicateKind::Or, depth); }

    Ref<const PredicateNode> readNegation(std::size_t depth)
    {
        skipBlanks();
        const auto position = m_place;
        const bool isNegated = skipSign("!") || skipWord("NOT");
        const bool isNested = !isNegated && skipSign("(");
        if (!isNegated && !isNested)
            return readLeaf();
        // Counted as the deepest tree that can come of it.
        if (depth + 1 >= maximumPredicateDepth)
            fail("The predicate is nested too deeply", position);
        if (isNegated)
            return compoundNode(PredicateKind::Not, {readNegation(depth + 1)}, position);
        auto node = readEither(depth + 1);
        expectSign(")");
        return node;
    }

    Ref<const PredicateNode> readLeaf()
    {
        if (skipWord("TRUEPREDICATE"))
            return constantNode(true);
        if (skipWord("FALSEPREDICATE"))
            return constantNode(false);
        PredicateComparison comparison;
        const bool isNone = skipWord("NONE");
        comparison.isAny = isNone || skipWord("ANY");
        auto left = readOperand();
        comparison.operation = readOperator();
        if (comparesTexts(comparison.operation) && here() == '[')
            readOptions(comparison);
        if (comparison.operation == Operator::In || comparison.operation == Operator::Between)
            comparison.values = readList(comparison.operation);
        else {
            auto right = readOperand();
            if (!left.path && right.path && !comparesTexts(comparison.operation)) {
                std::swap(left, right);
                comparison.operation = mirrored(comparison.operation);
            }
            comparison.right = std::move(right.path);
            if (!comparison.right)
                comparison.values.push_back(std::move(right.value));
        }
        if (!left.path)
            fail("A key is expected", left.position);
        comparison.left = std::move(*left.path);
        auto node = comparisonNode(std::move(comparison));
        return isNone ? compoundNode(PredicateKind::Not, {std::move(node)}) : node;
    }

    Operator readOperator()
    {
        const auto word = wordHere();
        for (const auto& [name, operation] : wordOperators)
            if (isEqualWord(word, name)) {
                m_place += word.size();
                return operation;
            }
        for (const auto& [sign, operation] : signOperators)
            if (skipSign(sign))
                return operation;
        fail("A comparison is expected");
    }

    void readOptions(PredicateComparison& comparison)
    {
        ++m_place;
        if (here() != 'c' && here() != 'C')
            fail("Only [c] is known");
        ++m_place;
        if (here() != ']')
            fail("] is expected");
        ++m_place;
        comparison.ignoresCase = true;
    }

    Operand readOperand()
    {
        skipBlanks();
        Operand operand{.position = m_place};
        const char c = here();
        if (c == '"' || c == '\'')
            operand.value = readText(c);
        else if (isDigit(c) || c == '-' || c == '.')
            operand.value = readNumber();
        else if (skipSign("%@")) {
            operand.value = nextArgument(operand.position);
            if (operand.value.kind() == Any::Kind::List)
                fail("A list stands only after IN and BETWEEN", operand.position);
        } else if (skipSign("%K"))
            operand.path = readPath(nextArgument(operand.position).text(), operand.position);
        else if (!readWordValue(operand))
            operand.path = readKeys();
        return operand;
    }

    bool readWordValue(Operand& operand)
    {
        if (skipWord("NIL") || skipWord("NULL"))
            return true;
        if (skipWord("TRUE") || skipWord("YES")) {
            operand.value = true;
            return true;
        }
        if (skipWord("FALSE") || skipWord("NO")) {
            operand.value = false;
            return true;
        }
        return false;
    }

    PredicatePath readKeys()
    {
        PredicatePath keys;
        if (skipWord("SELF")) {
            if (here() != '.')
                return keys;
            ++m_place;
        }
        for (;; ++m_place) {
            const bool isMarked = here() == '#';
            if (isMarked)
                ++m_place;
            // No blanks within a path.
            const auto word = m_place < m_text.size() && isLetter(m_text[m_place]) ? wordHere()
                                                                                   : std::string_view();
            if (word.empty() || (!isMarked && isPredicateWord(word)))
                fail("A key or a value is expected");
            keys.emplace_back(word);
            m_place += word.size();
            if (here() != '.')
                return keys;
        }
    }

    std::vector<Any> readList(Operator operation)
    {
        skipBlanks();
        const auto position = m_place;
        std::vector<Any> values;
        if (skipSign("%@")) {
            const auto argument = nextArgument(position);
            const auto* const list = argument.get<std::vector<Any>>();
            if (list == nullptr)
                fail("The argument is no list", position);
            if (list->size() > maximumPredicateValueCount)
                fail("There are too many values", position);
            values = *list;
        } else {
            expectSign("{");
            while (!skipSign("}")) {
                if (!values.empty())
                    expectSign(",");
                auto operand = readOperand();
                if (operand.path)
                    fail("A list holds values only", operand.position);
                if (values.size() == maximumPredicateValueCount)
                    fail("There are too many values");
                values.push_back(std::move(operand.value));
            }
        }
        constexpr std::size_t limitCount = 2;
        if (operation == Operator::Between && values.size() != limitCount)
            fail("BETWEEN takes two values", position);
        return values;
    }

    Any nextArgument(std::size_t position)
    {
        if (m_nextArgument == m_arguments.size())
            fail("There is no argument left for this place", position);
        return m_arguments[m_nextArgument++];
    }

    Any readText(char quote)
    {
        const auto position = m_place++;
        std::string text;
        while (m_place < m_text.size() && m_text[m_place] != quote) {
            if (m_text[m_place] == '\\') {
                // Before everything else it stays, for the patterns of LIKE.
                const char next = m_place + 1 < m_text.size() ? m_text[m_place + 1] : '\0';
                if (next == '\\' || next == '"' || next == '\'')
                    ++m_place;
            }
            text += m_text[m_place++];
        }
        if (m_place == m_text.size())
            fail("The text has no end", position);
        ++m_place;
        return text;
    }

    Any readNumber()
    {
        const auto position = m_place;
        if (here() == '-')
            ++m_place;
        bool isWhole = true;
        while (isDigit(here()) || here() == '.' || here() == 'e' || here() == 'E'
            || ((here() == '-' || here() == '+')
                && (m_text[m_place - 1] == 'e' || m_text[m_place - 1] == 'E')))
            isWhole &= m_text[m_place] == '-' || isDigit(m_text[m_place]), ++m_place;
        const auto text = m_text.substr(position, m_place - position);
        const auto read = [&](auto number) -> Any {
            const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
            if (error == std::errc::result_out_of_range)
                fail("The number is too large or too small", position);
            if (error != std::errc() || end != text.data() + text.size())
                fail("This is no number", position);
            return number;
        };
        return isWhole ? read(std::int64_t()) : read(double());
    }

    const std::string_view m_text;
    const std::vector<Any>& m_arguments;
    std::size_t m_place = 0;
    std::size_t m_nextArgument = 0;
};

} // namespace

bool isPredicateWord(std::string_view word)
{
    return std::any_of(
        std::begin(words), std::end(words), [&](std::string_view known) { return isEqualWord(word, known); });
}

PredicatePath readPath(std::string_view path, std::optional<std::size_t> position)
{
    PredicatePath keys;
    if (path.empty() || isEqualWord(path, "SELF"))
        return keys;
    for (;;) {
        const auto end = std::min(path.find('.'), path.size());
        const auto key = path.substr(0, end);
        const bool isKey = !key.empty() && isLetter(key[0])
            && std::all_of(key.begin(), key.end(), [](char c) { return isLetter(c) || isDigit(c); });
        if (!isKey)
            throwInvalidPredicate("A key path consists of keys with dots between them", position);
        keys.emplace_back(key);
        if (end == path.size())
            return keys;
        path.remove_prefix(end + 1);
    }
}

Ref<const PredicateNode> readPredicate(std::string_view format, const std::vector<Any>& arguments)
{
    return Reader(format, arguments).read();
}

} // namespace orrenby::inline ORRENBY_ABI::detail
