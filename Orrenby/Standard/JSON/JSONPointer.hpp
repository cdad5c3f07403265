#pragma once

/// @file
/// Paths into trees of values, written as text.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/Objects/Concepts.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include "Orrenby/Platform/Objects/TypeName.hpp"
#include "Orrenby/Standard/JSON/JSONAccess.hpp"
#include "Orrenby/Standard/JSON/JSONPointerError.hpp"
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// Leads from the root of a tree of lists and dictionaries to one value in it: `/users/0/name` (RFC 6901).
///
/// Each step is the key of a member or the index of an element; in the text of a step `~` is written `~0` and
/// `/` is `~1`. The empty pointer is the root itself, `/` the member with the empty key. An index has no
/// leading zeros; `-`, the place behind the last element, never holds a value. A member whose key is a number
/// is found in a dictionary like any other.
///
/// The fragment form, with `#` and percent signs, is not read. Nothing is changed in the tree.
///
/// @snippet Tests/Standard/JSON/JSONPointerTests.cpp Reading through a pointer
///
/// A tree is an `Any`, a `Dictionary` or an `Array`. A step costs the search for its key or index. A plain
/// value. Not synchronised.
class ORRENBY_EXPORT JSONPointer {
public:
    /// The root.
    JSONPointer() = default;

    /// Throws `JSONPointerError` of the kind `Malformed` for a text that is neither empty nor begins with
    /// `/`, or holds a `~` that neither `0` nor `1` follows. Text from outside may be given.
    explicit JSONPointer(std::string_view text);

    /// The same, or nothing for a malformed text.
    static std::optional<JSONPointer> make(std::string_view text);

    /// The same as an outcome, which throws nothing.
    static Result<JSONPointer, JSONPointerError> tryMake(std::string_view text);

    /// The pointer with these steps, which are written plain: any text is one.
    static JSONPointer fromTokens(std::vector<std::string> tokens);

    /// The steps, written plain.
    const std::vector<std::string>& tokens() const noexcept { return m_tokens; }

    /// One step further; `token` is written plain.
    JSONPointer appending(std::string_view token) const;
    JSONPointer appending(std::size_t index) const;

    /// One step back; of the root nothing.
    std::optional<JSONPointer> parent() const;

    /// The text that gives this pointer again.
    std::string description() const;
    std::string debugDescription() const { return "JSONPointer(" + description() + ")"; }

    /// What the pointer leads to, null included, or nothing.
    template <detail::OneOf<Any, Dictionary, Array> Tree> std::optional<Any> find(const Tree& root) const
    {
        return followed(Place(root));
    }

    /// What the pointer leads to as a `T`, by the rules of Dictionary+JSON.hpp. Throws `JSONPointerError` of
    /// all kinds but `Malformed`.
    template <detail::JSONRequestable T, detail::OneOf<Any, Dictionary, Array> Tree>
    T get(const Tree& root) const
    {
        if (const auto value = followed(Place(root)))
            if (auto cast = value->template cast<T>())
                return *std::move(cast);
        return tryGet<T>(root).unwrap(); // says why not
    }

    /// The same as an outcome, which throws nothing.
    template <detail::JSONRequestable T, detail::OneOf<Any, Dictionary, Array> Tree>
    Result<T, JSONPointerError> tryGet(const Tree& root) const
    {
        auto outcome = tryGetOptional<T>(root);
        if (auto error = outcome.error())
            return Result<T, JSONPointerError>::failure(*std::move(error));
        if (auto value = std::move(outcome).unwrap())
            return Result<T, JSONPointerError>::success(*std::move(value));
        return Result<T, JSONPointerError>::failure(stuck(Place(root)));
    }

    /// As `get`, but nothing where `get` says `NotFound`: for members and elements that may be missing. Null
    /// is a value.
    template <detail::JSONRequestable T, detail::OneOf<Any, Dictionary, Array> Tree>
    std::optional<T> getOptional(const Tree& root) const
    {
        return tryGetOptional<T>(root).unwrap();
    }

    /// The same as an outcome, which throws nothing.
    template <detail::JSONRequestable T, detail::OneOf<Any, Dictionary, Array> Tree>
    Result<std::optional<T>, JSONPointerError> tryGetOptional(const Tree& root) const
    {
        using Outcome = Result<std::optional<T>, JSONPointerError>;
        if (const auto value = followed(Place(root))) {
            auto cast = value->template cast<T>();
            return cast ? Outcome::success(std::move(cast))
                        : Outcome::failure(mismatch(*value, typeName<T>()));
        }
        auto error = stuck(Place(root));
        return error.kind() == JSONPointerError::Kind::NotFound ? Outcome::success(std::nullopt)
                                                                : Outcome::failure(std::move(error));
    }

    friend bool operator==(const JSONPointer&, const JSONPointer&) = default;

private:
    /// A value in the tree: one that is an `Any`, or a root that is not.
    class Place {
    public:
        explicit Place(const Any& value);
        explicit Place(const Dictionary& dictionary) noexcept
            : m_dictionary(&dictionary)
        {}
        explicit Place(const Array& list) noexcept
            : m_list(&list)
        {}

        const Dictionary* dictionary() const noexcept { return m_dictionary; }
        const Array* list() const noexcept { return m_list; }
        Any value() const;

    private:
        const Any* m_value = nullptr;
        const Dictionary* m_dictionary = nullptr;
        const Array* m_list = nullptr;
    };

    static std::optional<JSONPointerError> malformed(std::string_view text);
    static const Any* step(const Place& place, std::string_view token);
    std::optional<Any> followed(Place place) const;
    JSONPointerError stuck(Place place) const;
    JSONPointerError mismatch(const Any& value, const std::string& wanted) const;
    std::string textOf(std::size_t count) const;

    std::vector<std::string> m_tokens;
};

} // namespace orrenby

template <> struct std::hash<orrenby::JSONPointer> {
    std::size_t operator()(const orrenby::JSONPointer& pointer) const
    {
        return std::hash<std::string>()(pointer.description());
    }
};
