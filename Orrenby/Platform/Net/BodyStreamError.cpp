#include "Orrenby/Platform/Net/BodyStreamError.hpp"

#include <string_view>
#include <system_error>

namespace orrenby::inline ORRENBY_ABI {

namespace {

std::string_view problem(BodyStreamError::Kind kind)
{
    switch (kind) {
    case BodyStreamError::Kind::CannotOpen:
        return "cannot be opened";
    case BodyStreamError::Kind::NoRegularFile:
        return "is no regular file";
    case BodyStreamError::Kind::Changed:
        return "changed since it was added to the body";
    case BodyStreamError::Kind::Shrunk:
        return "is shorter than it was";
    case BodyStreamError::Kind::CannotRead:
        break;
    }
    return "cannot be read";
}

} // namespace

std::string BodyStreamError::description() const
{
    auto text = "The file \"" + m_path + "\" " + std::string(problem(m_kind));
    if (m_systemError != 0)
        text += ": " + std::generic_category().message(m_systemError);
    return text;
}

Dictionary BodyStreamError::errorUserInfo() const { return {{NSLocalizedDescriptionKey, description()}}; }

} // namespace orrenby
