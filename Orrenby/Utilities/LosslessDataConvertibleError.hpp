#pragma once

/// @file
/// Why bytes do not give a value.

#include "Orrenby/Platform/Errors/CustomNSError.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include <cstdint>
#include <memory>
#include <string>

namespace orrenby::inline ORRENBY_ABI {

/// Bytes that are no text, or a text that is no value of the wanted type.
///
/// As a platform error object it has the domain `LosslessDataConvertibleError`, the number of the kind as its
/// code, 0 or 1, and no user information.
///
/// @snippet Tests/Utilities/LosslessDataConvertibleErrorTests.cpp Telling bytes from texts
///
/// Equal by kind and content. A handle: copies share one immutable content and never throw. Safe to use from
/// several threads.
class ORRENBY_EXPORT LosslessDataConvertibleError final : public CustomNSError<LosslessDataConvertibleError> {
public:
    /// Which way failed.
    enum class Kind : std::uint8_t { FailedToConvertFromData, FailedToConvertFromString };

    /// The bytes are not valid UTF-8.
    static LosslessDataConvertibleError failedToConvertFromData(Data data);
    /// The bytes are this text, but the text is not that of a value.
    static LosslessDataConvertibleError failedToConvertFromString(std::string text);

    LosslessDataConvertibleError(const LosslessDataConvertibleError&) noexcept = default;
    LosslessDataConvertibleError& operator=(const LosslessDataConvertibleError&) noexcept = default;

    /// Which of the two it is.
    Kind kind() const noexcept;

    /// The bytes of `failedToConvertFromData`; empty for the other kind.
    const Data& data() const noexcept;
    /// The text of `failedToConvertFromString`; empty for the other kind.
    const std::string& text() const noexcept;

    /// `failedToConvertFromString("yes")`, or `failedToConvertFromData(1 bytes)`.
    std::string description() const override;

    std::int64_t errorCode() const noexcept { return static_cast<std::int64_t>(kind()); }

    friend bool operator==(
        const LosslessDataConvertibleError& first, const LosslessDataConvertibleError& second)
    {
        return first.equals(second);
    }

private:
    struct Content;
    explicit LosslessDataConvertibleError(Content content);
    bool equals(const LosslessDataConvertibleError& other) const;

    std::shared_ptr<const Content> m_content;
};

} // namespace orrenby
