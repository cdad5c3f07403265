#include "Orrenby/Foundation/Outbox/OutboxError.hpp"

#include "Orrenby/Platform/Errors/NSErrorKeys.hpp"
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

namespace {

std::string_view nameOf(OutboxError::Kind kind)
{
    switch (kind) {
    case OutboxError::Kind::NoAddress:
        return "NoAddress";
    case OutboxError::Kind::SeveralBodies:
        return "SeveralBodies";
    case OutboxError::Kind::NoNumber:
        return "NoNumber";
    case OutboxError::Kind::BodyTooLarge:
        return "BodyTooLarge";
    case OutboxError::Kind::Full:
        break;
    }
    return "Full";
}

} // namespace

std::string OutboxError::description() const { return std::string(nameOf(m_kind)) + ": " + m_message; }

Dictionary OutboxError::errorUserInfo() const { return {{NSLocalizedDescriptionKey, description()}}; }

} // namespace orrenby
