#pragma once

/// @file
/// What is wrong with a text that is no percent-encoding.

#include "Orrenby/Platform/Errors/CustomNSError.hpp"
#include "Orrenby/Platform/Export.hpp"
#include <cstddef>
#include <cstdint>
#include <string>

namespace orrenby::inline ORRENBY_ABI {

/// A text that is no percent-encoding: what is wrong, and where.
///
/// A plain value. Not synchronised.
class ORRENBY_EXPORT PercentDecodingError final : public CustomNSError<PercentDecodingError> {
public:
    /// What was wrong.
    enum class Kind : std::uint8_t {
        Cut,     ///< Fewer than two characters follow a "%".
        NoDigit, ///< One of the two characters that follow a "%" is no hexadecimal digit.
        NotUTF8  ///< What the text stands for is no UTF-8.
    };

    /// @param position  Of the "%", or of the first byte that makes no UTF-8, in bytes of the encoded text.
    PercentDecodingError(Kind kind, std::size_t position) noexcept
        : m_kind(kind)
        , m_position(position)
    {}

    /// Which of the kinds it is.
    Kind kind() const noexcept { return m_kind; }

    /// In bytes of the encoded text: of the "%", or of the first byte that makes no UTF-8.
    std::size_t position() const noexcept { return m_position; }

    /// `No hexadecimal digits behind the "%" at byte 3`
    std::string description() const override;

    std::int64_t errorCode() const { return static_cast<std::int64_t>(m_kind) + 1; }
    Dictionary errorUserInfo() const;

    friend bool operator==(const PercentDecodingError& first, const PercentDecodingError& second) noexcept
    {
        return first.m_kind == second.m_kind && first.m_position == second.m_position;
    }

private:
    Kind m_kind;
    std::size_t m_position;
};

} // namespace orrenby
