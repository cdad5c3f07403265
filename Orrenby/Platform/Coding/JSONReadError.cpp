#include "Orrenby/Platform/Coding/JSONReadError.hpp"

namespace orrenby::inline ORRENBY_ABI {

namespace {

const char* problem(JSONReadError::Kind kind)
{
    switch (kind) {
    case JSONReadError::Kind::UnexpectedText:
        return "Unexpected text";
    case JSONReadError::Kind::UnexpectedEnd:
        return "Unexpected end of the text";
    case JSONReadError::Kind::TrailingText:
        return "Text after the value";
    case JSONReadError::Kind::TooDeep:
        return "More than 512 nested values";
    case JSONReadError::Kind::BadEncoding:
        return "Text that is not valid in its encoding";
    case JSONReadError::Kind::TooLarge:
        return "Text of 4 GiB or more";
    case JSONReadError::Kind::Fragment:
        return "Neither a list nor an object";
    }
    return "Unexpected text";
}

} // namespace

std::string JSONReadError::description() const
{
    return std::string(problem(m_kind)) + " at " + m_position.description();
}

std::string JSONReadError::errorDomain() { return "NSCocoaErrorDomain"; }

Dictionary JSONReadError::errorUserInfo() const { return {{NSLocalizedDescriptionKey, description()}}; }

} // namespace orrenby
