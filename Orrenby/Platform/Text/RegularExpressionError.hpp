#pragma once

/// @file
/// What is wrong with a regular expression, or with its use on a text.

#include "Orrenby/Platform/Errors/CustomNSError.hpp"
#include "Orrenby/Platform/Export.hpp"
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

/// A regular expression that is none, or that could not be tried on a text.
///
/// A plain value. Not synchronised.
class ORRENBY_EXPORT RegularExpressionError final : public CustomNSError<RegularExpressionError> {
public:
    /// What was wrong.
    enum class Kind : std::uint8_t {
        InvalidPattern,    ///< The pattern is no regular expression.
        TimeLimitExceeded, ///< A text took longer than the time limit allows.
        TooDeep,           ///< A text would have needed too much memory for going back.
        InvalidTemplate,   ///< What is to stand in place of the matches names a group that there is not.
        Failed             ///< Anything else; `reason` says what.
    };

    /// @param position  In a pattern, in UTF-16 units, where something is wrong; else 0.
    /// @param reason  The engine's word for it, such as `U_REGEX_MISMATCHED_PAREN`.
    RegularExpressionError(Kind kind, std::size_t position, std::string reason) noexcept
        : m_kind(kind)
        , m_position(position)
        , m_reason(std::move(reason))
    {}

    /// Which of the kinds it is.
    Kind kind() const noexcept { return m_kind; }

    /// In a pattern, in UTF-16 units, where something is wrong; else 0.
    std::size_t position() const noexcept { return m_position; }

    /// The engine's word for it.
    const std::string& reason() const noexcept { return m_reason; }

    /// `Invalid pattern at UTF-16 unit 3 (U_REGEX_MISMATCHED_PAREN)`
    std::string description() const override;

    std::int64_t errorCode() const { return static_cast<std::int64_t>(m_kind) + 1; }
    Dictionary errorUserInfo() const;

    friend bool operator==(const RegularExpressionError& first, const RegularExpressionError& second) noexcept
    {
        return first.m_kind == second.m_kind && first.m_position == second.m_position
            && first.m_reason == second.m_reason;
    }

private:
    Kind m_kind;
    std::size_t m_position;
    std::string m_reason;
};

} // namespace orrenby
