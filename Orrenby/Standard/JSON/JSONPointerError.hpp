#pragma once

/// @file
/// Why a JSON pointer leads nowhere.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Standard/NestedError.hpp"
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace orrenby::inline ORRENBY_ABI {

/// Where on its way a pointer got stuck, and on what.
///
/// | kind | code | description |
/// |---|---|---|
/// | `Malformed` | 1 | `Malformed JSON pointer a/b: it does not begin with / (offset 0)` |
/// | `NotFound` | 2 | `Nothing at /users/7: /users is a list of 3` |
/// | `InvalidIndex` | 3 | `Nothing at /users/07: 07 is no index of a list` |
/// | `NotAContainer` | 4 | `Nothing at /users/0/name/x: /users/0/name is a String` |
/// | `TypeMismatch` | 5 | `Type mismatch at /users/0/age: Int is no String` |
///
/// The kind of a value is named, the value itself never, so that the text can be shown and logged; see
/// `value()` for it.
///
/// @snippet Tests/Standard/JSON/JSONPointerErrorTests.cpp Saying why there is nothing
///
/// A handle: copies share one immutable content and never throw. Safe to use from several threads.
class ORRENBY_EXPORT JSONPointerError final : public GlobalError<JSONPointerError> {
public:
    /// Why there is nothing.
    enum class Kind : std::uint8_t {
        Malformed,     ///< The text is no JSON pointer.
        NotFound,      ///< A dictionary lacks the member, or a list is too short.
        InvalidIndex,  ///< A list is asked for something that is not an index.
        NotAContainer, ///< The pointer goes on where neither a list nor a dictionary is.
        TypeMismatch   ///< The value is of another type.
    };

    /// What is known of it.
    struct Content {
        Kind kind = Kind::Malformed; ///< Why there is nothing.
        /// The text of the pointer, up to and including the step that failed; all of it when it is malformed.
        /// Empty for the root.
        std::string pointer = {};
        /// What is wrong, as it stands behind the colon.
        std::string reason = {};
        /// The value at which the way ended; null when the pointer is malformed.
        Any value = {};
        /// Where in a malformed text, in bytes.
        std::size_t offset = 0;

        friend bool operator==(const Content&, const Content&) = default;
    };

    /// Keeps the content as it is.
    explicit JSONPointerError(Content content);
    JSONPointerError(const JSONPointerError&) noexcept = default;
    JSONPointerError& operator=(const JSONPointerError&) noexcept = default;

    /// Which of the kinds it is.
    Kind kind() const noexcept { return m_content->kind; }

    /// How far the pointer led, with the step that failed; all of it when it is malformed.
    const std::string& pointer() const noexcept { return m_content->pointer; }

    /// The value at which the way ended; null when the pointer is malformed.
    const Any& value() const noexcept { return m_content->value; }

    /// Where in a malformed pointer, in bytes; else 0.
    std::size_t offset() const noexcept { return m_content->offset; }

    /// 1 for the first kind, and so on.
    std::int64_t code() const noexcept { return static_cast<std::int64_t>(kind()) + 1; }
    std::string description() const override;

    friend bool operator==(const JSONPointerError& first, const JSONPointerError& second)
    {
        return *first.m_content == *second.m_content;
    }

private:
    std::shared_ptr<const Content> m_content;
};

} // namespace orrenby
