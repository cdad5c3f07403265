#include "Orrenby/Platform/Store/PredicateTokens.hpp"
#include "Orrenby/Platform/Store/PredicateTree.hpp"
#include <algorithm>
#include <iterator>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

using Operator = PredicateOperator;
using Quantifier = PredicateQuantifier;

constexpr std::string_view words[] = {"AND", "OR", "NOT", "ANY", "SOME", "ALL", "NONE", "IN", "BETWEEN",
    "BEGINSWITH", "CONTAINS", "ENDSWITH", "LIKE", "MATCHES", "SELF", "NIL", "NULL", "TRUE", "FALSE", "YES",
    "NO", "TRUEPREDICATE", "FALSEPREDICATE"};

constexpr std::pair<std::string_view, Operator> wordOperators[] = {{"BEGINSWITH", Operator::BeginsWith},
    {"CONTAINS", Operator::Contains}, {"ENDSWITH", Operator::EndsWith}, {"LIKE", Operator::Like},
    {"MATCHES", Operator::Matches}, {"IN", Operator::In}, {"BETWEEN", Operator::Between}};

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
        : m_tokens(text)
        , m_arguments(arguments)
    {}

    Ref<const PredicateNode> read()
    {
        auto node = readEither(0);
        m_tokens.skipBlanks();
        if (!m_tokens.isAtEnd())
            m_tokens.fail("AND, OR or the end is expected");
        if (m_nextArgument != m_arguments.size())
            m_tokens.fail("More arguments are given than the text asks for");
        return node;
    }

