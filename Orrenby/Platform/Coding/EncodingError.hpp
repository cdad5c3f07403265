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
    enum class Kind : std::uint8_t { InvalidValue };

    struct Context {
        std::vector<CodingKey> codingPath = {};
        std::string debugDescription = {};
        std::optional<AnyError> underlyingError = {};
    };

    static EncodingError invalidValue(Any value, Context context);

    Kind kind() const noexcept { return Kind::InvalidValue; }
    const Any& value() const noexcept;
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
