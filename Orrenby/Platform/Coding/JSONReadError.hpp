#pragma once

/// @file
/// What is wrong with a text that is no JSON.

#include "Orrenby/Platform/Coding/TextPosition.hpp"
#include "Orrenby/Platform/Errors/CustomNSError.hpp"
#include "Orrenby/Platform/Export.hpp"
#include <cstdint>
#include <string>

namespace orrenby::inline ORRENBY_ABI {

/// A text that is no JSON: what is wrong, and where.
///
/// As a platform error object it has the domain `NSCocoaErrorDomain`, the code 3840, and the description as
/// its localised description.
///
/// A plain value. Not synchronised.
class ORRENBY_EXPORT JSONReadError final : public CustomNSError<JSONReadError> {
public:
    /// What was wrong.
    enum class Kind : std::uint8_t {
        UnexpectedText, ///< What stands there fits no rule, a bad escape and bad UTF-8 included.
        UnexpectedEnd,  ///< The text ends inside a value, or holds none.
        TrailingText,   ///< Something other than blanks follows the value.
        TooDeep,        ///< Lists and objects are nested more than 512 deep.
        BadEncoding,    ///< A text in UTF-16 or UTF-32 holds what is no character.
        TooLarge,       ///< The text is 4 GiB long or longer.
        Fragment ///< The text is a number, a string, a boolean or null, where a list or an object is wanted.
    };

    /// The kind, and where reading could not go on.
    JSONReadError(Kind kind, TextPosition position) noexcept
        : m_kind(kind)
        , m_position(position)
    {}

    /// Which kind it is.
    Kind kind() const noexcept { return m_kind; }

    /// Where reading could not go on.
    TextPosition position() const noexcept { return m_position; }

    /// `Unexpected text at line 2, column 5`
    std::string description() const override;

    static std::string errorDomain();
    std::int64_t errorCode() const { return 3840; }
    Dictionary errorUserInfo() const;

    friend bool operator==(const JSONReadError& first, const JSONReadError& second) noexcept
    {
        return first.m_kind == second.m_kind && first.m_position == second.m_position;
    }

private:
    Kind m_kind;
    TextPosition m_position;
};

} // namespace orrenby