private:
    struct Operand {
        std::optional<PredicatePath> path = {};
        Any value = {};
        std::size_t position = 0;
    };

    Ref<const PredicateNode> readChain(PredicateKind kind, std::size_t depth)
    {
        const bool isOr = kind == PredicateKind::Or;
        std::vector<Ref<const PredicateNode>> members;
        do {
            if (members.size() == maximumComparisonCount)
                m_tokens.fail("There are too many comparisons");
            members.push_back(isOr ? readChain(PredicateKind::And, depth) : readNegation(depth));
        } while (m_tokens.skipSign(isOr ? "||" : "&&") || m_tokens.skipWord(isOr ? "OR" : "AND"));
        return members.size() == 1 ? std::move(members[0])
                                   : compoundNode(kind, std::move(members), m_tokens.place());
    }

    Ref<const PredicateNode> readEither(std::size_t depth) { return readChain(PredicateKind::Or, depth); }

    Ref<const PredicateNode> readNegation(std::size_t depth)
    {
        m_tokens.skipBlanks();
        const auto position = m_tokens.place();
        const bool isNegated = m_tokens.skipSign("!") || m_tokens.skipWord("NOT");
        const bool isNested = !isNegated && m_tokens.skipSign("(");
        if (!isNegated && !isNested)
            return readLeaf();
        // Counted as the deepest tree that can come of it.
        if (depth + 1 >= maximumPredicateDepth)
            m_tokens.fail("The predicate is nested too deeply", position);
        if (isNegated)
            return compoundNode(PredicateKind::Not, {readNegation(depth + 1)}, position);
        auto node = readEither(depth + 1);
        m_tokens.expectSign(")");
        return node;
    }

    Ref<const PredicateNode> readLeaf()
    {
        if (m_tokens.skipWord("TRUEPREDICATE"))
            return constantNode(true);
        if (m_tokens.skipWord("FALSEPREDICATE"))
            return constantNode(false);
        PredicateComparison comparison;
        const bool isNone = m_tokens.skipWord("NONE");
        comparison.quantifier = isNone ? Quantifier::Any : readQuantifier();
        auto left = readOperand();
        comparison.operation = readOperator();
        if (comparesTexts(comparison.operation) && m_tokens.here() == '[')
            readOptions(comparison);
        m_tokens.skipBlanks();
        const auto position = m_tokens.place();
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
            m_tokens.fail("A key is expected", left.position);
        comparison.left = std::move(*left.path);
        auto node = comparisonNode(std::move(comparison), position);
        return isNone ? compoundNode(PredicateKind::Not, {std::move(node)}) : node;
    }

    Quantifier readQuantifier()
    {
        if (m_tokens.skipWord("ALL"))
            return Quantifier::All;
        return m_tokens.skipWord("ANY") || m_tokens.skipWord("SOME") ? Quantifier::Any : Quantifier::None;
    }

    Operator readOperator()
    {
        const auto word = m_tokens.wordHere();
        for (const auto& [name, operation] : wordOperators)
            if (isEqualWord(word, name)) {
                m_tokens.skip(word.size());
                return operation;
            }
        for (const auto& [sign, operation] : signOperators)
            if (m_tokens.skipSign(sign))
                return operation;
        m_tokens.fail("A comparison is expected");
    }

    void readOptions(PredicateComparison& comparison)
    {
        m_tokens.skip(1);
        if (m_tokens.here() != 'c' && m_tokens.here() != 'C')
            m_tokens.fail("Only [c] is known");
        m_tokens.skip(1);
        if (m_tokens.here() != ']')
            m_tokens.fail("] is expected");
        m_tokens.skip(1);
        comparison.ignoresCase = true;
    }

    Operand readOperand()
    {
        m_tokens.skipBlanks();
        Operand operand{.position = m_tokens.place()};
        const char c = m_tokens.here();
        if (c == '"' || c == '\'')
            operand.value = m_tokens.readText();
        else if (isDigit(c) || c == '-' || c == '.')
            operand.value = m_tokens.readNumber();
        else if (m_tokens.skipSign("%@")) {
            operand.value = nextArgument(operand.position);
            if (operand.value.kind() == Any::Kind::List)
                m_tokens.fail("A list stands only after IN and BETWEEN", operand.position);
        } else if (m_tokens.skipSign("%K"))
            operand.path = readPath(nextArgument(operand.position).text(), operand.position);
        else if (!readWordValue(operand))
            operand.path = readKeys();
        return operand;
    }

    bool readWordValue(Operand& operand)
    {
        if (m_tokens.skipWord("NIL") || m_tokens.skipWord("NULL"))
            return true;
        if (m_tokens.skipWord("TRUE") || m_tokens.skipWord("YES")) {
            operand.value = true;
            return true;
        }
        if (m_tokens.skipWord("FALSE") || m_tokens.skipWord("NO")) {
            operand.value = false;
            return true;
        }
        return false;
    }

    PredicatePath readKeys()
    {
        PredicatePath keys;
        if (m_tokens.skipWord("SELF")) {
            if (m_tokens.here() != '.')
                return keys;
            m_tokens.skip(1);
        }
        for (;; m_tokens.skip(1)) {
            // No blanks within a path.
            if (!keys.empty() && m_tokens.skipSignHere(countKey)) {
                keys.emplace_back(countKey);
                return keys;
            }
            const bool isMarked = m_tokens.skipSignHere("#");
            const auto word = isKeyLetter(m_tokens.here()) ? m_tokens.wordHere() : std::string_view();
            if (word.empty() || (!isMarked && isPredicateWord(word)))
                m_tokens.fail("A key or a value is expected");
            keys.emplace_back(word);
            m_tokens.skip(word.size());
            if (m_tokens.here() != '.')
                return keys;
        }
    }

    std::vector<Any> readList(Operator operation)
    {
        m_tokens.skipBlanks();
        const auto position = m_tokens.place();
        std::vector<Any> values;
        if (m_tokens.skipSign("%@")) {
            const auto argument = nextArgument(position);
            const auto* const list = argument.get<std::vector<Any>>();
            if (list == nullptr)
                m_tokens.fail("The argument is no list", position);
            if (list->size() > maximumPredicateValueCount)
                m_tokens.fail("There are too many values", position);
            values = *list;
        } else {
            m_tokens.expectSign("{");
            while (!m_tokens.skipSign("}")) {
                if (!values.empty())
                    m_tokens.expectSign(",");
                auto operand = readOperand();
                if (operand.path)
                    m_tokens.fail("A list holds values only", operand.position);
                if (values.size() == maximumPredicateValueCount)
                    m_tokens.fail("There are too many values");
                values.push_back(std::move(operand.value));
            }
        }
        constexpr std::size_t limitCount = 2;
        if (operation == Operator::Between && values.size() != limitCount)
            m_tokens.fail("BETWEEN takes two values", position);
        return values;
    }

    Any nextArgument(std::size_t position)
    {
        if (m_nextArgument == m_arguments.size())
            m_tokens.fail("There is no argument left for this place", position);
        return m_arguments[m_nextArgument++];
    }

    PredicateTokens m_tokens;
    const std::vector<Any>& m_arguments;
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
        const bool isLast = end == path.size();
        const bool isKey = !key.empty() && isKeyLetter(key[0])
            && std::all_of(key.begin(), key.end(), [](char c) { return isKeyLetter(c) || isDigit(c); });
        if (!isKey && !(isLast && !keys.empty() && key == countKey))
            throwInvalidPredicate("A key path consists of keys with dots between them", position);
        keys.emplace_back(key);
        if (isLast)
            return keys;
        path.remove_prefix(end + 1);
    }
}

Ref<const PredicateNode> readPredicate(std::string_view format, const std::vector<Any>& arguments)
{
    return Reader(format, arguments).read();
}

} // namespace orrenby::inline ORRENBY_ABI::detail
