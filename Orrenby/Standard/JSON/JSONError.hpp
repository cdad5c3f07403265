#pragma once

/// @file
/// Why a typed value could not be read out of a dictionary.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Standard/NestedError.hpp"
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// What was wrong with a member of a dictionary, or with the bytes that a dictionary should be read from.
///
/// | made by | code | description |
/// |---|---|---|
/// | `keyNotFound` | 1 | `Key not found: id` |
/// | `typeMismatch` | 2 | `Type mismatch for key: id value: 5` |
/// | `transformFailed` | 3 | `Transform failed for key: id value: 5` |
/// | `valueIsNaN` | 4 | `Key: id with value nan is not a number` |
/// | `valueIsInfinity` | 5 | `Key: id with value inf is infinite` |
/// | `invalidData` | 6 | ``JSON from `Data` requires string-keyed dictionary`` |
/// | `failedDictionaryCast` | 1 | `Key not found: id` |
///
/// `failedDictionaryCast` looks like `keyNotFound` but is another kind. The library throws neither it nor
/// `valueIsNaN` and `valueIsInfinity`; they are for programs that check what they are about to write.
///
/// As a platform error object it has the domain `JSONError` behind the bundle identifier, and nothing but the
/// description in its user information.
///
/// @snippet Tests/Standard/JSON/JSONErrorTests.cpp Handling a JSON error
///
/// Two errors are equal when kind, key, value and data are. A handle: copies share one immutable content and
/// never throw. Safe to use from several threads.
class ORRENBY_EXPORT JSONError final : public GlobalError<JSONError> {
public:
    /// What was wrong, see the table above.
    enum class Kind : std::uint8_t {
        KeyNotFound,
        TypeMismatch,
        TransformFailed,
        ValueIsNaN,
        ValueIsInfinity,
        InvalidData,
        FailedDictionaryCast
    };

    /// A dictionary lacks the member.
    static JSONError keyNotFound(std::string_view key);

    /// The member is of another type than was asked for; `value` is what it holds.
    static JSONError typeMismatch(std::string_view key, Any value);

    /// The member's value became nothing; `value` is what it holds.
    static JSONError transformFailed(std::string_view key, Any value);

    /// The member would be "not a number".
    static JSONError valueIsNaN(std::string_view key, Any value);

    /// The member would be infinite.
    static JSONError valueIsInfinity(std::string_view key, Any value);

    /// The bytes are no JSON object.
    static JSONError invalidData(Data data);

    /// A member is no dictionary.
    static JSONError failedDictionaryCast(std::string_view key);

    JSONError(const JSONError&) noexcept = default;
    JSONError& operator=(const JSONError&) noexcept = default;

    /// Which of the kinds it is.
    Kind kind() const noexcept;

    /// Of the member; empty for `invalidData`.
    const std::string& key() const noexcept;

    /// What the member held; null for the kinds without a value.
    const Any& value() const noexcept;

    /// The bytes of `invalidData`; empty for the other kinds.
    const Data& data() const noexcept;

    /// The number of the kind, see the table above.
    std::int64_t code() const noexcept;
    std::string description() const override;

    /// The key under "key" and the value under "value", as far as the kind has them.
    Dictionary properties() const;

    friend bool operator==(const JSONError& first, const JSONError& second) { return first.equals(second); }

private:
    struct Content;
    explicit JSONError(Content content);
    bool equals(const JSONError& other) const;
    bool hasValue() const noexcept;

    std::shared_ptr<const Content> m_content;
};

} // namespace orrenby
