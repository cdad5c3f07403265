#pragma once

/// @file
/// Why a value could not be encoded.

#include "Orrenby/Platform/Coding/CodingKey.hpp"
#include "Orrenby/Platform/Errors/AnyError.hpp"
#include "Orrenby/Platform/Errors/CustomNSError.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// A value that the format cannot hold: which, where it would have stood, and the words for it.
///
/// As a platform error object it has the domain `NSCocoaErrorDomain` and the code 4866; its user information
/// holds the text, the coding path and the underlying error.
///
/// @snippet Tests/Platform/Coding/EncodingErrorTests.cpp Reading an encoding error
///
/// A handle: copies share one immutable content. Safe to use from several threads.
class ORRENBY_EXPORT EncodingError final : public CustomNSError<EncodingError> {
public:
    /// What was wrong: there is one case.
    enum class Kind : std::uint8_t { InvalidValue };

    /// Where the value would have stood, and the words for what is wrong.
    struct Context {
        std::vector<CodingKey> codingPath = {}; ///< From the root to the value; empty for the root itself.
        std::string debugDescription = {};      ///< One sentence for developers, in English.
        /// What another part of the program threw; often nothing.
        std::optional<AnyError> underlyingError = {};
    };

    /// A value that the format cannot hold.
    static EncodingError invalidValue(Any value, Context context);

    /// Always `InvalidValue`.
    Kind kind() const noexcept { return Kind::InvalidValue; }

    /// The value that could not be written.
    const Any& value() const noexcept;

    /// Shared with the copies of this error; lives as long as one of them.
    const Context& context() const noexcept;

    /// `invalidValue(inf, at a > b: JSON has no number for inf)`
    std::string description() const override;

    static std::string errorDomain();
    std::int64_t errorCode() const { return 4866; }
    Dictionary errorUserInfo() const;

private:
    struct Content;
    explicit EncodingError(Content content);

    std::shared_ptr<const Content> m_content;
};

} // namespace orrenby
