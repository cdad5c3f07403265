#pragma once

/// @file
/// What predicates consist of. Not in the umbrella header: predicates keep it to themselves.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Text/RegularExpression.hpp"
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

enum class PredicateOperator : std::uint8_t {
    Equal,
    NotEqual,
    Less,
    LessOrEqual,
    Greater,
    GreaterOrEqual,
    BeginsWith,
    Contains,
    EndsWith,
    Like,
    Matches,
    In,
    Between
};

constexpr bool comparesTexts(PredicateOperator operation) noexcept
{
    return operation >= PredicateOperator::BeginsWith && operation <= PredicateOperator::Matches;
}

/// Of how many values at the end of a path through to-many relationships something is said.
enum class PredicateQuantifier : std::uint8_t { None, Any, All };

/// Keys one after the other; none is the object itself.
using PredicatePath = std::vector<std::string>;

/// At the end of a path: how many objects the relationship before it leads to.
constexpr std::string_view countKey = "@count";

enum class PredicateKind : std::uint8_t { True, False, And, Or, Not, Comparison };

struct PredicateComparison {
    PredicateQuantifier quantifier = PredicateQuantifier::None;
    PredicatePath left = {};
    PredicateOperator operation = PredicateOperator::Equal;
    bool ignoresCase = false;
    std::optional<PredicatePath> right = {};
    /// Without a right path: one value, two for `Between`, any number for `In`.
    std::vector<Any> values = {};
    /// What the value of `Matches` means.
    std::optional<RegularExpression> pattern = {};

    friend bool operator==(const PredicateComparison&, const PredicateComparison&) = default;
};

struct PredicateNode {
    PredicateKind kind = PredicateKind::True;
    std::vector<Ref<const PredicateNode>> children = {};
    PredicateComparison comparison = {};
    std::size_t depth = 1;
    std::size_t comparisonCount = 0;
    std::size_t valueCount = 0;
};

constexpr std::size_t maximumPredicateDepth = 100;
constexpr std::size_t maximumComparisonCount = 10'000;
constexpr std::size_t maximumPredicateValueCount = 30'000;

[[noreturn]] void throwInvalidPredicate(std::string message, std::optional<std::size_t> position = {});

Ref<const PredicateNode> constantNode(bool isTrue);
/// Reads the pattern of `Matches`. Checks the limits.
Ref<const PredicateNode> comparisonNode(
    PredicateComparison comparison, std::optional<std::size_t> position = {});
/// Those of the same kind are taken apart, so that a chain is no deeper than its members. Checks the limits.
Ref<const PredicateNode> compoundNode(PredicateKind kind, std::vector<Ref<const PredicateNode>> children,
    std::optional<std::size_t> position = {});

bool isSamePredicate(const PredicateNode& first, const PredicateNode& second);
/// The text form, which is read again as the same.
std::string predicateText(const PredicateNode& node);

Ref<const PredicateNode> readPredicate(std::string_view format, const std::vector<Any>& arguments);
/// Splits at dots; the last key may be the number of objects. Throws for what is no path.
PredicatePath readPath(std::string_view path, std::optional<std::size_t> position = {});
/// Whether the word has a meaning in the text form, and so cannot be a key without a sign before it.
bool isPredicateWord(std::string_view word);

/// Whether the text, seen by its characters, begins with, contains, ends with or is like the other; not for
/// `Matches`.
bool matchesText(
    PredicateOperator operation, bool ignoresCase, std::string_view text, std::string_view other);

/// What both forms of evaluation agree on; for neither `Matches`, `In` nor `Between`.
bool fulfils(const Any& left, PredicateOperator operation, bool ignoresCase, const Any& right);

} // namespace orrenby::inline ORRENBY_ABI::detail
