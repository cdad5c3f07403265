#include "Orrenby/Platform/Text/PercentDecodingError.hpp"

namespace orrenby::inline ORRENBY_ABI {

namespace {

const char* problem(PercentDecodingError::Kind kind)
{
    switch (kind) {
    case PercentDecodingError::Kind::Cut:
        return "Fewer than two digits behind the \"%\"";
    case PercentDecodingError::Kind::NoDigit:
        return "No hexadecimal digits behind the \"%\"";
    case PercentDecodingError::Kind::NotUTF8:
        break;
    }
    return "No UTF-8";
}

} // namespace

std::string PercentDecodingError::description() const
{
    return std::string(problem(m_kind)) + " at byte " + std::to_string(m_position);
}

Dictionary PercentDecodingError::errorUserInfo() const
{
    return {{NSLocalizedDescriptionKey, description()}};
}

} // namespace orrenby
