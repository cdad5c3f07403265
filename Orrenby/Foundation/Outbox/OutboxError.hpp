#pragma once

/// @file
/// Why a request was not put into an outbox.

#include "Orrenby/Platform/Errors/CustomNSError.hpp"
#include "Orrenby/Platform/Export.hpp"
#include <cstdint>
#include <string>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

/// A request that an outbox does not take: why, and the words for it.
///
/// @snippet Tests/Foundation/Outbox/OutboxErrorTests.cpp Reading why a request was refused
///
/// A plain value, equal by kind and words. Not synchronised.
class ORRENBY_EXPORT OutboxError final : public CustomNSError<OutboxError> {
public:
    /// Why a request was refused.
    enum class Kind : std::uint8_t {
        NoAddress,     ///< The URL has no scheme, so that nobody knows later where it leads.
        SeveralBodies, ///< More than one of bytes, a file and parts; or a part that has both or neither.
        NoNumber,      ///< A time that is no number.
        BodyTooLarge,  ///< More bytes than the outbox keeps for one request.
        Full           ///< As many requests as the outbox keeps.
    };

    /// Made by the outbox.
    OutboxError(Kind kind, std::string message)
        : m_kind(kind)
        , m_message(std::move(message))
    {}

    /// Which of the kinds it is.
    Kind kind() const noexcept { return m_kind; }

    /// In English, for developers.
    const std::string& message() const noexcept { return m_message; }

    /// `Full: 10000 requests are in the outbox`
    std::string description() const override;

    std::int64_t errorCode() const { return static_cast<std::int64_t>(m_kind) + 1; }
    Dictionary errorUserInfo() const;

    friend bool operator==(const OutboxError& first, const OutboxError& second) noexcept
    {
        return first.m_kind == second.m_kind && first.m_message == second.m_message;
    }

private:
    Kind m_kind;
    std::string m_message;
};

} // namespace orrenby
