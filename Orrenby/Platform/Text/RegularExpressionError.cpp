#include "Orrenby/Platform/Text/RegularExpressionError.hpp"

namespace orrenby::inline ORRENBY_ABI {

std::string RegularExpressionError::description() const
{
    switch (m_kind) {
    case Kind::InvalidPattern:
        return "Invalid pattern at UTF-16 unit " + std::to_string(m_position) + " (" + m_reason + ")";
    case Kind::TimeLimitExceeded:
        return "Matching took too long";
    case Kind::TooDeep:
        return "Matching needed too much memory";
    case Kind::InvalidTemplate:
        return "Invalid template (" + m_reason + ")";
    case Kind::Failed:
        break;
    }
    return "Matching failed (" + m_reason + ")";
}

Dictionary RegularExpressionError::errorUserInfo() const
{
    return {{NSLocalizedDescriptionKey, description()}};
}

} // namespace orrenby
