#pragma once

/// @file
/// Conditions for stored objects.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include "Orrenby/Platform/Store/StoreError.hpp"
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

enum class PredicateOperator : std::uint8_t;
enum class PredicateQuantifier : std::uint8_t;
struct PredicateNode;

} // namespace detail

/// A condition that objects fulfil or do not: the `predicate` of an `NSFetchRequest`.
///
/// @snippet Tests/Platform/Store/NSPredicateTests.cpp Fetching by a condition
///
/// The text form compares a key path with a value or another path, and combines comparisons:
/// - `=` `==` `!=` `<>` `<` `<=` `>` `>=`, `BETWEEN {1, 9}`, `IN {"a", "b"}`;
/// - `BEGINSWITH`, `CONTAINS`, `ENDSWITH`; `LIKE` with `*` for any characters, `?` for one, `\` before one
///   that stands for itself; `MATCHES` with a pattern of `RegularExpression` for the whole text; `[c]` right
///   behind the word ignores case (`LIKE[c]`);
/// - `AND` `&&`, `OR` `||`, `NOT` `!`, parentheses, `TRUEPREDICATE`, `FALSEPREDICATE`;
/// - values: numbers, `"texts"` with `\` before quotes and itself, `TRUE` `YES` `FALSE` `NO`, `nil` `NULL`,
///   and `%@` for the next argument, which may be anything that is stored, an object or the name of one,
///   or a list after `IN` and `BETWEEN`. Values are never part of the text unless they are written there;
/// - keys: attributes, paths through to-one relationships (`employer.name`), `SELF`; `%K` for a path that is
///   the next argument, `#like` for a key that is spelled as a word of the language;
/// - `ANY friends.name = "Eva"` or `SOME` for paths through to-many relationships, `NONE` for its opposite,
///   `ALL` for every value, of which there may be none; `ANY friends != nil` for there being one;
/// - `friends.@count > 2`: how many objects a to-many relationship has, at the end of a path.
///
/// Words are read in either case, keys as they are. What is empty equals only `nil`, so that it is different
/// from every value; it is not less, greater, between or like anything. A path through an empty relationship
/// is empty. Numbers of both kinds compare with each other by their value, everything else only with its
/// kind. Texts compare by their bytes; ignoring case compares characters folded one by one.
///
/// The keys are looked up when the predicate is used: a fetch with keys that its entity does not have, or
/// values of another kind, fails with `InvalidPredicate`. So does one whose pattern takes longer than a
/// second for one text.
///
/// A handle: copies share one immutable content. Safe to use from several threads.
class ORRENBY_EXPORT NSPredicate {
public:
    /// Fulfilled by everything.
    NSPredicate();
    explicit NSPredicate(Ref<const detail::PredicateNode> node) noexcept
        : m_node(std::move(node))
    {}

    /// Reads the text. Throws a `StoreError` of the kind `InvalidPredicate`, whose context names the byte
    /// that is wrong, for what is no predicate, more than 100 nested parentheses, 10,000 comparisons or
    /// 30,000 values, and arguments that are missing or left over. Linear in the text's length.
    static NSPredicate make(std::string_view format, const std::vector<Any>& arguments = {});

    /// `make` that gives the failure instead of throwing it.
    static Result<NSPredicate, StoreError> tryMake(
        std::string_view format, const std::vector<Any>& arguments = {});

    /// Both, one of both, the opposite. Throws a `StoreError` when the limits of `make` are exceeded.
    friend ORRENBY_EXPORT NSPredicate operator&&(const NSPredicate& first, const NSPredicate& second);
    friend ORRENBY_EXPORT NSPredicate operator||(const NSPredicate& first, const NSPredicate& second);
    friend ORRENBY_EXPORT NSPredicate operator!(const NSPredicate& predicate);

    /// The text form; values that have none in angle brackets.
    std::string description() const;

    /// Whether both say the same in the same way.
    friend ORRENBY_EXPORT bool operator==(const NSPredicate& first, const NSPredicate& second);

    const Ref<const detail::PredicateNode>& node() const noexcept { return m_node; }

private:
    Ref<const detail::PredicateNode> m_node;
};

/// How a text is compared.
struct TextMatchOptions {
    bool ignoresCase = false; ///< By the rule of `[c]` in the text form.
};

/// Builds predicates from a key path without a text.
///
/// @snippet Tests/Platform/Store/NSPredicateTests.cpp Building a condition
///
/// A plain value. Not synchronised.
class ORRENBY_EXPORT PredicateKey {
public:
    /// @param path  As in the text form; `SELF` and the empty text name the object itself.
    explicit PredicateKey(std::string_view path);

    /// Through to-many relationships: fulfilled when one of the values is, or all of them are. Where there is
    /// none, all are.
    PredicateKey any() const;
    PredicateKey all() const;

    /// Conditions on the value at the key path, each like the word of its name in the text form.
    NSPredicate in(std::vector<Any> values) const;
    NSPredicate between(Any least, Any most) const;
    NSPredicate beginsWith(std::string_view text, TextMatchOptions options = {}) const;
    NSPredicate contains(std::string_view text, TextMatchOptions options = {}) const;
    NSPredicate endsWith(std::string_view text, TextMatchOptions options = {}) const;
    NSPredicate like(std::string_view pattern, TextMatchOptions options = {}) const;
    /// Throws a `StoreError` of the kind `InvalidPredicate` for what is no pattern of a `RegularExpression`.
    NSPredicate matches(std::string_view pattern, TextMatchOptions options = {}) const;

    /// Conditions on the value at the key path, each like its sign in the text form.
    friend ORRENBY_EXPORT NSPredicate operator==(const PredicateKey& key, const Any& value);
    friend ORRENBY_EXPORT NSPredicate operator!=(const PredicateKey& key, const Any& value);
    friend ORRENBY_EXPORT NSPredicate operator<(const PredicateKey& key, const Any& value);
    friend ORRENBY_EXPORT NSPredicate operator<=(const PredicateKey& key, const Any& value);
    friend ORRENBY_EXPORT NSPredicate operator>(const PredicateKey& key, const Any& value);
    friend ORRENBY_EXPORT NSPredicate operator>=(const PredicateKey& key, const Any& value);

private:
    NSPredicate compared(
        detail::PredicateOperator operation, std::vector<Any> values, TextMatchOptions options = {}) const;
    NSPredicate comparedToOne(
        detail::PredicateOperator operation, const Any& value, TextMatchOptions options = {}) const;

    std::vector<std::string> m_keys;
    detail::PredicateQuantifier m_quantifier = {};
};

} // namespace orrenby

template <> struct std::hash<orrenby::NSPredicate> {
    std::size_t operator()(const orrenby::NSPredicate& predicate) const
    {
        return std::hash<std::string>()(predicate.description());
    }
};
