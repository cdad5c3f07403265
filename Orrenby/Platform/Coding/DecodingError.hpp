#pragma once

/// @file
/// Why a value could not be decoded.

#include "Orrenby/Platform/Coding/CodingKey.hpp"
#include "Orrenby/Platform/Coding/TextPosition.hpp"
#include "Orrenby/Platform/Errors/AnyError.hpp"
#include "Orrenby/Platform/Errors/CustomNSError.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/TypeName.hpp"
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// A value that could not be decoded: which of four reasons, where, and the words for it.
///
/// As a platform error object it has the domain `NSCocoaErrorDomain` and the code 4865 for what is missing,
/// 4864 for what is wrong; its user information holds the text, the coding path and the underlying error.
///
/// @snippet Tests/Platform/Coding/DecodingErrorTests.cpp Reading a decoding error
///
/// A handle: copies share one immutable content. Safe to use from several threads.
class ORRENBY_EXPORT DecodingError final : public CustomNSError<DecodingError> {
public:
    /// What was wrong.
    enum class Kind : std::uint8_t {
        TypeMismatch,  ///< There is a value, of another kind.
        ValueNotFound, ///< There is null, or nothing more, where a value is needed.
        KeyNotFound,   ///< An object lacks a member.
        DataCorrupted  ///< The value is of the right kind, but not one of those that are allowed.
    };

    /// Where it was wrong, and the words for it.
    struct Context {
        std::vector<CodingKey> codingPath = {}; ///< From the root to the value; empty for the root itself.
        std::string debugDescription = {};      ///< One sentence for developers, in English.
        /// What another part of the program threw; often nothing.
        std::optional<AnyError> underlyingError = {};
        /// Of the value in the text that was decoded, where there is one.
        std::optional<TextPosition> position = {};
    };

    /// One of the four reasons; an expected type is named as it prints.
    static DecodingError typeMismatch(std::string_view typeName, Context context);
    static DecodingError valueNotFound(std::string_view typeName, Context context);
    static DecodingError keyNotFound(CodingKey key, Context context);
    static DecodingError dataCorrupted(Context context);

    /// The same with the printed name of `T`.
    template <class T> static DecodingError typeMismatch(Context context)
    {
        return typeMismatch(orrenby::typeName<T>(), std::move(context));
    }
    template <class T> static DecodingError valueNotFound(Context context)
    {
        return valueNotFound(orrenby::typeName<T>(), std::move(context));
    }

    /// `dataCorrupted` for a place that knows where it is: a container or a decoder.
    template <class Place>
    static DecodingError dataCorruptedError(const Place& place, std::string_view debugDescription)
    {
        return dataCorrupted(place.errorContext(debugDescription));
    }

    /// Which of the four it is.
    Kind kind() const noexcept;

    /// The expected type; empty unless a type or a value is what is missing.
    const std::string& typeName() const noexcept;

    /// The missing key; nothing unless a key is what is missing.
    const std::optional<CodingKey>& key() const noexcept;

    /// Shared with the copies of this error; lives as long as one of them.
    const Context& context() const noexcept;

    /// `typeMismatch(Int, at a > Index 2, line 3, column 7: Expected Int but found a text)`
    std::string description() const override;

    static std::string errorDomain();
    std::int64_t errorCode() const;
    Dictionary errorUserInfo() const;

    /// Nothing: its user information has no sentence for people, so a log entry prints the error whole.
    std::optional<NSError> customNSError() const override { return std::nullopt; }

private:
    struct Content;
    explicit DecodingError(Content content);

    std::shared_ptr<const Content> m_content;
};

} // namespace orrenby
